// The files of the last days in the menu, and files that are dropped on the window.
#include "bench.h"

#include "form/main_form.h"
#include "own_folder.h"
#include "shell/events.h"
#include "shell/open_path.h"
#include "shell/panel_state.h"
#include "shell/project.h"
#include "shell/recent.h"

#include <filesystem>

using namespace vrk;

namespace {

struct FilesBench : Bench {
    FilesBench()
        : Bench("Juniper-60Q", true)
    {
        std::filesystem::create_directories(folder);
        shell.loader.application_dir = folder;
    }
    ~FilesBench()
    {
        std::error_code fault;
        std::filesystem::remove_all(folder, fault);
    }
    std::string file(const std::string& name, char fill = 'f')
    {
        const std::string path = folder + "/" + name;
        std::ofstream{path, std::ios::binary} << std::string(0x100, fill);
        return path;
    }
    std::string project(const std::string& name)
    {
        open_path(shell, file("code.bin"));
        save_project(shell, folder + "/" + name);
        return folder + "/" + name;
    }
    const std::string& entry(const char* menu, int place) { return form.button(menu, place).caption(); }
    void show_page(const char* key)
    {
        TabStrip& strip = form.tabs("TabStrip2");
        ASSERT_EQ(choose_tab(shell, strip, strip.find(key)), Touch::taken);
    }

    const std::string folder = own_folder("recent");
};

} // namespace

TEST(RecentFiles, TheNewestIsOnTopAndEachThereOnce)
{
    FilesBench bench;
    const std::string one = bench.file("one.bin");
    const std::string two = bench.file("two.bin");
    for (const std::string& path : {one, two, one})
        open_path(bench.shell, path);
    EXPECT_EQ(bench.entry("mnuRecentFile", 0), one);
    EXPECT_EQ(bench.entry("mnuRecentFile", 1), two);
    EXPECT_FALSE(bench.form.button("mnuRecentFile", 2).visible());
}

TEST(RecentFiles, EightAreKeptAndThereInTheNextRun)
{
    FilesBench bench;
    for (int i = 0; i < 10; ++i)
        open_path(bench.shell, bench.file("f" + std::to_string(i) + ".bin"));
    EXPECT_EQ(bench.entry("mnuRecentFile", 7), bench.folder + "/f2.bin");
    bench.shell.loader.recent[0].clear();
    load_recent(bench.shell);
    EXPECT_EQ(bench.entry("mnuRecentFile", 0), bench.folder + "/f9.bin");
    EXPECT_EQ(bench.entry("mnuRecentFile", 7), bench.folder + "/f2.bin");
    EXPECT_EQ(bench.shell.platform.settings.get("Recent", "File1", ""), bench.folder + "/f9.bin");
}

TEST(RecentFiles, AClickOpensItInTheBufferInView)
{
    FilesBench bench;
    open_path(bench.shell, bench.file("one.bin", '1'));
    open_path(bench.shell, bench.file("two.bin", '2'));
    EXPECT_EQ(click(bench.shell, bench.form.button("mnuRecentFile", 1)), Touch::taken);
    EXPECT_EQ(bench.shell.code_buffer.data[0], '1');
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: " + bench.folder + "/one.bin");
}

TEST(RecentFiles, OneThatIsGoneSaysSoAndLeavesTheList)
{
    FilesBench bench;
    const std::string gone = bench.file("gone.bin", 'g');
    open_path(bench.shell, gone);
    open_path(bench.shell, bench.file("there.bin", 't'));
    std::filesystem::remove(gone);
    click(bench.shell, bench.form.button("mnuRecentFile", 1));
    ASSERT_FALSE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.dialogs.shown.back().box.text, "The file is gone:\n" + gone);
    EXPECT_FALSE(bench.form.button("mnuRecentFile", 1).visible());
    EXPECT_EQ(bench.shell.platform.settings.get("Recent", "File2", "?"), "");
    EXPECT_EQ(bench.shell.code_buffer.data[0], 't');
}

TEST(RecentFiles, OneThatBringsNothingInIsNotNoted)
{
    FilesBench bench;
    open_path(bench.shell, bench.folder + "/nowhere.bin");
    EXPECT_FALSE(bench.form.button("mnuRecentFile", 0).visible());
}

