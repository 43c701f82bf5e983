#include "image/bin_loader.h"

#include "image/bench.h"
#include "image/file_loader.h"

using namespace vrk;
using image_test::Bench;
using image_test::fixture;

TEST(BinLoader, AnEmptyFileReachesTo511)
{
    Bench bench{"Juniper-60"};
    EXPECT_TRUE(load_file(bench.shell, fixture("empty.bin"), bench.code));
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.code.checksum, 0);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(BinLoader, BytesStandFromTheStartAddressOn)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("1000");
    load_file(bench.shell, fixture("hundred_bytes.bin"), bench.code);
    EXPECT_EQ(bench.code.data[0x0FFF], 0);
    EXPECT_EQ(bench.code.data[0x1000], 1);
    EXPECT_EQ(bench.code.data[0x1063], 100);
    EXPECT_EQ(bench.code.low, 0x1000);
    EXPECT_EQ(bench.code.high, 0x1063);
    EXPECT_EQ(bench.code.checksum, 5050) << "the read that finds the end adds nothing";
    EXPECT_EQ(bench.form.txtFileCheckSum.text(), "00013BAH       ");
}

TEST(BinLoader, AStartOf8000IsCorrectedToThatAddress)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("8000");
    load_file(bench.shell, fixture("hundred_bytes.bin"), bench.code);
    EXPECT_EQ(bench.code.low, 0x8000);
    EXPECT_EQ(bench.code.data[0x8000], 1);
}

TEST(BinLoader, AFileOf512BytesEndsAt511AndOneMoreByteAt512)
{
    std::vector<std::uint8_t> image(0x1000);
    EXPECT_EQ(store_bin(std::vector<std::uint8_t>(512, 1), 0, image).high, 511);
    EXPECT_EQ(store_bin(std::vector<std::uint8_t>(513, 1), 0, image).high, 512);
}

TEST(BinLoader, AFileThatFillsTheImageFits)
{
    std::vector<std::uint8_t> image(1024);
    const BinFigures figures = store_bin(std::vector<std::uint8_t>(1024, 1), 0, image);
    EXPECT_EQ(figures.high, 1023);
    EXPECT_EQ(figures.checksum, 1024U);
    EXPECT_EQ(image[1023], 1);
}

TEST(BinLoader, TheByteThatDoesNotFitEndsTheLoadAndStillCounts)
{
    std::vector<std::uint8_t> image(1024);
    const BinFigures figures = store_bin(std::vector<std::uint8_t>(5000, 1), 0, image);
    EXPECT_EQ(figures.high, 1022);
    EXPECT_EQ(figures.checksum, 1025U);
}

TEST(BinLoader, ABaseAboveTheImageStoresNothing)
{
    std::vector<std::uint8_t> image(16);
    EXPECT_EQ(store_bin(std::vector<std::uint8_t>{7, 7}, 0x7FFFFFFF, image).checksum, 7U);
    EXPECT_EQ(store_bin({}, -5, image).high, 511);
}

TEST(BinLoader, ACodeFileMayRunToTheTopOfTheArray)
{
    Bench bench{"Alder-64"}; // 10000 to 11FFF are its boot area: no limit stops a binary file there
    load_file(bench.shell, bench.file("long.bin", std::string(0x12001, '\x01')), bench.code);
    EXPECT_EQ(bench.code.data[0x12000], 1);
    EXPECT_EQ(bench.code.checksum, 0x12001);
}

TEST(BinLoader, ALongerFileThanTheArrayIsReadNoFurtherThanItsTop)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, bench.file("huge.bin", std::string(200'000, '\x01')), bench.data);
    EXPECT_EQ(bench.data.checksum, 0x10002) << "all that fits, and the one byte that did not";
    EXPECT_EQ(bench.data.high, 0x3FF);
}

TEST(BinLoader, ABinaryEepromFileKeepsTheBlanksBehindTheH)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.bin"), bench.data);
    EXPECT_EQ(bench.form.txtDataFileCheckSum.text(), "00013BAH       ");
}

TEST(BinLoader, ItsRangeMessagesBearItsTitle)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, bench.file("long.bin", std::string(0xF001, 'x')), bench.code);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), "Open BIN file");
    EXPECT_EQ(bench.code.high, 0xEFFF);
}
