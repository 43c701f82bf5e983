#include "platform/text_number.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(HexFields, FourDigitsStayPositiveUpToFFFF)
{
    EXPECT_EQ(hex_address_4("8000"), 0x8000);
    EXPECT_EQ(hex_address_4(" ffff "), 0xFFFF);
    EXPECT_EQ(hex_address_4("1"), 1);
}

TEST(HexFields, MoreDigitsThanTheFieldHoldsLoseTheirLeadingOnes)
{
    EXPECT_EQ(hex_address_4("12345"), 0x2345);
    EXPECT_EQ(hex_address_5("912345"), 0x12345);
}

TEST(HexFields, AnEmptyFieldReadsAsZero)
{
    EXPECT_EQ(hex_address_4(""), 0);
    EXPECT_EQ(hex_address_5("  "), 0);
    EXPECT_EQ(signed_hex_number(""), 0);
}

TEST(HexFields, AStartAddressAbove7FFFReadsNegative)
{
    EXPECT_EQ(signed_hex_number("7FFF"), 0x7FFF);
    EXPECT_EQ(signed_hex_number("8000"), -32768);
    EXPECT_EQ(signed_hex_number("FFFF"), -1);
    EXPECT_EQ(signed_hex_number("10000"), 0x10000);
}

TEST(HexFields, DigitsEndAtTheFirstOtherCharacter)
{
    EXPECT_EQ(hex_number("12G4"), 0x12);
    EXPECT_EQ(hex_number("xyz"), 0);
}

TEST(HexText, PadsAndCutsToTheWidthAsked)
{
    EXPECT_EQ(hex_text(0x1AB), "1AB");
    EXPECT_EQ(hex_text(0x1AB, 7), "00001AB");
    EXPECT_EQ(hex_text(0x12345678, 7), "2345678");
    EXPECT_EQ(hex_text(-1), "FFFFFFFF");
}

TEST(Numbers, ReadTheDigitsThatATextBeginsWith)
{
    EXPECT_EQ(number_in("115200"), 115200);
    EXPECT_EQ(number_in("  11.0592 MHz"), 11.0592);
    EXPECT_EQ(number_in("-5"), -5);
    EXPECT_EQ(number_in("abc"), 0);
    EXPECT_EQ(number_in("inf"), 0);
    EXPECT_EQ(number_in(""), 0);
    EXPECT_EQ(number_in("."), 0);
}

TEST(Numbers, ShowUpToFifteenDigitsAndNoTrailingZeros)
{
    EXPECT_EQ(number_text(11.0592), "11.0592");
    EXPECT_EQ(number_text(12), "12");
    EXPECT_EQ(number_text(0.5), "0.5");
    EXPECT_EQ(number_text(-0.25), "-0.25");
}

TEST(Numbers, RoundHalvesToTheEvenNeighbour)
{
    EXPECT_EQ(round_half_even(2.5), 2);
    EXPECT_EQ(round_half_even(3.5), 4);
    EXPECT_EQ(round_half_even(-0.5), 0);
}

TEST(Times, ReadAsHoursMinutesSeconds)
{
    EXPECT_EQ(clock_text({2024, 3, 1, 8, 5, 9}), "08:05:09");
    EXPECT_EQ(minutes_text(61), "01:01");
}
