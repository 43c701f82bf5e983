// The order of the rows is what the device tree shows and what the first hit of a look-up hangs on.
#include "tests/catalog/loaded_table.h"

#include <gtest/gtest.h>

namespace {

using namespace catalog_test;

TEST(RowOrder, AlderCountsDownAndEachMarkedTwinFollowsAtOnce)
{
    EXPECT_EQ(names(table(), 0), "Alder-64 Alder-64M Alder-32 Alder-32M");
}

TEST(RowOrder, AspenCountsDown) { EXPECT_EQ(names(table(), 1), "Aspen-63 Aspen-63M Aspen-32 Aspen-16 Aspen-8"); }

TEST(RowOrder, BirchHasFiveVoltsFirstAndTheFirstLineBeforeTheSecond)
{
    EXPECT_EQ(names(table(), 2),
        "Birch-4 Birch-6 Birch-7 Birch-8 Birch-10 Birch-12 Birch-14 "
        "Birch-4M Birch-8M Birch-16 Birch-20 Birch-32 Birch-40 Birch-48 Birch-52 Birch-56 Birch-62 "
        "Birch-4L Birch-6L Birch-7L Birch-8L Birch-10L Birch-12L Birch-14L "
        "Birch-4ML Birch-8ML Birch-16L Birch-20L Birch-32L Birch-40L Birch-48L Birch-52L Birch-56L Birch-62L");
}

TEST(RowOrder, ElmHasItsSeriesRowsBehindTheModelsAndTheOlderIdsLast)
{
    EXPECT_EQ(names(table(), 4),
        "Elm-1 Elm-2 Elm-4 Elm-6 Elm-8 Elm-10 Elm-12 Elm-16 Elm-20 Elm-24 Elm-28 "
        "Elm-1R Elm-2R Elm-4R Elm-6R Elm-8R Elm-10R Elm-12R Elm-16R Elm-20R Elm-24R Elm-28R "
        "Elm-1L Elm-2L Elm-4L Elm-6L Elm-8L Elm-10L Elm-12L Elm-16L Elm-20L Elm-24L Elm-28L "
        "Elm-1RL Elm-2RL Elm-4RL Elm-6RL Elm-8RL Elm-10RL Elm-12RL Elm-16RL Elm-20RL Elm-24RL Elm-28RL "
        "Elm-Series ElmL-Series "
        "Elm-1M Elm-2M Elm-4M Elm-6M Elm-8M Elm-10M Elm-12M "
        "Elm-1RM Elm-2RM Elm-4RM Elm-6RM Elm-8RM Elm-10RM Elm-12RM "
        "Elm-1ML Elm-2ML Elm-4ML Elm-6ML Elm-8ML Elm-10ML Elm-12ML "
        "Elm-1RML Elm-2RML Elm-4RML Elm-6RML Elm-8RML Elm-10RML Elm-12RML");
}

TEST(RowOrder, UnreleasedElmEndsWithItsSeriesRows)
{
    EXPECT_EQ(names(unreleased_table(), 4),
        "Elm-1 Elm-2 Elm-4 Elm-6 Elm-8 Elm-10 Elm-12 Elm-16 Elm-20 Elm-24 Elm-28 "
        "Elm-1R Elm-2R Elm-4R Elm-6R Elm-8R Elm-10R Elm-12R Elm-16R Elm-20R Elm-24R Elm-28R "
        "Elm-1L Elm-2L Elm-4L Elm-6L Elm-8L Elm-10L Elm-12L Elm-16L Elm-20L Elm-24L Elm-28L "
        "Elm-1RL Elm-2RL Elm-4RL Elm-6RL Elm-8RL Elm-10RL Elm-12RL Elm-16RL Elm-20RL Elm-24RL Elm-28RL "
        "Elm-Series ElmL-Series");
}

TEST(RowOrder, HazelHasVariantsInAlphabeticalOrderBehindThePlainModels)
{
    EXPECT_EQ(names(table(), 6),
        "Hazel-1 Hazel-2 Hazel-3 Hazel-4 Hazel-5 Hazel-6 "
        "Hazel-1R Hazel-2R Hazel-3R Hazel-4R Hazel-5R Hazel-6R "
        "Hazel-1T Hazel-2T Hazel-3T Hazel-4T Hazel-5T Hazel-6T "
        "Hazel-1L Hazel-2L Hazel-3L Hazel-4L Hazel-5L Hazel-6L "
        "Hazel-1RL Hazel-2RL Hazel-3RL Hazel-4RL Hazel-5RL Hazel-6RL "
        "Hazel-1TL Hazel-2TL Hazel-3TL Hazel-4TL Hazel-5TL Hazel-6TL");
}

TEST(RowOrder, MapleHasTheIapClassBehindAllOthersOfItsSupply)
{
    EXPECT_EQ(names(table(), 9),
        "Maple-1 Maple-2 Maple-3 Maple-4 Maple-5 Maple-1S Maple-2S Maple-3S Maple-4S Maple-5S "
        "Maple-I1 Maple-I2 Maple-I3 Maple-I4 Maple-I5 Maple-I6 "
        "Maple-1L Maple-2L Maple-3L Maple-4L Maple-5L Maple-1SL Maple-2SL Maple-3SL Maple-4SL Maple-5SL "
        "Maple-I1L Maple-I2L Maple-I3L Maple-I4L Maple-I5L Maple-I6L");
}

TEST(RowOrder, PineHasEachMarkedTwinRightBehindItsModel)
{
    EXPECT_EQ(names(table(), 11),
        "Pine-4 Pine-4M Pine-8 Pine-8M Pine-16 Pine-16M Pine-32 Pine-32M Pine-40 Pine-40M "
        "Pine-48 Pine-48M Pine-52 Pine-52M Pine-56 Pine-56M Pine-61 Pine-61M");
}

} // namespace
