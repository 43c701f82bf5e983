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
    EXPECT_EQ(open_image_file(folder.file("lamp.Hex", "no records"), 16).kind, FileKind::hex);
    EXPECT_EQ(open_image_file(folder.file("lamp.txt", ":00\n:00\n:00\n"), 16).kind, FileKind::hex);
    EXPECT_EQ(open_image_file(folder.file("lamp", ":00\n:00\ntext\n"), 16).kind, FileKind::bin);
    EXPECT_EQ(open_image_file(folder.file("empty", ""), 16).kind, FileKind::bin);
}

TEST(ImageFile, ABinaryOneIsReadOneByteFurtherThanTheBufferReaches)
{
    const Folder folder;
    EXPECT_EQ(open_image_file(folder.file("long.bin", std::string(100, 'x')), 16).contents.size(), 17U);
    EXPECT_EQ(open_image_file(folder.file("short.bin", "xyz"), 16).contents, "xyz");
}

TEST(ImageFile, OneThatCannotBeReadIsToldFromAnEmptyOne)
{
    const Folder folder;
    EXPECT_EQ(open_image_file(folder.path + "/missing.hex", 16).fault, FileFault::not_found);
    EXPECT_EQ(open_image_file(folder.path, 16).fault, FileFault::not_found);
    EXPECT_EQ(open_image_file(folder.file("empty.bin", ""), 16).fault, FileFault::none);
    EXPECT_FALSE(is_file(folder.path + "/missing.hex"));
    EXPECT_FALSE(is_file(folder.path));
}

// It used to be read as a whole, however long it was: 64 GB ended the program.
TEST(ImageFile, AboveSixtyFourMegabytesIsNotReadAtAll)
{
    const Folder folder;
    for (const char* name : {"long.hex", "long.bin"}) {
        const std::string path = folder.file(name, "");
        std::filesystem::resize_file(path, ImageFile::most_bytes);
        EXPECT_EQ(open_image_file(path, 16).fault, FileFault::none);
        std::filesystem::resize_file(path, std::uintmax_t{64} << 30U);
        const ImageFile file = open_image_file(path, 16);
        EXPECT_EQ(file.fault, FileFault::too_large);
        EXPECT_EQ(file.size, std::uintmax_t{64} << 30U);
        EXPECT_EQ(file.contents, "");
    }
}

// The first record was passed over as a line of text, and the chip lacked its reset vector.
TEST(ImageFile, AMarkOfUtf8InFrontOfHexIsPassedOver)
{
    for (const char* name : {"lamp.hex", "lamp.txt"}) {
        LoadBench bench{"Juniper-60"};
        bench.load(bench.file(name,
            "\xEF\xBB\xBF" + image_test::hex_line(0, {0x42}) + image_test::hex_line(1, {0x43}) + image_test::end_line));
        EXPECT_EQ(bench.buffer.data[0], 0x42) << name;
        EXPECT_EQ(bench.buffer.data[1], 0x43) << name;
    }
}

TEST(ImageFile, ABinaryFileKeepsWhatOnlyLooksLikeAMark)
{
    const Folder folder;
    for (const char* contents : {"\xEF\xBB\xBFtext", "\xFF\xFEtext", "\xFE\xFFtext"}) {
        const ImageFile file = open_image_file(folder.file("code.bin", contents), 16);
        EXPECT_EQ(file.fault, FileFault::none);
        EXPECT_EQ(file.contents, contents);
    }
}

// Its digits were read as zeros.
TEST(ImageFile, HexInUtf16IsNoHex)
{
    const Folder folder;
    const std::string little{":\0"
                             "0\0"
                             "0\0"
                             "\n\0",
        8};
    const std::string big{"\0:"
                          "\0"
                          "0\0"
                          "0\0\n",
        8};
    for (const std::string& text : {"\xFF\xFE" + little, "\xFE\xFF" + big, little, big})
        EXPECT_EQ(open_image_file(folder.file("lamp.hex", text), 16).fault, FileFault::utf16);
    for (const std::string& text : {"\xFF\xFE" + little, "\xFE\xFF" + big})
        EXPECT_EQ(open_image_file(folder.file("lamp.txt", text), 16).fault, FileFault::utf16);
    EXPECT_EQ(open_image_file(folder.file("lamp.bin", little), 16).fault, FileFault::none) << "code may begin so";
}

TEST(ImageFile, OneWhoseBytesTheDiskDoesNotGiveIsNotFound)
{
    const Folder folder;
    std::filesystem::create_symlink("/proc/self/mem", folder.path + "/dead.bin"); // there, and no byte 0 in it
    EXPECT_EQ(open_image_file(folder.path + "/dead.bin", 16).fault, FileFault::not_found);
    std::filesystem::create_symlink("/proc/self/mem", folder.path + "/dead.hex");
    EXPECT_EQ(open_image_file(folder.path + "/dead.hex", 16).fault, FileFault::not_found);
}

TEST(ImageFile, OneWhoseBytesTheDiskDoesNotGiveAnyMoreIsUnreadable)
{
    const Folder folder;
    const std::string path = folder.file("lamp.hex", image_test::hex_line(0, {1, 2, 3}) + image_test::end_line);
    ImageFile file = open_image_file(path, 16);
    ASSERT_EQ(file.fault, FileFault::none);
    file.text = std::ifstream{"/proc/self/mem"}; // there, and no byte 0 in it
    LoadBench bench{"Juniper-60"};
    const Loaded loaded =
        load_image(bench.buffer, file, {bench.record, 0, false, false}, bench.boxes, [] { return true; });
    EXPECT_EQ(loaded.end, LoadEnd::unreadable);
}

TEST(FileStamp, ChangesWithTheSizeAlone)
{
    const Folder folder;
    const std::string path = folder.file("lamp.bin", "old");
    const auto time = std::filesystem::last_write_time(path);
    const auto before = file_stamp(path);
    folder.file("lamp.bin", "longer");
    std::filesystem::last_write_time(path, time);
    EXPECT_NE(file_stamp(path), before);
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
