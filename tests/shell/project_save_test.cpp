// The dialogs of projects, the way to the disk, and the lock.
#include "project_bench.h"

#include <csignal>
#include <sys/resource.h>

using namespace vrk;

namespace {

// No file of this process grows past so many bytes: as a full disk, in the middle of a write.
struct FullDisk {
    explicit FullDisk(rlim_t bytes)
    {
        before_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, before_handler);
    }
    rlimit before{};
    void (*before_handler)(int) = nullptr;
};

std::size_t files_in(const std::string& folder)
{
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator{folder}, std::filesystem::directory_iterator{}));
}

} // namespace

// ---- dialogs

TEST(SaveProject, WithoutACodeFileAsksForOne)
{
    ProjectBench bench{"Hazel-1", false};
    click(bench.shell, bench.form.button("comSaveBatchFile"));
    EXPECT_EQ(bench.next_box(), "Please open code file./请打开应用程序文件。");
    EXPECT_TRUE(bench.dialogs.asked.empty());
    EXPECT_EQ(files_in(bench.folder), 0U);
}

TEST(SaveProject, AsksInTheFolderOfProjectsAndWritesWhereItIsTold)
{
    ProjectBench bench{"Hazel-1", false};
    bench.open_code(Bench::pattern(600));
    bench.form.text_box("texBatchFileName").set_text("/jobs/before.VRK");
    bench.dialogs.choices = {"  " + bench.path + " "};
    click(bench.shell, bench.form.button("comSaveBatchFile"));

    const FileDialog& asked = bench.dialogs.asked.at(0);
    EXPECT_EQ(asked.kind, FileDialog::Kind::save);
    EXPECT_EQ(asked.title, "保存工程文件 *.VRK");
    EXPECT_EQ(asked.filter, "*.VRK |*.VRK|All Files (*.*)|*.*");
    EXPECT_EQ(asked.initial_dir, bench.folder + "/VRK_Project");
    EXPECT_EQ(asked.file_name, "/jobs/before.VRK");
    EXPECT_TRUE(std::filesystem::is_directory(bench.folder + "/VRK_Project"));
    EXPECT_EQ(bench.form.text_box("texBatchFileName").text(), bench.path);
    EXPECT_TRUE(parse_project(bench.saved()).code.sum_is_right);
    EXPECT_EQ(files_in(bench.folder), 2U) << "the project and the folder, and nothing left over";
}

TEST(SaveProject, CancelledWritesNothing)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    bench.form.text_box("texBatchFileName").set_text("before");
    bench.dialogs.choices = {std::nullopt};
    click(bench.shell, bench.form.button("comSaveBatchFile"));
    EXPECT_EQ(bench.form.text_box("texBatchFileName").text(), "before");
    EXPECT_EQ(files_in(bench.folder + "/VRK_Project"), 0U);
}

TEST(SaveProject, DoesNotTakeThePlaceOfTheOpenCodeFile)
{
    ProjectBench bench;
    const std::string code = bench.folder + "/code.bin";
    bench.write(code, std::string(600, 'c'));
    take_path(bench.shell, BufferKind::code, code);
    ASSERT_TRUE(load_file(bench.shell, code, bench.shell.code_buffer));
    save_project(bench.shell, bench.folder + "/./code.bin");
    EXPECT_EQ(bench.contents(code), std::string(600, 'c'));
    EXPECT_EQ(bench.dialogs.shown.back().box.text, "The project can not take the place of the open code file.");
    save_project(bench.shell, bench.path);
    EXPECT_TRUE(parse_project(bench.saved()).code.sum_is_right);
}

TEST(SaveProject, ChangesNothingButTheNameShown)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    const auto state = bench.state();
    bench.save();
    EXPECT_EQ(bench.changes_since(state), "");
    EXPECT_EQ(panel_state(bench.shell), 0);
}

