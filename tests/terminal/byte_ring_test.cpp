// What comes in is kept in arrays that are written round and round; what is lost, and when, follows from their size.
#include "terminal/byte_ring.h"

#include <gtest/gtest.h>

namespace vrk {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The byte that stands at a place of an endless stream; no two neighbours are alike, and 251 divides no size of a ring.
std::uint8_t stream_byte(std::size_t place) { return static_cast<std::uint8_t>(place % 251); }

Bytes stream(std::size_t first, std::size_t count)
{
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = stream_byte(first + i);
    return bytes;
}

} // namespace

TEST(ByteRing, GivesWhatCameInItsOrderOnce)
{
    ByteRing ring;
    EXPECT_EQ(ring.pending(), 0U);
    EXPECT_EQ(ring.take(), Bytes{});
    ring.push(Bytes{1, 2});
    ring.push(Bytes{});
    ring.push(Bytes{0, 3});
    EXPECT_EQ(ring.pending(), 4U);
    EXPECT_EQ(ring.take(), (Bytes{1, 2, 0, 3}));
    EXPECT_EQ(ring.take(), Bytes{});
}

TEST(ByteRing, LosesTheRestOfABurstThatDoesNotFit)
{
    ByteRing ring;
    constexpr std::size_t most = ByteRing::size - 1;
    ring.push(stream(0, most - 10));
    ring.push(stream(most - 10, 30));
    EXPECT_EQ(ring.pending(), most);
    ring.push(Bytes{0xEE});
    EXPECT_EQ(ring.pending(), most);
    EXPECT_EQ(ring.take(), stream(0, most));
}

TEST(ByteRing, HasRoomAgainWhereItWasRead)
{
    ByteRing ring;
    ring.push(stream(0, ByteRing::size - 1));
    ring.take();
    ring.push(stream(7, ByteRing::size)); // one more than fits
    EXPECT_EQ(ring.take(), stream(7, ByteRing::size - 1));
}

TEST(ByteRing, KeepsTheOrderAcrossTheEndOfTheArray)
{
    ByteRing ring;
    std::size_t sent = 0;
    for (const std::size_t count : {ByteRing::size - 3, std::size_t{3}, std::size_t{1}, std::size_t{100'000},
             std::size_t{200'000}, std::size_t{44'999}, std::size_t{2}}) {
        ring.push(stream(sent, count));
        EXPECT_EQ(ring.take(), stream(sent, count)) << "behind " << sent << " bytes";
        sent += count;
    }
}

TEST(CompareRing, HoldsTheFirstByteAtTheFirstPlace)
{
    CompareRing ring;
    EXPECT_TRUE(ring.empty());
    EXPECT_FALSE(ring.received(0));
    ring.push(Bytes{0, 0x20});
    EXPECT_FALSE(ring.empty());
    EXPECT_TRUE(ring.received(0)); // a zero that came is not a place that nothing reached
    EXPECT_EQ(ring.at(1), 0x20);
    EXPECT_TRUE(ring.received(1));
    EXPECT_FALSE(ring.received(2));
    EXPECT_EQ(ring.at(2), 0);
}

TEST(CompareRing, WritesOverTheOldestWhenItIsFull)
{
    CompareRing ring;
    constexpr std::size_t most = CompareRing::size - 1;
    ring.push(stream(0, most));
    EXPECT_EQ(ring.at(most - 1), stream_byte(most - 1));
    EXPECT_FALSE(ring.received(most));
    ring.push(stream(most, 3)); // the last place, then the first two again
    EXPECT_EQ(ring.at(most), stream_byte(most));
    EXPECT_TRUE(ring.received(most));
    EXPECT_EQ(ring.at(0), stream_byte(most + 1));
    EXPECT_EQ(ring.at(1), stream_byte(most + 2));
    EXPECT_EQ(ring.at(2), stream_byte(2));
}

// A full ring whose next place is its oldest would look empty if a single byte were thrown away at a time too few.
TEST(CompareRing, IsNeverTakenForEmptyHoweverMuchHasCome)
{
    for (const std::size_t burst : {std::size_t{1}, std::size_t{999}, std::size_t{1000}, std::size_t{1001},
             std::size_t{4096}, CompareRing::size - 1, CompareRing::size, CompareRing::size * 2 + 5}) {
        CompareRing ring;
        std::size_t sent = 0;
        while (sent < CompareRing::size * 2) {
            ring.push(stream(sent, burst));
            sent += burst;
            ASSERT_FALSE(ring.empty()) << sent << " bytes in bursts of " << burst;
        }
        for (std::size_t back = 1; back <= 1000; ++back) {
            const std::size_t place = (sent - back) % CompareRing::size;
            ASSERT_EQ(ring.at(place), stream_byte(sent - back)) << back << " from the end, in bursts of " << burst;
        }
    }
}

TEST(CompareRing, IsAsNewWhenItIsCleared)
{
    CompareRing ring;
    ring.push(stream(1, 500));
    ring.clear();
    EXPECT_TRUE(ring.empty());
    EXPECT_FALSE(ring.received(0));
    EXPECT_EQ(ring.at(0), 0);
    ring.push(Bytes{0x77});
    EXPECT_EQ(ring.at(0), 0x77);
}

} // namespace vrk
