// Frames found among whatever else a target sends.
#include "monitor/frame_scan.h"

#include "monitor/monitor_frame.h"

#include <gtest/gtest.h>

namespace vrk {
namespace {

using Found = FrameScan::Found;

const Bytes registers = monitor_frame(0, 0x0080, counted_up(128));
const Bytes empty_frame = monitor_frame(3, 0, {});

struct FrameScanTest : testing::Test {
    // All that is found in these bytes, in their order.
    std::vector<Found> look(const Bytes& bytes)
    {
        std::vector<Found> all;
        for (std::span<const std::uint8_t> rest = bytes; !rest.empty();) {
            const Found found = scan.look(rest);
            if (found == Found::nothing)
                continue;
            all.push_back(found);
            frames.emplace_back(scan.frame().begin(), scan.frame().end());
        }
        return all;
    }

    FrameScan scan;
    std::vector<Bytes> frames;
};

const std::vector<Found> nothing{};
const std::vector<Found> one_good{Found::good};
const std::vector<Found> one_bad{Found::bad};

} // namespace

TEST_F(FrameScanTest, FindsAFrameAmongText)
{
    EXPECT_EQ(look(joined({{'o', 'k', '\r'}, with_header(registers), {'>', ' '}})), one_good);
    EXPECT_EQ(frames, std::vector<Bytes>{registers});
    EXPECT_FALSE(scan.in_frame());
}

TEST_F(FrameScanTest, FindsNothingInTextAndHalfHeaders)
{
    EXPECT_EQ(look({'A', 0xA5, 'B', 0x5A, 0x5A, 0xA5, 0x5B}), nothing);
    EXPECT_FALSE(scan.in_frame());
}

TEST_F(FrameScanTest, FindsAFrameHoweverItIsCut)
{
    const Bytes bytes = with_header(registers);
    for (const std::uint8_t byte : bytes) {
        EXPECT_TRUE(frames.empty());
        look({byte});
    }
    EXPECT_EQ(frames, std::vector<Bytes>{registers});
    for (std::size_t at = 1; at < bytes.size(); ++at) {
        const auto middle = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        EXPECT_EQ(look({bytes.begin(), middle}), nothing);
        EXPECT_EQ(scan.in_frame(), at >= 2) << at;
        EXPECT_EQ(look({middle, bytes.end()}), one_good) << at;
    }
}

TEST_F(FrameScanTest, FindsTwoThatFollowEachOther)
{
    EXPECT_EQ(look(joined({with_header(registers), with_header(empty_frame)})),
        (std::vector<Found>{Found::good, Found::good}));
    EXPECT_EQ(frames, (std::vector<Bytes>{registers, empty_frame}));
}

// The byte that breaks a header off may begin the next one.
TEST_F(FrameScanTest, TakesASecondFirstByteForAStart)
{
    EXPECT_EQ(look(joined({{0xA5}, with_header(registers)})), one_good);
    EXPECT_EQ(look(joined({{0xA5, 0xA5, 0xA5}, with_header(registers)})), one_good);
    EXPECT_EQ(look(joined({{0xA5, 'x'}, with_header(registers)})), one_good);
}

TEST_F(FrameScanTest, RefusesEachDamagedByteBehindTheLength)
{
    for (std::size_t at = 3; at < registers.size(); ++at) {
        Bytes damaged = registers;
        damaged[at] ^= 0x10;
        EXPECT_EQ(look(with_header(damaged)), one_bad) << at;
    }
    EXPECT_EQ(look(with_header(registers)), one_good);
}

TEST_F(FrameScanTest, HasTheHeaderInItsDumpAsAnyOtherByte)
{
    const Bytes frame = monitor_frame(2, 0, {0xA5, 0x5A, 0x00, 0x11, 0xA5});
    EXPECT_EQ(look(with_header(frame)), one_good);
    EXPECT_EQ(frames, std::vector<Bytes>{frame});
}

TEST_F(FrameScanTest, TakesTheShortestAndRefusesWhatIsShorter)
{
    EXPECT_EQ(empty_frame.size(), 17U);
    EXPECT_EQ(look(with_header(empty_frame)), one_good);
    EXPECT_EQ(look({0xA5, 0x5A, 0x00, 0x00, 0x10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10}), one_bad);
    EXPECT_EQ(look({0xA5, 0x5A, 0x00, 0x00, 0x04, 0x04}), one_bad);
    for (const std::uint8_t length : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{3}})
        EXPECT_EQ(look({0xA5, 0x5A, 0x00, 0x00, length}), one_bad) << int{length};
    EXPECT_FALSE(scan.in_frame());
}

TEST_F(FrameScanTest, TakesTheLongestAndDropsWhatIsLongerWithoutAWord)
{
    const Bytes longest = monitor_frame(2, 0, counted_up(FrameScan::longest - 17));
    EXPECT_EQ(longest.size(), 1099U);
    EXPECT_EQ(look(with_header(longest)), one_good);

    EXPECT_EQ(look(with_header(monitor_frame(2, 0, Bytes(FrameScan::longest - 16)))), nothing);
    EXPECT_FALSE(scan.in_frame());
    EXPECT_EQ(look({0xA5, 0x5A, 0x00, 0xFF, 0xFF}), nothing);
    EXPECT_FALSE(scan.in_frame());
}

TEST_F(FrameScanTest, LooksAgainBehindTheLengthOfOneThatIsTooLong)
{
    EXPECT_EQ(look(joined({{0xA5, 0x5A, 0x00, 0xFF, 0xFF}, with_header(registers)})), one_good);
    EXPECT_EQ(frames, std::vector<Bytes>{registers});
}

TEST_F(FrameScanTest, BeginsAnewWhenItIsTold)
{
    const Bytes bytes = with_header(registers);
    EXPECT_EQ(look({bytes.begin(), bytes.begin() + 50}), nothing);
    EXPECT_TRUE(scan.in_frame());
    scan.reset();
    EXPECT_FALSE(scan.in_frame());
    EXPECT_EQ(look({bytes.begin() + 50, bytes.end()}), nothing);
    EXPECT_EQ(look({0xA5}), nothing);
    scan.reset();
    EXPECT_EQ(look({bytes.begin() + 1, bytes.end()}), nothing); // the half of a header is forgotten too
    EXPECT_EQ(look(bytes), one_good);
}

} // namespace vrk