// A number far behind the file used to make the saved image longer.
TEST(SaveProject, IsAsLongAsTheFileWhereverItsNumberLies)
{
    ProjectBench bench{"Juniper-60Q"};
    bench.put(bench.shell.code_buffer, Bench::pattern(600));
    bench.fill_in_numbers();
    type_text(bench.shell, bench.form.text_box("texAuto_Increase", 0), "2FFF");
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    ASSERT_TRUE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.shell.code_buffer.view_high, 599);
    bench.save();
    EXPECT_EQ(parse_project(bench.saved()).code.bytes, Bench::pattern(600));
}

TEST(OpenProjectDialog, ProposesTheLastProjectAndCancelChangesNothing)
{
    ProjectBench bench;
    bench.form.text_box("texBatchFileName").set_text(bench.path);
    const auto state = bench.state();
    bench.dialogs.choices = {std::nullopt};
    click(bench.shell, bench.form.button("comOpenBatchFile"));

    const FileDialog& asked = bench.dialogs.asked.at(0);
    EXPECT_EQ(asked.kind, FileDialog::Kind::open);
    EXPECT_EQ(asked.title, "Open Project File *.VRK");
    EXPECT_EQ(asked.filter, "*.VRK |*.VRK|All Files (*.*)|*.*");
    EXPECT_EQ(asked.initial_dir, bench.folder + "/VRK_Project");
    EXPECT_EQ(asked.file_name, bench.path);
    EXPECT_TRUE(asked.must_exist);
    EXPECT_EQ(bench.changes_since(state), "");
    EXPECT_EQ(files_in(bench.folder), 0U);
}

TEST(OpenProjectDialog, AChosenFileIsOpened)
{
    ProjectBench bench{"Oak-32"};
    bench.open_code(Bench::pattern(600));
    bench.save();
    bench.change_everything();
    bench.dialogs.choices = {bench.path};
    click(bench.shell, bench.form.button("comOpenBatchFile"));
    EXPECT_EQ(bench.shell.selected.mcu_name, "Oak-32");
    EXPECT_EQ(panel_state(bench.shell), 2);
}

TEST(OpenProjectDialog, AProjectMayBeChosenInTheDialogOfEitherBuffer)
{
    ProjectBench bench{"Juniper-60Q"};
    bench.open_code(Bench::pattern(600));
    bench.save();
    for (Button* button : {&bench.form.button("comLoadFile"), &bench.form.button("comLoadDataFile")}) {
        bench.change_everything();
        bench.select("Juniper-8Q");
        bench.form.tabs("TabStrip2").select(0);
        bench.dialogs.choices = {bench.path};
        EXPECT_EQ(click(bench.shell, *button), Touch::taken);
        EXPECT_EQ(bench.form.tabs("TabStrip2").selected_key(), "Batch_quantity");
        EXPECT_TRUE(bench.form.frame("fra_Batch_quantity").visible());
        EXPECT_FALSE(bench.form.frame("Frame7").visible());
        EXPECT_EQ(bench.shell.selected.mcu_name, "Juniper-60Q");
        EXPECT_EQ(bench.shell.code_buffer.data[5], Bench::pattern(600)[5]);
        comUnlockOptions_Click(bench.shell);
    }
}

