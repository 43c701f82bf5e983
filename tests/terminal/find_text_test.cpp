// The search in what has come in.
#include "terminal/find_text.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(FindText, GoesFromPlaceToPlaceAndBeginsAgainAtTheTop)
{
    constexpr std::string_view text = "alpha\r\nbeta\r\nalpha\r\n";
    EXPECT_EQ(find_around(text, "alpha", 0), 0U);
    EXPECT_EQ(find_around(text, "alpha", 1), 13U);
    EXPECT_EQ(find_around(text, "alpha", 14), 0U);
}

TEST(FindText, TakesLettersInEitherCase)
{
    EXPECT_EQ(find_around("T = 23.5 Grad", "GRAD", 0), 9U);
    EXPECT_EQ(find_around("T = 23.5 Grad", "t =", 0), 0U);
}

TEST(FindText, FindsChineseByItsBytes) { EXPECT_EQ(find_around("温度 23.5, 湿度 40", "湿度", 0), 13U); }

TEST(FindText, IsNowhereWhereThereIsNothing)
{
    EXPECT_EQ(find_around("", "a", 0), std::nullopt);
    EXPECT_EQ(find_around("abc", "", 0), std::nullopt);
    EXPECT_EQ(find_around("abc", "abcd", 0), std::nullopt);
    EXPECT_EQ(find_around("abc", "d", 7), std::nullopt) << "a place behind the end of what is left";
}
