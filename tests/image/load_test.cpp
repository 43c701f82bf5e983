#include "image/load.h"

#include "image/bench.h"

#include <algorithm>

using namespace vrk;
using image_test::fixture;
using image_test::LoadBench;
using image_test::model;

TEST(Buffers, CodeIsAddressableTo12000AndDataTo10000)
{
    EXPECT_EQ(FileBuffer{BufferKind::code}.last(), 0x12000);
    EXPECT_EQ(FileBuffer{BufferKind::data}.last(), 0x10000);
}

TEST(Buffers, EmptiedAreAKilobyteAgainAndKeepWhatTheUserHasSetForTheNextLoad)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = 0x20;
    bench.buffer.clear_first = true;
    bench.load(fixture("hundred_bytes.hex"));
    empty_buffer(0xA5, bench.buffer);
    EXPECT_TRUE(std::ranges::all_of(bench.buffer.data, [](std::uint8_t byte) { return byte == 0xA5; }));
    EXPECT_EQ(bench.buffer.low, 0);
    EXPECT_EQ(bench.buffer.high, 1023);
    EXPECT_EQ(bench.buffer.view_low, 0);
    EXPECT_EQ(bench.buffer.view_high, 1023);
    EXPECT_EQ(bench.buffer.checksum, 0);
    EXPECT_FALSE(bench.buffer.loaded);
    EXPECT_EQ(bench.buffer.start, 0x20);
    EXPECT_TRUE(bench.buffer.clear_first);
}

TEST(LoadBase, FourDigitsFrom8000UpGetTheir10000Back)
{
    EXPECT_EQ(load_base(-0x8000), 0x8000);
    EXPECT_EQ(load_base(-1), 0xFFFF);
    EXPECT_EQ(load_base(0x10000), 0x10000) << "five digits are not corrected";
}

TEST(StartAddress, FitsUpToTheLastByteOfTheDevice)
{
    const McuRecord split = model("Juniper-60Q"); // F000 to F3FF: offsets up to 3FF
    EXPECT_TRUE(start_address_fits(0xF3FF, BufferKind::code, split));
    EXPECT_FALSE(start_address_fits(0xF400, BufferKind::code, split));
    EXPECT_TRUE(start_address_fits(0x3FF, BufferKind::data, split));
    EXPECT_FALSE(start_address_fits(0x400, BufferKind::data, split));
}

TEST(StartAddress, From8000ToFFFFItPassesTheRefusalOnASmallModelToo)
{
    EXPECT_TRUE(start_address_fits(-0x8000, BufferKind::code, model("Hazel-1")));
}

TEST(Load, IsJudgedByTheModelOfItsBeginning)
{
    LoadBench bench{"Juniper-60Q"};
    bench.boxes.act = [&] { bench.record = model("Hazel-1"); };
    const std::string wrong_checksum = ":0100000001FF\n";
    bench.load(bench.file("long.hex", wrong_checksum + image_test::hex_line(0xF000, {7}) + image_test::end_line));
    ASSERT_EQ(bench.boxes.shown.size(), 1U);
    EXPECT_EQ(bench.buffer.high, 0xEFFF);
    EXPECT_EQ(bench.buffer.view_high, 0xEFFF);
    EXPECT_EQ(bench.buffer.data[0xF000], 7) << "stored up to the end of that model's map";
    ASSERT_EQ(bench.reports.size(), 1U);
    EXPECT_EQ(bench.reports[0].findings, std::vector{Finding::cut});
}

TEST(Merge, WithAFileOpenAndTheClearBoxOffALoadAdds)
{
    LoadBench bench{"Juniper-60"};
    bench.load(bench.file("a.hex", image_test::hex_line(0x100, {1, 2}) + image_test::end_line));
    bench.load(bench.file("b.hex", image_test::hex_line(0x800, {9}) + image_test::end_line));
    EXPECT_EQ(bench.buffer.data[0x100], 1);
    EXPECT_EQ(bench.buffer.data[0x800], 9);
    EXPECT_EQ(bench.buffer.view_low, 0);
    EXPECT_EQ(bench.buffer.view_high, 0x800);
}

TEST(Merge, ShowsTheChecksumOfTheLastFileNotTheSumOfBoth)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("hundred_bytes.hex"));
    bench.load(fixture("overlapping_records.hex"));
    EXPECT_EQ(bench.buffer.checksum, 12);
    EXPECT_EQ(bench.checksum, "000000CH       ");
    EXPECT_EQ(bench.buffer.data[50], 51) << "the first file is still there";
}

TEST(Merge, AShorterSecondFileKeepsTheSpanAndShrinksTheLength)
{
    LoadBench bench{"Juniper-60"};
    bench.load(bench.file("long.bin", std::string(0x1000, 'x')));
    bench.load(bench.file("short.bin", "y"));
    EXPECT_EQ(bench.buffer.high, 511);
    EXPECT_EQ(bench.buffer.view_high, 0xFFF);
}

TEST(Merge, WithTheClearBoxOnALoadReplaces)
{
    LoadBench bench{"Juniper-60"};
    bench.load(bench.file("long.bin", std::string(0x1000, 'x')));
    bench.buffer.clear_first = true;
    bench.load(bench.file("short.bin", "y"));
    EXPECT_EQ(bench.buffer.data[0], 'y');
    EXPECT_EQ(bench.buffer.data[1], 0);
    EXPECT_EQ(bench.buffer.view_low, 0);
    EXPECT_EQ(bench.buffer.view_high, 511);
}

TEST(Merge, WithoutAFileOpenALoadReplacesEvenWithTheClearBoxOff)
{
    LoadBench bench{"Juniper-60"};
    fill_buffer(0x77, bench.buffer);
    bench.load(fixture("overlapping_records.hex"));
    EXPECT_EQ(bench.buffer.data[6], 0);
}

TEST(Merge, AReplacedImageThatBeginsHighIsViewedFromThere)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = 0x1000;
    bench.load(bench.file("k.bin", std::string(0x400, 'k')));
    EXPECT_EQ(bench.buffer.view_low, 0x1000);
    EXPECT_EQ(bench.buffer.view_high, 0x13FF);
}

TEST(ChecksumText, HasSevenDigitsAndLosesTheTopOfEight)
{
    EXPECT_EQ(checksum_text(0x13BA), "00013BAH       ");
    EXPECT_EQ(checksum_text(0x12345678), "2345678H       ");
    EXPECT_EQ(checksum_text(-1), "FFFFFFFH       ");
}