TEST(OpenProjectDialog, AProjectThatWasChosenIsNeverReloadedAsCode)
{
    ProjectBench bench{"Juniper-60Q"};
    bench.open_code(Bench::pattern(600));
    bench.save();
    bench.dialogs.choices = {bench.path};
    click(bench.shell, bench.form.button("comLoadFile"));
    const auto image = bench.shell.code_buffer.data;

    reload_code_file(bench.shell);
    EXPECT_EQ(bench.shell.code_buffer.data, image);

    bench.form.check_box("cekReloadFileWhileFileChange").set_value(true);
    Timer12_Timer(bench.shell);
    std::filesystem::last_write_time(bench.path, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    Timer12_Timer(bench.shell);
    EXPECT_EQ(bench.shell.code_buffer.data, image);
    EXPECT_FALSE(bench.shell.running);
    EXPECT_EQ(bench.chip.power_ups(), 0);
}

TEST(ProjectUsage, IsTold)
{
    ProjectBench bench{"Hazel-1", false};
    click(bench.shell, bench.form.button("Command1"));
    EXPECT_EQ(bench.dialogs.shown.at(0).box.title, "VRK 工程文件使用说明");
    const std::string text = bench.next_box();
    EXPECT_TRUE(
        text.starts_with("    当需要下载时，您或您的同事可能会记不清 MCU 的型号、应用程序代码文件或其它事项，使用工程\n"
                         "文件可以消除这方面的烦恼。\n"
                         " 1、按照 X 产品下载应用程序的要求，设置 MCU 型号、打开应用程序文件、设置各选项和自动增量。\n"
                         " 2、"));
    EXPECT_TRUE(
        text.ends_with("\n 7、批量下载时点击“Re-Download/重复下载”按钮可以提高工作效率。\n"
                       "    当天下载工作结束时，要将自动增量“下一个值”记录下来，以便在下一次打开工程文件时修改。"));

    bench.shell.language_is_english = true;
    click(bench.shell, bench.form.button("Command1"));
    EXPECT_TRUE(bench.next_box().starts_with(
        "    When programing, you or your colleage may not remember the MCU type, the file name or other\n"));
}

// ---- the folder

TEST(ProjectFolder, LiesBesideTheProgramWhereThatCanBeWritten)
{
    ProjectBench bench;
    bench.shell.loader.documents_dir = bench.folder + "/documents";
    EXPECT_EQ(project_folder(bench.shell.loader), bench.folder + "/VRK_Project");
    make_folder(project_folder(bench.shell.loader));
    EXPECT_EQ(project_folder(bench.shell.loader), bench.folder + "/VRK_Project");
    EXPECT_EQ(files_in(bench.folder), 1U) << "trying leaves nothing behind";
}

TEST(ProjectFolder, LiesWithTheDocumentsWhereTheProgramsPlaceIsClosed)
{
    ProjectBench bench;
    bench.shell.loader.application_dir = "/proc"; // nobody makes a file there
    bench.shell.loader.documents_dir = bench.folder;
    EXPECT_EQ(project_folder(bench.shell.loader), bench.folder + "/VRK_Project");
    bench.shell.loader.application_dir = bench.folder + "/not/there";
    EXPECT_EQ(project_folder(bench.shell.loader), bench.folder + "/VRK_Project");
    bench.shell.loader.documents_dir.clear();
    EXPECT_EQ(project_folder(bench.shell.loader), bench.folder + "/not/there/VRK_Project") << "there is no other place";
    bench.shell.loader.application_dir.clear();
    EXPECT_EQ(project_folder(bench.shell.loader), "");
}

// ---- the old file stays whole

TEST(SaveProject, TakesThePlaceOfALongerProject)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(5000));
    bench.save();
    const std::size_t longer = bench.saved().size();
    bench.open_code(Bench::pattern(600));
    bench.save();
    EXPECT_LT(bench.saved().size(), longer);
    EXPECT_EQ(parse_project(bench.saved()).code.bytes, Bench::pattern(600));
    EXPECT_EQ(files_in(bench.folder), 1U);
}

