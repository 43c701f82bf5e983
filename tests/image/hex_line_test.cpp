#include "image/hex_loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

using namespace vrk;

namespace {

std::vector<int> data_of(const HexRecord& record) { return {record.data().begin(), record.data().end()}; }
using Bytes = std::vector<int>;

} // namespace

TEST(HexLine, AddressTypeAndDataAreRead)
{
    const HexRecord record = parse_hex_line(":03012C00AABBCC9F");
    EXPECT_TRUE(record.checksum_ok);
    EXPECT_EQ(record.address, 0x012C);
    EXPECT_EQ(record.type, 0);
    EXPECT_EQ(data_of(record), (Bytes{0xAA, 0xBB, 0xCC}));
    EXPECT_EQ(record.data_sum, 0xAAU + 0xBB + 0xCC);
}

TEST(HexLine, LowerCaseDigitsCountAsWell)
{
    EXPECT_EQ(data_of(parse_hex_line(":03012c00aabbcc9f")), (Bytes{0xAA, 0xBB, 0xCC}));
}

TEST(HexLine, EndRecordHasTypeOneAndNoData)
{
    const HexRecord record = parse_hex_line(":00000001FF");
    EXPECT_TRUE(record.checksum_ok);
    EXPECT_EQ(record.type, HexRecord::end_of_file);
    EXPECT_EQ(record.data_count, 0);
}

TEST(HexLine, WrongCountFieldWithGoodChecksumKeepsAllBytesOfTheLine)
{
    const HexRecord record = parse_hex_line(":01000000112233"
                                            "99");
    EXPECT_TRUE(record.checksum_ok);
    EXPECT_EQ(data_of(record), (Bytes{0x11, 0x22, 0x33}));
}

TEST(HexLine, WrongChecksumIsToldAndTheBytesStandAllTheSame)
{
    const HexRecord record = parse_hex_line(":01000000AA00");
    EXPECT_FALSE(record.checksum_ok);
    EXPECT_EQ(data_of(record), (Bytes{0xAA}));
}

TEST(HexLine, ChecksumOfZeroFitsASumOfZero) { EXPECT_TRUE(parse_hex_line(":0000000000").checksum_ok); }

// Eleven characters are 5.5 pairs and round to 6, thirteen are 6.5 and round to 6 as well.
TEST(HexLine, AnOddDigitMakesAPairOfItsOwnWhenTheHalfRoundsUpToEven)
{
    const HexRecord record = parse_hex_line(":01000000AA5");
    EXPECT_EQ(data_of(record), (Bytes{0xAA}));
    EXPECT_FALSE(record.checksum_ok) << "5 stands where 55 should";
}

TEST(HexLine, AnOddDigitIsLeftOutWhenTheHalfRoundsDownToEven)
{
    const HexRecord record = parse_hex_line(":01000000AA557");
    EXPECT_EQ(data_of(record), (Bytes{0xAA}));
    EXPECT_TRUE(record.checksum_ok);
}

TEST(HexLine, InAPairTheDigitsEndAtTheFirstOtherCharacter)
{
    EXPECT_EQ(data_of(parse_hex_line(":03000000G71G-1FF")), (Bytes{0x00, 0x01, 0x00}));
}

TEST(HexLine, MissingHeaderBytesReadAsZero)
{
    const HexRecord record = parse_hex_line(":05");
    EXPECT_EQ(record.address, 0);
    EXPECT_EQ(record.type, 0);
    EXPECT_EQ(record.data_count, 0);
    EXPECT_FALSE(record.checksum_ok);
}

TEST(HexLine, AColonAloneAndAnEmptyLineHoldNothing)
{
    EXPECT_EQ(parse_hex_line(":").data_count, 0);
    EXPECT_TRUE(parse_hex_line(":").checksum_ok);
    EXPECT_EQ(parse_hex_line("").data_count, 0);
}

TEST(HexLine, TheLongestLineHas261Bytes)
{
    const HexRecord record = parse_hex_line(":FF000000" + std::string(2 * 256, '0') + "01");
    EXPECT_TRUE(record.checksum_ok);
    EXPECT_EQ(record.data_count, 256);
}

TEST(HexLine, BytesBehindThe261stAreNotLookedAt)
{
    const HexRecord record = parse_hex_line(":FF000000" + std::string(2 * 400, '0'));
    EXPECT_EQ(record.data_count, 256);
    EXPECT_FALSE(record.checksum_ok) << "byte 261 stands where the checksum is looked for";
}

TEST(HexLine, BlanksTabsAndNulsBehindTheDigitsAreNoPartOfIt)
{
    for (const std::string& behind : {std::string{" "}, std::string{"   "}, std::string{"\t"}, std::string(3, '\0')}) {
        const HexRecord record = parse_hex_line(":02000000ABCD86" + behind);
        EXPECT_TRUE(record.checksum_ok);
        EXPECT_EQ(data_of(record), (Bytes{0xAB, 0xCD}));
    }
}

TEST(HexTarget, BytesFromTheLimitOnAreCountedButNotStored)
{
    std::array<std::uint8_t, 32> image{};
    HexTarget target{image, 0, 0x11};
    store_record(parse_hex_line(":04000F0001020304E3"), target);
    EXPECT_EQ(image[0x0F], 1);
    EXPECT_EQ(image[0x10], 2);
    EXPECT_EQ(image[0x11], 0);
    EXPECT_EQ(target.checksum, 10U);
    EXPECT_EQ(target.highest, 0x12);
}

TEST(HexTarget, ALimitAboveTheImageDoesNotReachBehindIt)
{
    std::array<std::uint8_t, 17> image{};
    HexTarget target{image, 0, 0x12000};
    store_record(parse_hex_line(":04000F0001020304E3"), target);
    EXPECT_EQ(image[0x10], 2);
    EXPECT_EQ(target.highest, 0x12);
}

TEST(HexTarget, TheBaseIsAddedToTheAddress)
{
    std::array<std::uint8_t, 64> image{};
    HexTarget target{image, 0x20, 64};
    store_record(parse_hex_line(":01000500AA50"), target);
    EXPECT_EQ(image[0x25], 0xAA);
}

TEST(HexTarget, ABaseFarAboveTheImageStoresNothing)
{
    std::array<std::uint8_t, 16> image{};
    HexTarget target{image, 0x7FFFFFFF, 0x7FFFFFFF};
    store_record(parse_hex_line(":01FFFF00AA57"), target);
    EXPECT_EQ(std::accumulate(image.begin(), image.end(), 0), 0);
    EXPECT_EQ(target.highest, std::int64_t{0x7FFFFFFF} + 0xFFFF);
}
