#include "shell/file_watch.h"

#include "shell/acting_dialogs.h"
#include "shell/buffer_bench.h"
#include "shell/device.h"
#include "shell/messages.h"
#include "shell/open_file.h"

#include <chrono>

using namespace vrk;
using buffer_test::Bench;

namespace {

// An open code file, and the watch switched on.
struct WatchBench : Bench {
    explicit WatchBench(const char* its_name = "lamp.bin", std::string_view contents = "old")
        : Bench("Juniper-60")
        , name(its_name)
    {
        close_device_tree(shell);
        dialogs.choices.push_back(file(name, contents));
        written = std::filesystem::last_write_time(path());
        comLoadFile_Click(shell);
        form.check_box("cekReloadFileWhileFileChange").set_value(true);
    }
    std::string path() const { return folder + "/" + name; }
    // Writes the file as a compiler would some seconds later.
    void compile(std::string_view contents)
    {
        file(name, contents);
        written += std::chrono::seconds{2};
        std::filesystem::last_write_time(path(), written);
    }
    bool look_a_second_later()
    {
        loop.run_for_ms(1000);
        return watch_code_file(shell);
    }
    // Two looks: at the first the change is seen, at the second it has lasted.
    bool settles()
    {
        EXPECT_FALSE(watch_code_file(shell)) << "the file has just changed";
        return look_a_second_later();
    }
    const std::string name;
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
    EXPECT_TRUE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 'n');
    EXPECT_FALSE(watch_code_file(bench.shell));
}

TEST(FileWatch, AFileChosenSinceTheLastLookIsOnlyRemembered)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.compile("new");
    bench.dialogs.choices = {bench.file("other.bin", "other")};
    comLoadFile_Click(bench.shell);
    EXPECT_FALSE(bench.settles());
    EXPECT_EQ(bench.shell.loader.reload_watch_path, bench.folder + "/other.bin");
    EXPECT_EQ(bench.code.data[0], 'o');
    EXPECT_EQ(bench.code.data[1], 't');
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
    EXPECT_TRUE(bench.settles());
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
    EXPECT_TRUE(bench.settles());
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
    EXPECT_FALSE(bench.look_a_second_later());
    std::filesystem::last_write_time(bench.path(), bench.written + std::chrono::seconds{5});
    EXPECT_TRUE(bench.settles());
    EXPECT_FALSE(bench.data.loaded);
}

TEST(FileWatch, AFileWrittenBetweenItsLoadAndTheFirstLookIsNotMissed)
{
    WatchBench bench;
    bench.compile("new");
    EXPECT_TRUE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 'n');
}

// What was programmed with the present file must not be programmed once more by the watch.
TEST(FileWatch, AFileThatAPressHasLoadedAgainIsNoNews)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.compile("new");
    reload_code_file(bench.shell);
    EXPECT_FALSE(bench.settles());
}

TEST(FileWatch, WhatChangedWhileTheBoxWasOffStartsNothingWhenItIsTicked)
{
    WatchBench bench;
    bench.form.check_box("cekReloadFileWhileFileChange").set_value(false);
    bench.compile("new");
    watch_code_file(bench.shell);
    bench.form.check_box("cekReloadFileWhileFileChange").set_value(true);
    EXPECT_FALSE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 'o');
}

// Half a file reached a chip while a linker was writing it.
TEST(FileWatch, AFileThatGrowsIsLeftAloneUntilItHasStoodStillForASecond)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    std::string contents = "n";
    for (int piece = 0; piece < 5; ++piece) {
        contents += "ew";
        std::ofstream{bench.path(), std::ios::binary} << contents;
        EXPECT_FALSE(bench.look_a_second_later()) << piece;
        EXPECT_EQ(bench.code.data[0], 'o') << piece;
    }
    bench.loop.run_for_ms(900);
    EXPECT_FALSE(watch_code_file(bench.shell));
    bench.loop.run_for_ms(100);
    EXPECT_TRUE(watch_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[10], 'w');
}