TEST(SaveProject, AFullDiskLeavesTheOldProjectWholeAndSaysSo)
{
    ProjectBench bench{"Juniper-60Q", false};
    bench.open_code(Bench::pattern(600));
    bench.save();
    const std::string before = bench.saved();
    bench.open_code(Bench::pattern(60'000));
    {
        const FullDisk full{40'000};
        bench.save();
    }
    EXPECT_EQ(bench.next_box(), "工程文件无法保存，原有文件没有改变。\n" + bench.path + "\nFile too large");
    EXPECT_EQ(bench.saved(), before);
    EXPECT_EQ(files_in(bench.folder), 1U) << "what was half written is gone";
}

TEST(SaveProject, WhereNothingCanBeWrittenSaysSo)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    save_project(bench.shell, "/proc/job.VRK");
    EXPECT_EQ(bench.next_box(),
        "The project file can not be saved. A former file is as it was.\n/proc/job.VRK\nNo such file or directory");
    std::filesystem::create_directory(bench.path);
    bench.save();
    EXPECT_NE(bench.next_box().find("can not be saved"), std::string::npos) << "a folder is no file";
    EXPECT_EQ(files_in(bench.folder), 1U);
}

TEST(SaveProject, AWriteProtectedProjectIsLeftAlone)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    ProjectBench::write(bench.path, "old");
    std::filesystem::permissions(bench.path, std::filesystem::perms::owner_read);
    bench.save();
    EXPECT_NE(bench.next_box().find("can not be saved"), std::string::npos);
    EXPECT_EQ(bench.saved(), "old");
}

TEST(SaveProject, ThroughALinkReplacesWhatItLeadsTo)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    const std::string real = bench.folder + "/real.VRK";
    ProjectBench::write(real, "old");
    std::filesystem::create_symlink(real, bench.path);
    bench.save();
    EXPECT_TRUE(std::filesystem::is_symlink(bench.path));
    EXPECT_TRUE(parse_project(ProjectBench::contents(real)).code.sum_is_right);
}

// Without the suffix no dialog found it again.
TEST(SaveProject, WithoutASuffixGetsThatOfProjects)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    save_project(bench.shell, bench.folder + "/job");
    EXPECT_TRUE(parse_project(bench.saved()).code.sum_is_right);
    EXPECT_EQ(bench.form.text_box("texBatchFileName").text(), bench.path);
    save_project(bench.shell, bench.folder + "/job.backup");
    EXPECT_TRUE(parse_project(ProjectBench::contents(bench.folder + "/job.backup")).code.sum_is_right);
    EXPECT_EQ(files_in(bench.folder), 2U);
}

// The dialog has asked about the name as it was typed.
TEST(SaveProject, AsksBeforeTheSuffixMakesItAnotherProjectsName)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    ProjectBench::write(bench.path, "another");
    save_project(bench.shell, bench.folder + "/job");
    EXPECT_EQ(bench.next_box(), "The file exists already. Do you want to replace it (Y/N)?\n" + bench.path);
    EXPECT_EQ(bench.saved(), "another");
    EXPECT_EQ(bench.form.text_box("texBatchFileName").text(), "");
    bench.dialogs.replies = {Reply::yes};
    save_project(bench.shell, bench.folder + "/job");
    EXPECT_TRUE(parse_project(bench.saved()).code.sum_is_right);
}

// ---- the lock

namespace {

constexpr const char* held_by_the_lock[] = {"txtDevice", "TreeViewDevice", "txtAP_FileStart", "txtFileCheckSum",
    "cheClearAP_Buffer", "cheClearDataBuffer", "comLoadFile", "comLoadDataFile", "txtDataFileStart",
    "txtDataFileCheckSum", "comLockOptions", "comStoreFile", "Option0(0)", "Option0(1)", "Option12(1)",
    "comWDT_Prescalar(0)", "cheAuto_Increase", "cheData_Auto_Increase", "texAuto_Increase(0)", "texAuto_Increase(2)",
    "optAuto_Increase(2)", "texData_Auto_Increase(3)", "optData_Auto_Increase(0)"};
constexpr const char* left_free[] = {"comDownload(0)", "comDownload(1)", "comOpenBatchFile", "comSaveBatchFile",
    "comUnlockOptions", "comReadChipLock", "Command1"};

void expect_enabled(ProjectBench& bench, std::span<const char* const> names, bool enabled)
{
    for (const char* name : names)
        EXPECT_EQ(bench.control(name).enabled(), enabled) << name;
}

} // namespace

