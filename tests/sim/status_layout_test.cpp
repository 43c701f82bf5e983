// Every form of the status frame, byte by byte where it matters. Indices count from 0x68.
#include "sim/reply_frames.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

ChipSetup specimen(char letter, std::uint8_t version, StatusLayout layout, bool long_frame, int series = 7)
{
    ChipSetup setup;
    setup.model.series = series;
    setup.model.long_frame = long_frame;
    setup.letter = letter;
    setup.version = version;
    setup.layout = layout;
    for (std::size_t row = 0; row < setup.options.size(); ++row)
        setup.options[row] = static_cast<std::uint8_t>(0xA0 + row); // the row's number shows
    return setup;
}

Bytes frame_of(const ChipSetup& setup)
{
    StatusFacts facts;
    facts.counts = {0x1234, 0x1235, 0x1236, 0x1237, 0x1238, 0x1239, 0x123A, 0x123B};
    facts.id_high = 0xD1;
    facts.id_low = 0x7E;
    Bytes frame = status_frame(setup, facts, setup.layout);
    frame.erase(frame.begin(), frame.begin() + 2);
    return frame;
}

Bytes part(const Bytes& frame, std::size_t first, std::size_t last)
{
    return {frame.begin() + static_cast<std::ptrdiff_t>(first), frame.begin() + static_cast<std::ptrdiff_t>(last) + 1};
}

unsigned sum_to(const Bytes& frame, std::size_t end)
{
    unsigned sum = 0;
    for (std::size_t i = 0; i < end; ++i)
        sum += frame[i];
    return sum;
}

TEST(StatusLayout, FrameBeginsWithDirectionLengthCodeAndTheEightCounts)
{
    const Bytes frame = frame_of(specimen('I', 0x63, StatusLayout::long_id, true));
    EXPECT_EQ(part(frame, 0, 7), (Bytes{0x68, 0x00, 0x3C, 0x50, 0x12, 0x34, 0x12, 0x35}));
    EXPECT_EQ(part(frame, 18, 21), (Bytes{0x12, 0x3B, 0x63, 'I'}));
}

TEST(StatusLayout, LengthCountsTheWholeFrameAndTheCheckIsTheLowByteOfTheSum)
{
    const Bytes frame = frame_of(specimen('C', 0x42, StatusLayout::flags, false, 2));
    EXPECT_EQ(frame[2], frame.size());
    EXPECT_EQ(frame[frame.size() - 2], sum_to(frame, frame.size() - 2) & 0xFFU);
    EXPECT_EQ(frame.back(), 0x16);
}

TEST(StatusLayout, LongFrameHasTheLowSixteenBitsOfTheSumHighByteFirst)
{
    const Bytes frame = frame_of(specimen('I', 0x63, StatusLayout::long_id, true));
    EXPECT_EQ(frame[2], frame.size());
    const unsigned sum = sum_to(frame, frame.size() - 3);
    EXPECT_EQ(frame[frame.size() - 3], sum >> 8U);
    EXPECT_EQ(frame[frame.size() - 2], sum & 0xFFU);
}

// Length byte by layout, with 8-bit and with 16-bit checks.
struct LengthCase {
    StatusLayout layout;
    int with_short_check;
    int with_long_check;
};
class StatusLength : public testing::TestWithParam<LengthCase> { };
TEST_P(StatusLength, FollowsFromTheLayout)
{
    const LengthCase& c = GetParam();
    EXPECT_EQ(frame_of(specimen('I', 0x63, c.layout, false))[2], c.with_short_check);
    EXPECT_EQ(frame_of(specimen('I', 0x63, c.layout, true))[2], c.with_long_check);
}
// clang-format off
INSTANTIATE_TEST_SUITE_P(AllLayouts, StatusLength, testing::Values(
    LengthCase{ StatusLayout::brief,       24, 25 },
    LengthCase{ StatusLayout::old_options, 25, 26 },
    LengthCase{ StatusLayout::short_id,    26, 27 },
    LengthCase{ StatusLayout::id,          27, 28 },
    LengthCase{ StatusLayout::flags,       28, 29 },
    LengthCase{ StatusLayout::options,     34, 35 },
    LengthCase{ StatusLayout::extended,    40, 41 },
    LengthCase{ StatusLayout::sixteen,     44, 45 },
    LengthCase{ StatusLayout::rc,          56, 57 },
    LengthCase{ StatusLayout::read_fault,  57, 58 },
    LengthCase{ StatusLayout::long_id,     59, 60 },
    LengthCase{ StatusLayout::pins,        62, 63 }));
// clang-format on

TEST(StatusLayout, OldestFirmwareTellsRowZeroAndLetterCRowOneAsItsOneOptionByte)
{
    EXPECT_EQ(frame_of(specimen('A', 0x42, StatusLayout::flags, false, 0))[22], 0xA0);
    EXPECT_EQ(frame_of(specimen('B', 0x42, StatusLayout::flags, false, 1))[22], 0xA0);
    EXPECT_EQ(frame_of(specimen('C', 0x42, StatusLayout::flags, false, 2))[22], 0xA1);
}

