#include "inapp/hex_pairs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vrk;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(HexPairs, AreTheSameWithBlanksAndWithout)
{
    EXPECT_THAT(parse_hex_pairs("12 34"), ElementsAre(0x12, 0x34));
    EXPECT_THAT(parse_hex_pairs("1234"), ElementsAre(0x12, 0x34));
    EXPECT_THAT(parse_hex_pairs("  aBcD  "), ElementsAre(0xAB, 0xCD));
}

TEST(HexPairs, TakeADigitAloneAsAByte)
{
    EXPECT_THAT(parse_hex_pairs("A"), ElementsAre(0x0A));
    EXPECT_THAT(parse_hex_pairs("123"), ElementsAre(0x12, 0x03));
    EXPECT_THAT(parse_hex_pairs("1 2"), ElementsAre(0x01, 0x02));
}

TEST(HexPairs, OfNothingAreNone)
{
    EXPECT_THAT(parse_hex_pairs(""), IsEmpty());
    EXPECT_THAT(parse_hex_pairs("   "), IsEmpty());
}

TEST(HexPairs, LeaveOutWhatBeginsWithASign)
{
    EXPECT_THAT(parse_hex_pairs("12, 34"), ElementsAre(0x12, 0x34));
    EXPECT_THAT(parse_hex_pairs("-1 12"), ElementsAre(0x12));
}

TEST(HexPairs, ReadWhatIsNoHexadecimalAsZero)
{
    EXPECT_THAT(parse_hex_pairs("ZZ 7F"), ElementsAre(0x00, 0x7F));
    EXPECT_THAT(parse_hex_pairs("命令 7F"), ElementsAre(0x00, 0x7F));
}