TEST(FileWatch, AHexFileWithoutItsEndRecordIsToldOnceAndTheNextChangeIsWaitedFor)
{
    WatchBench bench("lamp.hex", ":0100000041BE\n:00000001FF\n");
    bench.shell.language_is_english = true;
    watch_code_file(bench.shell);
    bench.compile(":0100000042BD\n:01000");
    EXPECT_FALSE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 0x41);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_TRUE(bench.dialogs.shown.empty()) << "nobody stands by to press a button";
    const std::string told = bench.form.text_box("textMsg").text();
    EXPECT_EQ(told,
        "\nThe HEX file has no end record: it may not have been written to its end."
        "\nThe file could not be loaded again. Nothing was programmed.");
    EXPECT_FALSE(bench.look_a_second_later());
    EXPECT_EQ(bench.form.text_box("textMsg").text(), told);

    bench.compile(":0100000042BD\n:00000001FF\n");
    EXPECT_TRUE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 0x42);
}

// A linker begins by emptying the file, and may take its time. A box would hold the watch up until somebody comes.
TEST(FileWatch, AFileThatWasEmptiedIsToldWithoutABox)
{
    WatchBench bench("lamp.hex", ":0100000041BE\n:00000001FF\n");
    bench.shell.language_is_english = true;
    watch_code_file(bench.shell);
    bench.compile("");
    EXPECT_FALSE(bench.settles());
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.form.text_box("textMsg").text(),
        "\nThe file contains no data."
        "\nThe file could not be loaded again. Nothing was programmed.");
    bench.compile(":0100000042BD\n:00000001FF\n");
    EXPECT_TRUE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 0x42);
}

// The name of the one that failed used to stand over the old image, and the watch waited for that one.
TEST(FileWatch, StaysWithTheFileInTheBufferWhereAnotherCouldNotBeOpened)
{
    WatchBench bench;
    watch_code_file(bench.shell);
    bench.dialogs.choices = {bench.file("other.hex", "hello")};
    comLoadFile_Click(bench.shell);
    bench.file("other.hex", ":0100000042BD\n:00000001FF\n");
    EXPECT_FALSE(bench.settles());
    bench.compile("new");
    EXPECT_TRUE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 'n');
}

TEST(FileWatch, HoldsStillUnderAnOpenTree)
{
    WatchBench bench;
    bench.compile("new");
    open_device_tree(bench.shell);
    EXPECT_FALSE(bench.settles());
    EXPECT_EQ(bench.code.data[0], 'o');
    close_device_tree(bench.shell);
    EXPECT_TRUE(bench.settles());
}

TEST(FileWatch, HoldsStillUnderEveryDialog)
{
    WatchBench bench;
    buffer_test::ActingDialogs dialogs;
    Shell shell{Platform{bench.loop, bench.ports, dialogs, bench.settings}};
    shell.selected = bench.shell.selected;
    NamedControls names{shell.controls};
    names.check_box("cekReloadFileWhileFileChange").set_value(true);
    close_device_tree(shell);
    take_path(shell, BufferKind::code, bench.path());
    load_file(shell, bench.path(), shell.code_buffer);
    bench.compile("new");
    int looks = 0;
    const auto ticks = [&] {
        for (int second = 0; second < 3; ++second, ++looks) {
            bench.loop.run_for_ms(1000);
            EXPECT_FALSE(watch_code_file(shell));
        }
    };
    dialogs.act = ticks;
    show_box(shell, "a box");
    dialogs.act = ticks;
    ask_yes_no(shell, "a question");
    dialogs.act = ticks;
    choose_file(shell, BufferKind::data);
    EXPECT_EQ(looks, 9);
    EXPECT_EQ(shell.code_buffer.data[0], 'o');
    watch_code_file(shell);
    bench.loop.run_for_ms(1000);
    EXPECT_TRUE(watch_code_file(shell));
}