TEST(RecentProjects, SavedAndOpenedOnesAreThereAndOneIsOpenedByAClick)
{
    FilesBench bench;
    const std::string one = bench.project("one.VRK");
    const std::string two = bench.project("two.VRK");
    EXPECT_EQ(bench.entry("mnuRecentProject", 0), two);
    EXPECT_EQ(bench.entry("mnuRecentProject", 1), one);
    EXPECT_EQ(click(bench.shell, bench.form.button("mnuRecentProject", 1)), Touch::taken);
    EXPECT_EQ(bench.form.text_box("texBatchFileName").text(), one);
    EXPECT_TRUE(bench.shell.locked);
    EXPECT_EQ(bench.form.tabs("TabStrip2").selected_key(), "Batch_quantity");
    EXPECT_EQ(bench.entry("mnuRecentProject", 0), one) << "the newest now";
}

TEST(RecentFiles, NoneIsOpenedWhileAChipIsWrittenOrAProjectIsLocked)
{
    FilesBench bench;
    bench.project("job.VRK");
    open_path(bench.shell, bench.file("other.bin", 'o'));
    set_locked(bench.shell, true);
    EXPECT_EQ(click(bench.shell, bench.form.button("mnuRecentFile", 1)), Touch::disabled);
    EXPECT_EQ(bench.shell.code_buffer.data[0], 'o');
    set_locked(bench.shell, false);
    bench.shell.running = true;
    EXPECT_EQ(click(bench.shell, bench.form.button("mnuRecentFile", 1)), Touch::busy);
    EXPECT_EQ(click(bench.shell, bench.form.button("mnuRecentProject", 0)), Touch::busy);
    bench.shell.running = false;
}

TEST(DroppedFiles, GoIntoTheBufferInViewAndAProjectIsOpened)
{
    FilesBench bench;
    const std::string job = bench.project("job.vrk");
    set_locked(bench.shell, false);
    bench.show_page("tab_file");
    EXPECT_EQ(drop_file(bench.shell, bench.file("other.BIN", 'c')), Touch::taken);
    EXPECT_EQ(bench.shell.code_buffer.data[0], 'c');
    EXPECT_FALSE(bench.shell.data_buffer.loaded);

    EXPECT_EQ(drop_file(bench.shell, job), Touch::taken);
    EXPECT_EQ(bench.shell.code_buffer.data[0], 'f');
    EXPECT_TRUE(bench.shell.locked);
}

TEST(DroppedFiles, OnTheEepromPageGoIntoItsBuffer)
{
    FilesBench bench;
    bench.select("Hazel-5R");
    ASSERT_TRUE(bench.form.button("comLoadDataFile").enabled());
    bench.show_page("EEPROM_File");
    EXPECT_EQ(drop_file(bench.shell, bench.file("table.bin", 'e')), Touch::taken);
    EXPECT_EQ(bench.shell.data_buffer.data[0], 'e');
    EXPECT_TRUE(bench.shell.data_buffer.loaded);
    EXPECT_NE(bench.shell.code_buffer.data[0], 'e');
    EXPECT_EQ(bench.form.frame("frmDataFlash").caption(), "Data File: " + bench.folder + "/table.bin");
}

TEST(DroppedFiles, AreRefusedWhileAChipIsWrittenAProjectLockedABoxOpenOrTheKindUnknown)
{
    FilesBench bench;
    const std::string code = bench.file("code.bin", 'c');
    bench.shell.running = true;
    EXPECT_EQ(drop_file(bench.shell, code), Touch::busy);
    EXPECT_EQ(may_drop(bench.shell, bench.folder + "/job.VRK"), Touch::busy);
    bench.shell.running = false;
    set_locked(bench.shell, true);
    EXPECT_EQ(drop_file(bench.shell, code), Touch::disabled);
    set_locked(bench.shell, false);
    bench.shell.dialogs_open = 1;
    EXPECT_EQ(drop_file(bench.shell, code), Touch::busy);
    bench.shell.dialogs_open = 0;
    EXPECT_EQ(drop_file(bench.shell, bench.file("readme.txt")), Touch::impossible);
    EXPECT_EQ(drop_file(bench.shell, ""), Touch::impossible);
    EXPECT_FALSE(bench.shell.code_buffer.loaded);
}
