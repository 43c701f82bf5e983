#include "image/bin_loader.h"

#include "image/bench.h"
#include "image/range_messages.h"

using namespace vrk;
using image_test::fixture;
using image_test::LoadBench;

TEST(BinLoader, AnEmptyFileReachesTo511)
{
    LoadBench bench{"Juniper-60"};
    EXPECT_EQ(bench.load(fixture("empty.bin")), LoadEnd::done);
    EXPECT_EQ(bench.buffer.high, 511);
    EXPECT_EQ(bench.buffer.checksum, 0);
}

TEST(BinLoader, BytesStandFromTheStartAddressOn)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = 0x1000;
    bench.load(fixture("hundred_bytes.bin"));
    EXPECT_EQ(bench.buffer.data[0x0FFF], 0);
    EXPECT_EQ(bench.buffer.data[0x1000], 1);
    EXPECT_EQ(bench.buffer.data[0x1063], 100);
    EXPECT_EQ(bench.buffer.low, 0x1000);
    EXPECT_EQ(bench.buffer.high, 0x1063);
    EXPECT_EQ(bench.buffer.checksum, 5050) << "the read that finds the end adds nothing";
    EXPECT_EQ(bench.checksum, "00013BAH       ");
}

TEST(BinLoader, AStartOf8000IsCorrectedToThatAddress)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = -0x8000; // as four digits come out
    bench.load(fixture("hundred_bytes.bin"));
    EXPECT_EQ(bench.buffer.low, 0x8000);
    EXPECT_EQ(bench.buffer.data[0x8000], 1);
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
    LoadBench bench{"Alder-64"}; // 10000 to 11FFF are its boot area: no limit stops a binary file there
    bench.load(bench.file("long.bin", std::string(0x12001, '\x01')));
    EXPECT_EQ(bench.buffer.data[0x12000], 1);
    EXPECT_EQ(bench.buffer.checksum, 0x12001);
}

TEST(BinLoader, ALongerFileThanTheArrayIsReadNoFurtherThanItsTop)
{
    LoadBench bench{"Juniper-60Q", BufferKind::data};
    bench.load(bench.file("huge.bin", std::string(200'000, '\x01')));
    EXPECT_EQ(bench.buffer.checksum, 0x10002) << "all that fits, and the one byte that did not";
    EXPECT_EQ(bench.buffer.high, 0x3FF);
}

TEST(BinLoader, ABinaryEepromFileKeepsTheBlanksBehindTheH)
{
    LoadBench bench{"Juniper-60Q", BufferKind::data};
    bench.load(fixture("hundred_bytes.bin"));
    EXPECT_EQ(bench.checksum, "00013BAH       ");
}

TEST(BinLoader, ItsRangeMessagesBearItsTitle)
{
    LoadBench bench{"Juniper-60Q"};
    bench.load(bench.file("long.bin", std::string(0xF001, 'x')));
    ASSERT_EQ(bench.reports.size(), 1U);
    EXPECT_STREQ(range_title(bench.reports[0], FileKind::bin), "Open BIN file");
    EXPECT_EQ(bench.buffer.high, 0xEFFF);
}
