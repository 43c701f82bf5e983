// Frame 8D, byte by byte in each form, and the rows that tell whether the chip has taken it.
#include "link/option_commit.h"

#include "options/codec.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace vrk;

namespace {

OptionBytes counting() // row n holds 0x40 + n
{
    OptionBytes bytes{};
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0x40});
    return bytes;
}

McuRecord of_series(std::int16_t series)
{
    McuRecord record;
    record.series = series;
    return record;
}

std::vector<int> rows(std::int16_t series, const char* letter, const char* version)
{
    const McuRecord record = of_series(series);
    const auto found = compared_rows(record, letter, version);
    return {found.begin(), found.end()};
}

Bytes from_length(const Bytes& frame) { return {frame.begin() + 3, frame.end()}; }

} // namespace

TEST(OptionFrame, OfTheOldestFamilyHasOneByte)
{
    EXPECT_EQ(
        build_single_option_frame(0xFF, Check::sum8), (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x07, 0x8D, 0xFF, 0xFD, 0x16}));
}

TEST(OptionFrame, OfTheOlderFamiliesHasByte1TheReloadAndByte8)
{
    EXPECT_EQ(build_older_option_frame(counting(), 0xFF, 0xE8, Check::sum8),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0A, 0x8D, 0x41, 0xFF, 0xE8, 0x48, 0x71, 0x16}));
    EXPECT_EQ(build_older_option_frame(counting(), 0xFF, 0xE8, Check::sum16)[4], 0x0B);
}

TEST(OptionFrame, OfTheFirstNewerFamiliesTellsTheirRowsTwice)
{
    const Bytes frame = build_newer_option_frame(counting(), 5, 0x00A8C000, Check::sum8);
    const Bytes wanted = {0x00, 0x26, 0x8D, 0x42, 0x43, 0x48, 0x4A, 0x4B, 0x00, 0xA8, 0xC0, 0x00, 0x40, 0x41, 0x42,
        0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49, 0x4A, 0x4B, 0x4C, 0x4D, 0x4E, 0x4F, 0x00, 0xA8, 0xC0, 0x00, 0xFF,
        0xFF, 0xFF};
    const Bytes found = from_length(frame);
    EXPECT_EQ(Bytes(found.begin(), found.end() - 2), wanted);
    EXPECT_EQ(build_newer_option_frame(counting(), 5, 0, Check::sum16)[4], 0x27);
}

TEST(OptionFrame, OfHazelHasRow0WhereTheOthersHaveRow11)
{
    EXPECT_EQ(build_newer_option_frame(counting(), 6, 0, Check::sum16)[10], 0x40);
    EXPECT_EQ(build_newer_option_frame(counting(), 5, 0, Check::sum8)[10], 0x4B);
}

TEST(OptionFrame, FromJuniperOnIsSixteenRowsAndTheClockWithALongCheck)
{
    const Bytes frame = build_newer_option_frame(counting(), 7, 11059743, Check::sum8);
    const Bytes wanted = {0x00, 0x1B, 0x8D, 0x40, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49, 0x4A, 0x4B,
        0x4C, 0x4D, 0x4E, 0x4F, 0x00, 0xA8, 0xC2, 0x1F};
    const Bytes found = from_length(frame);
    EXPECT_EQ(frame.size(), 0x1DU);
    EXPECT_EQ(Bytes(found.begin(), found.end() - 3), wanted);
    EXPECT_EQ(found.back(), 0x16);
}

TEST(OptionFrame, OfTheLastFamilyHasSixRowsAndTheClockOrNone)
{
    EXPECT_EQ(from_length(build_last_option_frame(counting(), 0x00A8C000, Check::sum8)),
        (Bytes{0x00, 0x10, 0x8D, 0x40, 0x43, 0x44, 0x45, 0x48, 0x49, 0x00, 0xA8, 0xC0, 0x00, 0x0C, 0x16}));
    const Bytes without = build_last_option_frame(counting(), std::nullopt, Check::sum16);
    EXPECT_EQ(without[4], 0x11);
    EXPECT_EQ(Bytes(without.begin() + 12, without.begin() + 16), Bytes(4, 0xFF));
}

TEST(ComparedRows, GoByFamilyAndFirmware)
{
    EXPECT_EQ(rows(7, "I", "6.3"), (std::vector{0, 1, 2, 3, 9}));
    EXPECT_EQ(rows(15, "R", "6.3"), (std::vector{0, 1, 2, 3, 12, 13}));
    EXPECT_EQ(rows(6, "H", "5.8"), (std::vector{0, 1, 2, 3, 9}));
    EXPECT_EQ(rows(6, "H", "5.7"), (std::vector{2, 3, 8, 10, 11, 0}));
    EXPECT_EQ(rows(3, "D", "5.4"), (std::vector{2, 3, 8, 10, 11}));
}
