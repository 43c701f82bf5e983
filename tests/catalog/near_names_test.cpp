// A model's name as typed by a hand that has no tree to pick from.
#include "loaded_table.h"

#include "catalog/near_names.h"

#include <gmock/gmock.h>

using namespace vrk;
using catalog_test::table;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(NearNames, TakesLargeLettersForSmallOnes)
{
    EXPECT_EQ(model_named(table(), "juniper-60q"), "Juniper-60Q");
    EXPECT_EQ(model_named(table(), " Juniper-60Q "), "Juniper-60Q");
    EXPECT_EQ(model_named(table(), "Juniper-61"), std::nullopt);
    EXPECT_EQ(model_named(table(), ""), std::nullopt);
}

TEST(NearNames, OffersWhatMayHaveBeenMeant)
{
    const auto names = names_near(table(), "Junipr-60Q");
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(names.front(), "Juniper-60Q");
    EXPECT_LE(names.size(), 5U);
    EXPECT_THAT(names_near(table(), "hazel1"), Contains("Hazel-1"));
}

TEST(NearNames, OffersNothingWhereNothingComesNear)
{
    EXPECT_THAT(names_near(table(), "a microcontroller"), IsEmpty());
    EXPECT_EQ(unknown_model_text(table(), "zzzzzzzzzzzzzzz"), "no model 'zzzzzzzzzzzzzzz' in the catalogue");
}

TEST(NearNames, SayWhatIsMissingAndWhatThereIs)
{
    EXPECT_THAT(unknown_model_text(table(), "Junipr-60Q"),
        ::testing::StartsWith("no model 'Junipr-60Q' in the catalogue; near it: Juniper-60Q"));
}