TEST(StatusLayout, FlagsHoldBootBlockDoublingAndBootSize)
{
    ChipSetup setup = specimen('C', 0x42, StatusLayout::flags, false, 2);
    setup.boot_size_code = 2;
    EXPECT_EQ(part(frame_of(setup), 23, 25), (Bytes{0xD1, 0x7E, 0x02}));
    setup.new_boot_block = true;
    setup.clock_doubled = true;
    EXPECT_EQ(frame_of(setup)[25], 0xA2);
}

TEST(StatusLayout, ShortWindowOfLettersDToHHasRows2_3_8_10_11)
{
    EXPECT_EQ(part(frame_of(specimen('D', 0x54, StatusLayout::options, false, 3)), 26, 31),
        (Bytes{0xA2, 0xA3, 0xA8, 0xAA, 0xAB, 0xFF}));
    EXPECT_EQ(part(frame_of(specimen('G', 0x57, StatusLayout::options, true, 5)), 26, 31),
        (Bytes{0xA2, 0xA3, 0xA8, 0xAA, 0xAB, 0xFF}));
}

TEST(StatusLayout, ShortWindowOfLetterHHasRowZeroAtItsEnd)
{
    EXPECT_EQ(frame_of(specimen('H', 0x57, StatusLayout::options, true, 6))[31], 0xA0);
}

TEST(StatusLayout, ExtendedFirmwareHasASecondWindow)
{
    const Bytes window{0xA0, 0xA1, 0xA2, 0xA3, 0xA8, 0xA9};
    EXPECT_EQ(part(frame_of(specimen('D', 0x55, StatusLayout::extended, false, 3)), 32, 37), window);
    EXPECT_EQ(part(frame_of(specimen('E', 0x56, StatusLayout::extended, false, 4)), 32, 37), window);
    EXPECT_EQ(part(frame_of(specimen('G', 0x58, StatusLayout::extended, true, 5)), 32, 37), window);
    EXPECT_EQ(part(frame_of(specimen('H', 0x58, StatusLayout::extended, true, 6)), 32, 37), window);
}

TEST(StatusLayout, NewerLettersHaveRows0To3And8And9InTheFirstWindow)
{
    const Bytes window{0xA0, 0xA1, 0xA2, 0xA3, 0xA8, 0xA9};
    for (const char letter : std::string("IJKLMNO"))
        EXPECT_EQ(part(frame_of(specimen(letter, 0x63, StatusLayout::long_id, true)), 26, 31), window) << letter;
}

TEST(StatusLayout, SeriesWith16RowsTellsThemAllInOrder)
{
    for (const int series : {15, 16, 17}) {
        const Bytes frame = frame_of(specimen('S', 0x63, StatusLayout::pins, true, series));
        EXPECT_EQ(frame[26], 0xA0) << series;
        EXPECT_EQ(frame[34], 0xA8) << series;
        EXPECT_EQ(frame[41], 0xAF) << series;
    }
}

TEST(StatusLayout, RcFrequenciesStandIn32Bits)
{
    ChipSetup setup = specimen('I', 0x63, StatusLayout::rc, true);
    setup.rc_last_hz = 0x01020304;
    setup.rc_factory_hz = 0x00A8C000;
    EXPECT_EQ(part(frame_of(setup), 46, 53), (Bytes{1, 2, 3, 4, 0x00, 0xA8, 0xC0, 0x00}));
}

TEST(StatusLayout, SavedTrimAndPinsStandAtTheEndOfSeries15And16)
{
    ChipSetup setup = specimen('R', 0x63, StatusLayout::pins, true, 16);
    setup.rc_saved = {0, 0, 0x58, 0x80, 0x13, 0xFF};
    EXPECT_EQ(part(frame_of(setup), 54, 59), (Bytes{0, 0, 0x58, 0x80, 0x13, 0xFF}));
}

TEST(StatusLayout, LongIdStandsBehindTheReadFault)
{
    ChipSetup setup = specimen('I', 0x63, StatusLayout::long_id, true);
    EXPECT_EQ(part(frame_of(setup), 54, 56), (Bytes{0, 0, 0}));
    setup.long_id = 0xD17F;
    EXPECT_EQ(part(frame_of(setup), 54, 56), (Bytes{0, 0xD1, 0x7F}));
}

// The answer to 0x50: what the status frame has at 26 and up stands at 12 and up.
TEST(StatusLayout, ReadStatusHasVersionAndTheWindowMovedDown)
{
    Bytes frame = read_status_frame(specimen('I', 0x63, StatusLayout::long_id, true));
    EXPECT_EQ(part(frame, 13, 19), (Bytes{0x63, 0xA0, 0xA1, 0xA2, 0xA3, 0xA8, 0xA9}));
    frame = read_status_frame(specimen('E', 0x56, StatusLayout::extended, false, 4));
    EXPECT_EQ(part(frame, 14, 25), (Bytes{0xA2, 0xA3, 0xA8, 0xAA, 0xAB, 0xFF, 0xA0, 0xA1, 0xA2, 0xA3, 0xA8, 0xA9}));
    frame = read_status_frame(specimen('C', 0x42, StatusLayout::flags, false, 2));
    EXPECT_EQ(part(frame, 13, 14), (Bytes{0x42, 0xA1}));
    EXPECT_EQ(frame[4], 15); // 68 00 0F 50, seven bytes, version, option, check, 16
    frame = read_status_frame(specimen('S', 0x63, StatusLayout::long_id, true, 17));
    EXPECT_EQ(frame[14 + 15], 0xAF);
}

} // namespace
} // namespace sim
