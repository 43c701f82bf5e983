#include "shell/store_file.h"

#include "shell/buffer_bench.h"

#include <numeric>

using namespace vrk;
using buffer_test::Bench;

namespace {

std::string contents(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::size_t files_in(const std::string& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator{folder}, {}));
}

// A code buffer in which every byte tells its address.
struct StoreBench : Bench {
    StoreBench()
        : Bench("Juniper-60")
    {
        std::iota(code.data.begin(), code.data.end(), std::uint8_t{0});
    }
    void store(const char* start, const char* length)
    {
        form.text_box("txt_Start_Address").set_text(start);
        form.text_box("txt_length").set_text(length);
        comStoreFile_Click(shell);
    }
    std::string path() const { return folder + "/range.bin"; }
};

} // namespace

TEST(StoreFile, WritesTheBytesOfTheRange)
{
    StoreBench bench;
    bench.dialogs.choices.push_back(bench.path());
    bench.store("00fe", "00004");
    EXPECT_EQ(contents(bench.path()), std::string("\xFE\xFF\x00\x01", 4));
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_EQ(files_in(bench.folder), 1U);
}

TEST(StoreFile, ReplacesAFileAndKeepsItsRights)
{
    StoreBench bench;
    bench.file("range.bin", "something longer than the range");
    std::filesystem::permissions(
        bench.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    bench.dialogs.choices.push_back(bench.path());
    bench.store("10", "2");
    EXPECT_EQ(contents(bench.path()), "\x10\x11");
    EXPECT_EQ(std::filesystem::status(bench.path()).permissions(),
        std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(StoreFile, WritesThroughALinkAndLeavesTheLink)
{
    StoreBench bench;
    const std::string real = bench.file("real.bin", "old");
    std::filesystem::create_symlink(real, bench.path());
    bench.dialogs.choices.push_back(bench.path());
    bench.store("10", "2");
    EXPECT_TRUE(std::filesystem::is_symlink(bench.path()));
    EXPECT_EQ(contents(real), "\x10\x11");
}

TEST(StoreFile, StoresAllSixtyFourKilobytes)
{
    StoreBench bench;
    bench.dialogs.choices.push_back(bench.path());
    bench.store("0000", "10000");
    EXPECT_EQ(contents(bench.path()).size(), 0x10000U);
}

TEST(StoreFile, AsksForTheFileWhereTheCodeFileLies)
{
    StoreBench bench;
    bench.settings.set("Settings", "FilePath", bench.folder + "/lamp.hex");
    bench.store("0000", "1");
    ASSERT_EQ(bench.dialogs.asked.size(), 1U);
    EXPECT_EQ(bench.dialogs.asked[0].kind, FileDialog::Kind::save);
    EXPECT_EQ(bench.dialogs.asked[0].title, "Save .bin file");
    EXPECT_EQ(bench.dialogs.asked[0].filter, "(*.bin)|*.bin|All Files (*.*)|*.*");
    EXPECT_EQ(bench.dialogs.asked[0].initial_dir, bench.folder);
    EXPECT_FALSE(bench.dialogs.asked[0].must_exist);
}

TEST(StoreFile, CancellingWritesNothing)
{
    StoreBench bench;
    bench.store("0000", "1");
    EXPECT_EQ(files_in(bench.folder), 0U);
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(StoreFile, RefusalsAreSaidUnderEachOtherInBothLanguagesAndAskForNoFile)
{
    StoreBench bench;
    bench.store("0000", "0");
    bench.store("0001", "10000");
    EXPECT_EQ(bench.box_text(0), "The file size is too small.\n文件长度不能小于 0。");
    EXPECT_EQ(bench.box_text(1), "The file size is too big.\n文件长度太大。");
    EXPECT_TRUE(bench.dialogs.asked.empty());
}

TEST(StoreFile, RefusalsInEnglishHaveTheFirstLineAlone)
{
    StoreBench bench;
    bench.shell.language_is_english = true;
    bench.store("0000", "");
    bench.store("FFFF", "00002");
    EXPECT_EQ(bench.box_text(0), "The file size is too small.");
    EXPECT_EQ(bench.box_text(1), "The file size is too big.");
}

TEST(StoreFile, AFileThatCannotBeWrittenIsToldByName)
{
    StoreBench bench;
    bench.shell.language_is_english = true;
    bench.dialogs.choices.push_back(bench.folder + "/missing/range.bin");
    bench.store("0000", "1");
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_text(0),
        "The file cannot be written; what stood on the disk before is still there.\n" + bench.folder +
            "/missing/range.bin\nNo such file or directory");
}

TEST(StoreFile, AFolderIsNotReplaced)
{
    StoreBench bench;
    std::filesystem::create_directory(bench.path());
    bench.dialogs.choices.push_back(bench.path());
    bench.store("0000", "1");
    EXPECT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_TRUE(std::filesystem::is_directory(bench.path()));
    EXPECT_EQ(files_in(bench.folder), 1U);
}
