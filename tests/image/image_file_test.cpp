#include "image/image_file.h"

#include "image/bench.h"

#include <chrono>

using namespace vrk;
using image_test::fixture;
using image_test::Folder;
using image_test::LoadBench;

TEST(ImageFile, ASecondExtensionBehindHexStillIsIntelHex)
{
    LoadBench bench{"Juniper-60"};
    bench.load(bench.file("lamp.hex.bak", image_test::hex_line(0, {0x5A}) + "loose text\n"));
    EXPECT_EQ(bench.buffer.data[0], 0x5A);
}

TEST(ImageFile, AFolderNamedHexMakesEveryFileInItIntelHex)
{
    LoadBench bench{"Juniper-60"};
    std::filesystem::create_directories(bench.path + "/out.Hex");
    bench.load(bench.file("out.Hex/lamp.bin", "loose text\n" + image_test::hex_line(0, {0x5A})));
    EXPECT_EQ(bench.buffer.data[0], 0x5A);
}

TEST(ImageFile, ABinaryNameWithThreeColonLinesLoadsAsIntelHex)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("three_colon_lines.bin"));
    EXPECT_EQ(bench.buffer.data[0], 0x5A);
    EXPECT_EQ(bench.buffer.data[2], 0x5C);
}

TEST(ImageFile, AShortFileOfColonLinesAloneIsIntelHexToo)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("two_colon_lines.dat"));
    EXPECT_EQ(bench.buffer.data[0], 0x66);
}

TEST(ImageFile, AThirdLineOfTextMakesItBinary)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("third_line_is_text.bin"));
    EXPECT_EQ(bench.buffer.data[0], ':');
}

TEST(ImageFile, AHexFileLongerThanTheBufferIsReadToItsEnd)
{
    LoadBench bench{"Juniper-60"};
    const std::string comments(300'000, '\n');
    bench.load(bench.file("late.hex", comments + image_test::hex_line(0x10, {0x42})));
    EXPECT_EQ(bench.buffer.data[0x10], 0x42);
}

TEST(ImageFile, TheNameOrTheContentTellsTheKind)
{
    const Folder folder;
    EXPECT_EQ(read_image_file(folder.file("lamp.Hex", "no records"), 16).kind, FileKind::hex);
    EXPECT_EQ(read_image_file(folder.file("lamp.txt", ":00\n:00\n:00\n"), 16).kind, FileKind::hex);
    EXPECT_EQ(read_image_file(folder.file("lamp", ":00\n:00\ntext\n"), 16).kind, FileKind::bin);
    EXPECT_EQ(read_image_file(folder.file("empty", ""), 16).kind, FileKind::bin);
}

TEST(ImageFile, ABinaryOneIsReadOneByteFurtherThanTheBufferReaches)
{
    const Folder folder;
    EXPECT_EQ(read_image_file(folder.file("long.bin", std::string(100, 'x')), 16).contents.size(), 17U);
    EXPECT_EQ(read_image_file(folder.file("short.bin", "xyz"), 16).contents, "xyz");
}

TEST(ImageFile, OneThatCannotBeReadCountsAsEmpty)
{
    const Folder folder;
    EXPECT_EQ(read_image_file(folder.path + "/missing.hex", 16).contents, "");
    EXPECT_EQ(read_image_file(folder.path, 16).contents, "");
    EXPECT_FALSE(is_file(folder.path + "/missing.hex"));
    EXPECT_FALSE(is_file(folder.path));
}

TEST(FileStamp, ChangesWithTheFileAndIsMissingWithIt)
{
    const Folder folder;
    const std::string path = folder.file("lamp.bin", "old");
    const auto before = file_stamp(path);
    ASSERT_TRUE(before);
    EXPECT_EQ(file_stamp(path), before);
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds{2});
    EXPECT_NE(file_stamp(path), before);
    std::filesystem::remove(path);
    EXPECT_FALSE(file_stamp(path));
}