TEST(Lock, HoldsModelFilesOptionsAndNumbersUntilItIsReleased)
{
    ProjectBench bench{"Juniper-60Q"};
    click(bench.shell, bench.form.button("comLockOptions"));
    EXPECT_EQ(panel_state(bench.shell), 2);
    expect_enabled(bench, held_by_the_lock, false);
    expect_enabled(bench, left_free, true);
    EXPECT_FALSE(bench.form.button("comStop_Download").enabled());

    click(bench.shell, bench.form.button("comUnlockOptions"));
    EXPECT_EQ(panel_state(bench.shell), 0);
    expect_enabled(bench, held_by_the_lock, true);
    expect_enabled(bench, left_free, true);
}

TEST(Lock, OfAnOpenedProjectIsTheSame)
{
    ProjectBench bench{"Juniper-60Q"};
    bench.open_code(Bench::pattern(600));
    bench.turn_all_options();
    bench.save();
    bench.open();
    expect_enabled(bench, held_by_the_lock, false);
    expect_enabled(bench, left_free, true);
    const auto values = project_values(bench.shell);
    click(bench.shell, bench.form.button("comUnlockOptions"));
    EXPECT_EQ(project_values(bench.shell), values) << "releasing it changes no choice";
}

TEST(Lock, LeavesTheNumbersOfAModelWithoutEepromOff)
{
    ProjectBench bench{"Hazel-1"}; // its data flash has no room
    ASSERT_FALSE(has_eeprom_buffer(bench.shell.selected));
    click(bench.shell, bench.form.button("comLockOptions"));
    click(bench.shell, bench.form.button("comUnlockOptions"));
    EXPECT_FALSE(bench.form.check_box("cheData_Auto_Increase").enabled());
    EXPECT_FALSE(bench.form.text_box("texData_Auto_Increase", 0).enabled());
    EXPECT_FALSE(bench.form.button("comLoadDataFile").enabled());
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").enabled());
}

TEST(Lock, IsNotReleasedByAClickBesideTheTree)
{
    ProjectBench bench{"Juniper-60Q"};
    click(bench.shell, bench.form.button("comLockOptions"));
    click(bench.shell, bench.form.frame("FrameX", 0));
    EXPECT_NE(click(bench.shell, bench.form.text_box("txtDevice")), Touch::taken);
    EXPECT_NE(choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Hazel-6"), Touch::taken);
    EXPECT_EQ(bench.shell.selected.mcu_name, "Juniper-60Q");
}

TEST(Lock, StaysOverADownload)
{
    ProjectBench bench{"Hazel-1"};
    bench.open_code(Bench::pattern(600));
    bench.save();
    bench.open();
    bench.after_ms(200, [&] {
        EXPECT_EQ(panel_state(bench.shell), 3);
        EXPECT_FALSE(bench.form.button("comUnlockOptions").enabled());
        EXPECT_FALSE(bench.form.button("comOpenBatchFile").enabled());
    });
    bench.download();
    EXPECT_EQ(panel_state(bench.shell), 2);
    EXPECT_TRUE(bench.form.button("comUnlockOptions").enabled());
    EXPECT_FALSE(bench.form.button("comLoadFile").enabled());
}

// The panel of such a model has no states: nothing must stay locked that nothing could release.
TEST(Lock, HoldsForAProjectOfAModelWithoutOptionsToo)
{
    ProjectBench bench{"Larch-I14"};
    ASSERT_TRUE(bench.shell.selected.cap_no_option_write);
    bench.open_code(Bench::pattern(600));
    bench.save();
    bench.select("Juniper-60Q");
    bench.open();
    EXPECT_EQ(bench.shell.selected.mcu_name, "Larch-I14");
    EXPECT_EQ(panel_state(bench.shell), 2);
    EXPECT_FALSE(bench.form.text_box("txtDevice").enabled());
    EXPECT_FALSE(bench.form.button("comLoadFile").enabled());
    EXPECT_TRUE(bench.shell.file_loaded);
    click(bench.shell, bench.form.button("comUnlockOptions"));
    EXPECT_EQ(panel_state(bench.shell), 0);
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
}
