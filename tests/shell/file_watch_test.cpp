#include "shell/file_watch.h"

#include "shell/buffer_bench.h"
#include "shell/open_file.h"

#include <chrono>

using namespace vrk;
using buffer_test::Bench;

namespace {

// An open code file, and the watch switched on.
struct WatchBench : Bench {
    WatchBench()
        : Bench("Juniper-60")
    {
        dialogs.choices.push_back(file("lamp.bin", "old"));
        written = std::filesystem::last_write_time(path());
        comLoadFile_Click(shell);
        form.check_box("cekReloadFileWhileFileChange").set_value(true);
    }
    std::string path() const { return folder + "/lamp.bin"; }
    // Writes the file as a compiler would some seconds later.
    void compile(std::string_view contents)
    {
        file("lamp.bin", contents);
        written += std::chrono::seconds{2};
        std::filesystem::last_write_time(path(), written);
    }
    std::filesystem::file_time_type written;
};

} // namespace

TEST(FileWatch, TheFirstLookOnlyRemembersTheFile)
{
    WatchBench bench;
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.shell.loader.reload_watch_path, bench.path());
    EXPECT_FALSE(bench.shell.loader.reload_watch_stamp.empty());
}

TEST(FileWatch, AnUnchangedFileIsLeftAlone)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.code.data[0] = 'e'; // edited by hand
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'e');
}

TEST(FileWatch, AChangedFileIsLoadedOnce)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.compile("new");
    EXPECT_TRUE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'n');
    EXPECT_FALSE(watch_code_file(bench.shell));
}

TEST(FileWatch, AFileChosenSinceTheLastLookIsOnlyRemembered)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    take_path(bench.shell, BufferKind::code, bench.file("other.bin", "other"));
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.shell.loader.reload_watch_path, bench.folder + "/other.bin");
    EXPECT_EQ(bench.code.data[0], 'o') << "still the o of old";
    EXPECT_EQ(bench.code.data[1], 'l');
}

TEST(FileWatch, WithTheBoxOffNothingHappens)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.compile("new");
    bench.form.check_box("cekReloadFileWhileFileChange").set_value(false);
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'o');
}

TEST(FileWatch, WithoutAnOpenFileNothingHappens)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.compile("new");
    clear_buffer(bench.shell, 0, bench.code);
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_FALSE(bench.shell.file_loaded);
}

TEST(FileWatch, AFileThatIsGoneForAMomentIsWaitedFor)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    std::filesystem::remove(bench.path());
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_TRUE(bench.dialogs.shown.empty());
    bench.compile("new");
    EXPECT_TRUE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'n');
}

TEST(FileWatch, WhileASequenceRunsTheBytesStayAndTheChangeIsSeenAfterwards)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.compile("new");
    bench.shell.running = true;
    EXPECT_FALSE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'o');
    bench.shell.running = false;
    EXPECT_TRUE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'n');
}

TEST(FileWatch, FollowsTheCodeFileWhicheverFileWasChosenLast)
{
    WatchBench bench;
    const std::string data = bench.file("data.bin", "data");
    take_path(bench.shell, BufferKind::data, data);
    watch_code_file(bench.shell);
    std::filesystem::last_write_time(data, bench.written + std::chrono::seconds{5});
    EXPECT_FALSE(watch_code_file(bench.shell)) << "an EEPROM file is not watched";
    std::filesystem::last_write_time(bench.path(), bench.written + std::chrono::seconds{5});
    EXPECT_TRUE(watch_code_file(bench.shell));
    EXPECT_FALSE(bench.data.loaded);
}
