// The CRC of the off-line board's wire, by its table and by its definition.
#include "session/crc16.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

using namespace vrk;

using Crc = std::array<std::uint8_t, 2>;

TEST(Crc16, OfTheDigitsOneToNineIs4B37)
{
    constexpr std::uint8_t digits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16_of(digits), 0x4B37);
}

TEST(Crc16, OfAVersionCommandForSeries2AndIdF101IsFA85)
{
    constexpr std::uint8_t bytes[] = {0x6A, 0x00, 0x0D, 0x0C, 0x02, 0x00, 0x36, 0x01, 0xF1, 0x01};
    EXPECT_EQ(crc16_of(bytes), 0xFA85);
    EXPECT_EQ(crc16_by_bits(bytes), (Crc{0xFA, 0x85}));
}

TEST(Crc16, OfNothingIsItsStartValue)
{
    EXPECT_EQ(crc16_of({}), 0xFFFF);
    EXPECT_EQ(crc16_by_bits({}), (Crc{0xFF, 0xFF}));
}

TEST(Crc16, IsTheSameByItsTableAndByItsDefinition)
{
    std::vector<std::uint8_t> bytes(1024);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const auto part = std::span<const std::uint8_t>{bytes}.first(size);
        const Crc bits = crc16_by_bits(part);
        ASSERT_EQ(crc16_of(part), bits[0] * 256 + bits[1]) << size << " bytes";
    }
}
