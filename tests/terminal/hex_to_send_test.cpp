#include "terminal/hex_to_send.h"

#include <gtest/gtest.h>

namespace vrk {
namespace {

using Bytes = std::vector<std::uint8_t>;

} // namespace

TEST(HexToSend, ReadsPairsFromTheLeft)
{
    EXPECT_EQ(hex_to_send("12 34 AB CD FF"), (Bytes{0x12, 0x34, 0xAB, 0xCD, 0xFF}));
    EXPECT_EQ(hex_to_send("1234abCDff"), (Bytes{0x12, 0x34, 0xAB, 0xCD, 0xFF}));
    EXPECT_EQ(hex_to_send("  00   0F  "), (Bytes{0x00, 0x0F}));
}

TEST(HexToSend, TakesALoneDigitAsAByte)
{
    EXPECT_EQ(hex_to_send("1 2"), (Bytes{0x01, 0x02}));
    EXPECT_EQ(hex_to_send("FFF"), (Bytes{0xFF, 0x0F}));
    EXPECT_EQ(hex_to_send("7"), (Bytes{0x07}));
    EXPECT_EQ(hex_to_send("1 23 4"), (Bytes{0x01, 0x23, 0x04}));
}

TEST(HexToSend, HasNothingToSendOfBlanks)
{
    EXPECT_EQ(hex_to_send(""), Bytes{});
    EXPECT_EQ(hex_to_send("     "), Bytes{});
    EXPECT_EQ(wrong_hex_character(""), std::nullopt);
    EXPECT_EQ(wrong_hex_character("   "), std::nullopt);
}

TEST(HexToSend, ReadsAsManyPairsAsThereAre)
{
    std::string text;
    for (int i = 0; i < 4097; ++i)
        text += "A5 ";
    EXPECT_EQ(hex_to_send(text), Bytes(4097, 0xA5));
    EXPECT_EQ(hex_to_send(text + "7").size(), 4098U);
}

TEST(WrongHexCharacter, IsNoneInDigitsOfEitherCaseAndBlanks)
{
    EXPECT_EQ(wrong_hex_character("0123456789 abcdef ABCDEF"), std::nullopt);
}

TEST(WrongHexCharacter, IsTheFirstWithItsPlaceBlanksCounted)
{
    const auto wrong = wrong_hex_character("12 3G 4H");
    ASSERT_TRUE(wrong.has_value());
    EXPECT_EQ(wrong->position, 5);
    EXPECT_EQ(wrong->character, "G");
    EXPECT_EQ(wrong_hex_character("x")->position, 1);
    EXPECT_EQ(wrong_hex_character("  12 z")->position, 4); // of the text that is sent: blanks in front are none of it
}

TEST(WrongHexCharacter, IsShownAsTyped)
{
    EXPECT_EQ(wrong_hex_character("12 g")->character, "g");
    EXPECT_EQ(wrong_hex_character("1,2")->character, ",");
    const auto wide = wrong_hex_character("12 度 34");
    ASSERT_TRUE(wide.has_value());
    EXPECT_EQ(wide->character, "度");
    EXPECT_EQ(wide->position, 4);
    EXPECT_EQ(wrong_hex_character("1\t2")->character, "\t"); // a tab is no blank
}

} // namespace vrk
