#include "options/fixed_options.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

std::vector<std::string> lines_of(int series, bool english)
{
    McuRecord record;
    record.series = static_cast<std::int16_t>(series);
    return fixed_option_lines(record, english);
}
using Lines = std::vector<std::string>;

} // namespace

TEST(FixedOptions, OfHazelAreKnown)
{
    const Lines english = lines_of(6, true);
    ASSERT_EQ(english.size(), 7U);
    EXPECT_EQ(english[0], "Next Power-Up-Reset, use External Crystal/Clock");
    EXPECT_EQ(english[6], "Next Cold Start WatchDog did not start.");
    const Lines chinese = lines_of(6, false);
    ASSERT_EQ(chinese.size(), 7U);
    EXPECT_EQ(chinese[5], "P1.2 仍为 LVD 脚");
    EXPECT_EQ(chinese[6], "");
}

// Choices of the panel used to be told of every family, true or not.
TEST(FixedOptions, OfTheOthersAreFixedAndNoMoreIsTold)
{
    for (const int series : {5, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}) {
        EXPECT_EQ(lines_of(series, true), Lines{"Fixed at the factory."}) << series;
        EXPECT_EQ(lines_of(series, false), Lines{"出厂时已固定。"}) << series;
    }
}

TEST(FixedOptions, AreToldOfSeries5To17)
{
    EXPECT_TRUE(lines_of(4, true).empty());
    EXPECT_TRUE(lines_of(18, true).empty());
}
