#include "image/dump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

using namespace vrk;

namespace {

const std::vector<std::uint8_t> counting = [] {
    std::vector<std::uint8_t> bytes(0x1000);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}();

auto line_count(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

} // namespace

TEST(DumpText, ALineHasTheAddressThreeBlanksSixteenBytesAndCrLf)
{
    EXPECT_EQ(dump_text(counting, 0, 15, 20), "000000   00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F \r\n");
    EXPECT_EQ(dump_line_size, 59);
}

TEST(DumpText, BeginsAtTheLineThatHoldsTheFirstAddress)
{
    EXPECT_EQ(dump_text(counting, 0x2F7, 0xFFF, 1), "0002F0   F0 F1 F2 F3 F4 F5 F6 F7 F8 F9 FA FB FC FD FE FF \r\n");
}

TEST(DumpText, DrawsOnlyTheLinesThatFit)
{
    EXPECT_EQ(line_count(dump_text(counting, 0, 0xFFF, 20)), 20);
    EXPECT_EQ(dump_text(counting, 0, 0xFFF, 0), "");
}

TEST(DumpText, EndsAtTheLastAddress) { EXPECT_EQ(dump_text(counting, 0x10, 0x12, 20), "000010   10 11 12 \r\n"); }

TEST(DumpText, NothingStandsBehindTheImageOrBehindItsEnd)
{
    EXPECT_EQ(dump_text(counting, 0x20, 0x1F, 20), "");
    EXPECT_EQ(dump_text(counting, 0x7FFFFFFF, 0x7FFFFFFF, 20), "");
    EXPECT_EQ(line_count(dump_text(counting, 0xFF0, 0x7FFFFFFF, 20)), 1);
}

TEST(DumpByteAt, ReadsTheAddressFromTheText)
{
    const std::string text = "00FFE0   00 11 22 \r\n01FFF0   33 44 \r\n";
    EXPECT_EQ(dump_byte_at(text, 9)->address, 0x0FFE0);
    EXPECT_EQ(dump_byte_at(text, 10)->address, 0x0FFE0);
    EXPECT_EQ(dump_byte_at(text, 16)->address, 0x0FFE2);
    EXPECT_EQ(dump_byte_at(text, 16)->digits, 15U);
    EXPECT_EQ(dump_byte_at(text, 20 + 12)->address, 0x1FFF1);
}

TEST(DumpByteAt, AddressesBlanksAndLineEndsAreNoBytes)
{
    const std::string text = "00FFE0   00 11 22 \r\n01FFF0   33 44 \r\n";
    EXPECT_FALSE(dump_byte_at(text, 0));
    EXPECT_FALSE(dump_byte_at(text, 5));
    EXPECT_FALSE(dump_byte_at(text, 8));
    EXPECT_FALSE(dump_byte_at(text, 11));
    EXPECT_FALSE(dump_byte_at(text, 18));
    EXPECT_FALSE(dump_byte_at(text, 19));
    EXPECT_FALSE(dump_byte_at(text, text.size()));
    EXPECT_FALSE(dump_byte_at("", 0));
}

TEST(DumpByteAt, TextThatIsNoDumpHasNoBytes)
{
    EXPECT_FALSE(dump_byte_at("0000000001111", 9));
    EXPECT_FALSE(dump_byte_at("00       00 11", 9));
    EXPECT_FALSE(dump_byte_at("00XYZ0   00 11", 9));
    EXPECT_FALSE(dump_byte_at("000000   0", 9));
    EXPECT_FALSE(dump_byte_at("000000   0 11", 9));
    EXPECT_FALSE(dump_byte_at("000000   " + std::string(16 * 3, ' ') + "00", 57)) << "a seventeenth byte";
}

TEST(NumberInTheDump, HalfAboveTheViewIsSelectedAsFarAsItShows)
{
    AutoIncrease record;
    record.bytes = 4;
    record.address = 0x801;
    const auto seen = number_selection(record, 0x800, 0x900);
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->start, dump_data_column);
    EXPECT_EQ(seen->length, 5);
    EXPECT_FALSE(number_selection(record, 0x810, 0x900));
    EXPECT_FALSE(number_selection(record, 0x000, 0x7FE));
}
