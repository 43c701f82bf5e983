// Bytes of a target as text. Whatever comes, and however it is cut into pieces, no byte vanishes.
#include "terminal/code_page.h"

#include "platform/text_number.h"

#include <gtest/gtest.h>

namespace vrk {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr const char* misfit = "\uFFFD";

Bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

std::string decoded(CodePage page, const Bytes& bytes)
{
    TextDecoder decoder(page);
    const std::string text = decoder.decode(bytes);
    return text + decoder.end();
}

// The same bytes one by one, as a slow line brings them.
std::string decoded_one_by_one(CodePage page, const Bytes& bytes)
{
    TextDecoder decoder(page);
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += decoder.decode(Bytes{byte});
    return text + decoder.end();
}

void expect_decoded(CodePage page, const Bytes& bytes, const std::string& text)
{
    EXPECT_EQ(decoded(page, bytes), text);
    EXPECT_EQ(decoded_one_by_one(page, bytes), text);
}

} // namespace

TEST(TextDecoder, ReadsUtf8HoweverItIsCut)
{
    expect_decoded(CodePage::utf8, bytes_of("温度 23 \u00B0C, \U0001F321 ok"), "温度 23 \u00B0C, \U0001F321 ok");
}

TEST(TextDecoder, HoldsBackACharacterUntilItIsWhole)
{
    TextDecoder decoder(CodePage::utf8);
    EXPECT_EQ(decoder.decode(Bytes{'a', 0xE4}), "a");
    EXPECT_EQ(decoder.decode(Bytes{0xBD}), "");
    EXPECT_EQ(decoder.decode(Bytes{}), "");
    EXPECT_EQ(decoder.decode(Bytes{0xA0, 'b'}), "你b");
    EXPECT_EQ(decoder.end(), "");
}

TEST(TextDecoder, ReadsGbkHoweverItIsCut)
{
    expect_decoded(CodePage::gbk, {'T', 0xCE, 0xC2, 0xB6, 0xC8, '2'}, "T温度2");
    TextDecoder decoder(CodePage::gbk);
    EXPECT_EQ(decoder.decode(Bytes{0xCE}), "");
    EXPECT_EQ(decoder.decode(Bytes{0xC2, 0xB6}), "温");
    EXPECT_EQ(decoder.decode(Bytes{0xC8}), "度");
}

TEST(TextDecoder, ReadsEveryByteOfLatin1AtOnce)
{
    expect_decoded(CodePage::latin1, {'2', '3', 0xB0, 'C', 0xE9, 0xFF}, "23\u00B0C\u00E9\u00FF");
}

TEST(TextDecoder, ShowsWhatFitsNoCharacterAsTheReplacementCharacter)
{
    expect_decoded(CodePage::utf8, {'a', 0xFF, 'b', 0x80, 'c'}, std::string{"a"} + misfit + "b" + misfit + "c");
    expect_decoded(CodePage::utf8, {0xC0, 0xAF}, std::string{misfit} + misfit); // a '/' in disguise
    expect_decoded(CodePage::gbk, {'a', 0xFF, 'b'}, std::string{"a"} + misfit + "b");
}

// A character that breaks off costs its own bytes alone: what follows is read afresh.
TEST(TextDecoder, ReadsOnRightBehindACharacterThatBreaksOff)
{
    expect_decoded(CodePage::utf8, {0xE4, 0xBD, 'x', 0xE4, 0xBD, 0xA0}, std::string{misfit} + misfit + "x你");
    expect_decoded(CodePage::utf8, {0xE4, 0xE4, 0xBD, 0xA0}, std::string{misfit} + "你");
}

TEST(TextDecoder, TellsWhatIsHeldBackWhenNothingMoreWillCome)
{
    TextDecoder decoder(CodePage::utf8);
    EXPECT_EQ(decoder.decode(Bytes{0xF0, 0x9F, 0x8C}), "");
    EXPECT_EQ(decoder.end(), std::string{misfit} + misfit + misfit);
    EXPECT_EQ(decoder.end(), "");
    EXPECT_EQ(decoder.decode(Bytes{'n'}), "n");
}

TEST(TextDecoder, ShowsControlCharactersAsTheirPictures)
{
    for (const CodePage page : {CodePage::utf8, CodePage::gbk, CodePage::latin1}) {
        expect_decoded(page, {0x00, 0x07, 0x1B, 0x1F, 0x7F}, "\u2400\u2407\u241B\u241F\u2421");
        expect_decoded(page, {'a', '\r', '\n', 'b', '\t', 'c', '\r', 'd', '\n'}, "a\r\nb\tc\rd\n");
    }
}

TEST(TextDecoder, LetsNoByteVanish)
{
    for (const CodePage page : {CodePage::utf8, CodePage::gbk, CodePage::latin1}) {
        for (unsigned byte = 0; byte <= 0xFF; ++byte) {
            const Bytes bytes{'<', static_cast<std::uint8_t>(byte), '>'};
            const std::string text = decoded(page, bytes);
            EXPECT_GE(character_count(text), 2) << byte;
            EXPECT_NE(text, "<>") << byte;
            EXPECT_EQ(decoded_one_by_one(page, bytes), text) << byte;
        }
    }
}

TEST(TextDecoder, TakesMoreThanOneChunkOfTheConverter)
{
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "温度";
    EXPECT_EQ(decoded(CodePage::utf8, bytes_of(text)), text);
    EXPECT_EQ(decoded(CodePage::latin1, Bytes(9000, 0xE9)).size(), 18000U);
}

TEST(EncodedText, IsInTheEncodingOfTheTarget)
{
    EXPECT_EQ(encode_text(CodePage::utf8, "温A"), bytes_of("温A"));
    EXPECT_EQ(encode_text(CodePage::gbk, "温度A"), (Bytes{0xCE, 0xC2, 0xB6, 0xC8, 'A'}));
    EXPECT_EQ(encode_text(CodePage::latin1, "23\u00B0C"), (Bytes{'2', '3', 0xB0, 'C'}));
    EXPECT_EQ(encode_text(CodePage::gbk, ""), Bytes{});
}

TEST(EncodedText, HasAQuestionMarkForEachCharacterThatThePageLacks)
{
    EXPECT_EQ(encode_text(CodePage::latin1, "a温度b"), bytes_of("a??b"));
    EXPECT_EQ(encode_text(CodePage::gbk, "x\U0001F321y"), bytes_of("x?y"));
}

TEST(HexPairs, HaveTwoDigitsAndABlankForEachByte)
{
    EXPECT_EQ(hex_pairs_text({}), "");
    EXPECT_EQ(hex_pairs_text(Bytes{0x00, 0x0A, 0xA5, 0xFF}), "00 0A A5 FF ");
}

} // namespace vrk
