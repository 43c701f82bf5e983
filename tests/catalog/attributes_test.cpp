#include "catalog/attributes.h"
#include "catalog/families.h"
#include "catalog/isp_start.h"
#include "tests/catalog/loaded_table.h"

#include <gtest/gtest.h>

namespace {

using namespace catalog_test;
using vrk::VoltageClass;

// isp_start and the last address shown.

TEST(IspStart, OldestFamilyTakesTheTabulatedStart)
{
    EXPECT_EQ(vrk::derive_isp_start(record("Alder-64")).isp_start, 0x10000);
    EXPECT_EQ(vrk::derive_isp_start(record("Alder-64")).shown_last, 0xFFFF);
    EXPECT_EQ(vrk::derive_isp_start(record("Alder-32")).isp_start, 0xE000);
}

TEST(IspStart, OlderFamiliesHaveOneKilobyteAtTheTop)
{
    EXPECT_EQ(vrk::derive_isp_start(record("Aspen-32")).isp_start, 0xFC00);
    EXPECT_EQ(vrk::derive_isp_start(record("Birch-4")).isp_start, 0x3800);
    EXPECT_EQ(vrk::derive_isp_start(record("Birch-4M")).isp_start, 0xF800);
    EXPECT_EQ(vrk::derive_isp_start(record("Pine-8")).isp_start, 0xF800);
    EXPECT_EQ(vrk::derive_isp_start(record("Rowan-14L")).isp_start, 0x3800);
    EXPECT_EQ(vrk::derive_isp_start(record("Spruce-61")).isp_start, 0xF800);
}

TEST(IspStart, WideBootTakesTwoKilobytesInBothSuppliesOfBirchOnly)
{
    EXPECT_EQ(vrk::derive_isp_start(record("Birch-20")).isp_start, 0xF400);
    EXPECT_EQ(vrk::derive_isp_start(record("Birch-20L")).isp_start, 0xF400);
    EXPECT_EQ(vrk::derive_isp_start(record("Rowan-20")).isp_start, 0xF800);
}

TEST(IspStart, NewerFamiliesHaveOneStartEach)
{
    EXPECT_EQ(vrk::derive_isp_start(record("Cedar-1")).isp_start, 5120);
    EXPECT_EQ(vrk::derive_isp_start(record("Elm-1")).isp_start, 28672);
    EXPECT_EQ(vrk::derive_isp_start(record("Fir-30")).isp_start, 28672);
    EXPECT_EQ(vrk::derive_isp_start(record("Hazel-6")).isp_start, 5120);
    EXPECT_EQ(vrk::derive_isp_start(record("Juniper-60Q")).isp_start, 62464);
    EXPECT_EQ(vrk::derive_isp_start(record("Larch-I14")).isp_start, 13312);
    EXPECT_EQ(vrk::derive_isp_start(record("Maple-5")).isp_start, 5120);
    EXPECT_EQ(vrk::derive_isp_start(record("Oak-I62")).isp_start, 62464);
    EXPECT_EQ(vrk::derive_isp_start(record("Poplar-5")).isp_start, 5120);
    EXPECT_EQ(vrk::derive_isp_start(record("Holly-5")).isp_start, 5120);
    EXPECT_EQ(vrk::derive_isp_start(record("Willow-2")).isp_start, 13312);
}

TEST(IspStart, CodeThatAbutsTheBootAreaIsShownUpToIt)
{
    EXPECT_EQ(vrk::derive_isp_start(record("Aspen-63")).shown_last, 0xFBFF);
    EXPECT_EQ(record("Pine-61").ap_last, 0xF3FF);
    EXPECT_EQ(vrk::derive_isp_start(record("Pine-61")).shown_last, 0xF7FF);
    EXPECT_EQ(vrk::derive_isp_start(record("Pine-61M")).shown_last, 0xF7FF);
}

TEST(IspStart, ElmAbutsButIsShownUpToItsOwnEnd)
{
    EXPECT_TRUE(record("Elm-4").ap_abuts_isp);
    EXPECT_EQ(vrk::derive_isp_start(record("Elm-4")).shown_last, 0x0FFF);
}

TEST(IspStart, AllOthersAreShownUpToTheEndOfTheirCode)
{
    EXPECT_EQ(vrk::derive_isp_start(record("Birch-20")).shown_last, 0x4FFF);
    EXPECT_EQ(vrk::derive_isp_start(record("Spruce-61")).shown_last, 0xF3FF);
    EXPECT_EQ(vrk::derive_isp_start(record("Juniper-I62Q")).shown_last, 0xF7FF);
}

TEST(FourHexDigits, AreAlwaysFour)
{
    EXPECT_EQ(vrk::four_hex_digits(0), "0000");
    EXPECT_EQ(vrk::four_hex_digits(0x1FF), "01FF");
    EXPECT_EQ(vrk::four_hex_digits(0xF7FF), "F7FF");
}

TEST(FourHexDigits, LargerValuesKeepTheirLowFour)
{
    EXPECT_EQ(vrk::four_hex_digits(0x10000), "0000");
    EXPECT_EQ(vrk::four_hex_digits(0x11FFF), "1FFF");
}

// Class, voltage, size.

TEST(IapClass, HoldsForTheModelsWithTheLetter)
{
    EXPECT_TRUE(vrk::is_iap_class(record("Juniper-I62R")));
    EXPECT_TRUE(vrk::is_iap_class(record("Larch-I14VL")));
    EXPECT_TRUE(vrk::is_iap_class(record("Maple-I1")));
    EXPECT_TRUE(vrk::is_iap_class(record("Oak-I8W")));
    EXPECT_TRUE(vrk::is_iap_class(record("Poplar-I1")));
    EXPECT_TRUE(vrk::is_iap_class(record("Holly-I6L")));
    EXPECT_TRUE(vrk::is_iap_class(record("Willow-I14R")));
}

TEST(IapClass, DoesNotHoldForTheOthers)
{
    EXPECT_FALSE(vrk::is_iap_class(record("Juniper-60Q")));
    EXPECT_FALSE(vrk::is_iap_class(record("Fir-30")));
    EXPECT_FALSE(vrk::is_iap_class(record("Elm-Series")));
    EXPECT_FALSE(vrk::is_iap_class(vrk::McuRecord{}));
}

int count_iap(int series)
{
    int count = 0;
    for (int row = 0; row < vrk::McuTable::row_count; ++row) {
        count += vrk::is_iap_class(vrk::read_mcu_row(table(), series, row)) ? 1 : 0;
    }
    return count;
}

TEST(IapClass, HasItsShareOfEachFamily)
{
    EXPECT_EQ(count_iap(5), 0);
    EXPECT_EQ(count_iap(6), 0);
    EXPECT_EQ(count_iap(7), 9 * 4 * 2);
    EXPECT_EQ(count_iap(8), 7 * 2 * 2);
    EXPECT_EQ(count_iap(9), 6 * 2);
    EXPECT_EQ(count_iap(10), (10 + 10 + 9) * 2);
    EXPECT_EQ(count_iap(15), 6 * 2);
    EXPECT_EQ(count_iap(16), 6 * 2);
    EXPECT_EQ(count_iap(17), 7 * 2);
}

int count_3v(int series)
{
    int count = 0;
    for (int row = 0; row < vrk::McuTable::row_count; ++row) {
        count += vrk::voltage_class(vrk::read_mcu_row(table(), series, row)) == VoltageClass::V3 ? 1 : 0;
    }
    return count;
}

TEST(Voltage, HalfOfEachFamilyWithTwoSuppliesIsThreeVolts)
{
    EXPECT_EQ(count_3v(2), 17);
    EXPECT_EQ(count_3v(3), 12);
    EXPECT_EQ(count_3v(4), 37);
    EXPECT_EQ(count_3v(5), 26);
    EXPECT_EQ(count_3v(6), 18);
    EXPECT_EQ(count_3v(7), 68);
    EXPECT_EQ(count_3v(8), 32);
    EXPECT_EQ(count_3v(9), 16);
    EXPECT_EQ(count_3v(10), 56);
    EXPECT_EQ(count_3v(12), 17);
    EXPECT_EQ(count_3v(13), 10);
    EXPECT_EQ(count_3v(15), 18);
    EXPECT_EQ(count_3v(16), 18);
    EXPECT_EQ(count_3v(17), 37);
}

TEST(Voltage, FamiliesWithOneSupplyAreFiveVolts)
{
    EXPECT_EQ(count_3v(0), 0);
    EXPECT_EQ(count_3v(1), 0);
    EXPECT_EQ(count_3v(11), 0);
    EXPECT_EQ(count_3v(18), 0);
}

TEST(Voltage, FollowsTheMarkWhereTheIdIsShared)
{
    EXPECT_EQ(vrk::voltage_class(record("Birch-20")), VoltageClass::V5);
    EXPECT_EQ(vrk::voltage_class(record("Birch-20L")), VoltageClass::V3);
    EXPECT_EQ(vrk::voltage_class(record("Elm-4ML")), VoltageClass::V3);
    EXPECT_EQ(vrk::voltage_class(record("Elm-4M")), VoltageClass::V5);
    EXPECT_EQ(vrk::voltage_class(record("Elm-Series")), VoltageClass::V5);
    EXPECT_EQ(vrk::voltage_class(record("ElmL-Series")), VoltageClass::V3);
}

TEST(SizeDigits, AreTheKilobytesInFourFamilies)
{
    EXPECT_EQ(vrk::size_digits(record("Elm-4R")), 4);
    EXPECT_EQ(vrk::size_digits(record("Elm-24R")), 24); // though it ends a byte early
    EXPECT_EQ(vrk::size_digits(record("Elm-Series")), 28);
    EXPECT_EQ(vrk::size_digits(record("ElmL-Series")), 28);
    EXPECT_EQ(vrk::size_digits(record("Fir-24")), 24);
    EXPECT_EQ(vrk::size_digits(record("Fir-30")), 30);
    EXPECT_EQ(vrk::size_digits(record("Hazel-1")), 1);
    EXPECT_EQ(vrk::size_digits(record("Juniper-I62Q")), 62);
}

TEST(SizeDigits, AreFiftyTwoForEveryCedar)
{
    EXPECT_EQ(vrk::size_digits(record("Cedar-0.5")), 52);
    EXPECT_EQ(vrk::size_digits(record("Cedar-5RL")), 52);
}

TEST(SizeDigits, OtherFamiliesHaveNone)
{
    EXPECT_FALSE(vrk::size_digits(record("Birch-20")));
    EXPECT_FALSE(vrk::size_digits(record("Larch-8")));
    EXPECT_FALSE(vrk::size_digits(record("Oak-60")));
    EXPECT_FALSE(vrk::size_digits(vrk::McuRecord{}));
}

TEST(NamedModels, WideBootIsTheTwentyKilobyteBirchOfBothSupplies)
{
    EXPECT_TRUE(vrk::is_wide_boot(record("Birch-20")));
    EXPECT_TRUE(vrk::is_wide_boot(record("Birch-20L")));
    EXPECT_FALSE(vrk::is_wide_boot(record("Birch-62")));
    EXPECT_FALSE(vrk::is_wide_boot(record("Rowan-20")));
}

TEST(NamedModels, AspenTopIsTheTwoOfSixtyThreeKilobytes)
{
    EXPECT_TRUE(vrk::is_aspen_top(record("Aspen-63")));
    EXPECT_TRUE(vrk::is_aspen_top(record("Aspen-63M")));
    EXPECT_FALSE(vrk::is_aspen_top(record("Aspen-32")));
    EXPECT_FALSE(vrk::is_aspen_top(vrk::McuRecord{}));
}

// Groups of series.

TEST(SeriesGroups, RcGroupIsElevenToThirteen)
{
    EXPECT_FALSE(vrk::series_is_rc_group(10));
    EXPECT_TRUE(vrk::series_is_rc_group(11));
    EXPECT_TRUE(vrk::series_is_rc_group(12));
    EXPECT_TRUE(vrk::series_is_rc_group(13));
    EXPECT_FALSE(vrk::series_is_rc_group(14));
}

TEST(SeriesGroups, FifteenToSeventeenWithAndWithoutTheLast)
{
    EXPECT_FALSE(vrk::series_is_15_16_17(14));
    EXPECT_TRUE(vrk::series_is_15_16_17(15));
    EXPECT_TRUE(vrk::series_is_15_16_17(17));
    EXPECT_FALSE(vrk::series_is_15_16_17(18));
    EXPECT_TRUE(vrk::series_is_15_16(15));
    EXPECT_TRUE(vrk::series_is_15_16(16));
    EXPECT_FALSE(vrk::series_is_15_16(17));
}

TEST(SeriesGroups, OptionFamilyFollowsTheSeries)
{
    EXPECT_EQ(vrk::option_family(0), 0);
    EXPECT_EQ(vrk::option_family(2), 0);
    EXPECT_EQ(vrk::option_family(3), 1);
    EXPECT_EQ(vrk::option_family(5), 1);
    EXPECT_EQ(vrk::option_family(6), 2);
    EXPECT_EQ(vrk::option_family(10), 2);
    EXPECT_EQ(vrk::option_family(11), 0);
    EXPECT_EQ(vrk::option_family(14), 0);
    EXPECT_EQ(vrk::option_family(15), 4);
    EXPECT_EQ(vrk::option_family(17), 4);
    EXPECT_EQ(vrk::option_family(18), 3);
    EXPECT_EQ(vrk::option_family(19), 0);
}

// Data flash.

TEST(EepromBuffer, StandsWhereThereIsADataFlashOfANewerFamily)
{
    EXPECT_TRUE(vrk::has_eeprom_buffer(record("Fir-1")));
    EXPECT_TRUE(vrk::has_eeprom_buffer(record("Hazel-1R")));
    EXPECT_TRUE(vrk::has_eeprom_buffer(record("Juniper-60Q")));
    EXPECT_TRUE(vrk::has_eeprom_buffer(record("Oak-20V")));
    EXPECT_TRUE(vrk::has_eeprom_buffer(record("Willow-I12R")));
    EXPECT_TRUE(vrk::has_separate_eeprom(record("Juniper-60Q")));
}

TEST(EepromBuffer, NeverStandsBelowSeriesFiveNorInTheRcGroup)
{
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Alder-64")));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Birch-4M")));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Cedar-1")));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Elm-1")));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Pine-4")));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Rowan-4")));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Spruce-4")));
    EXPECT_FALSE(vrk::has_separate_eeprom(record("Spruce-4")));
}

TEST(EepromBuffer, AnEmptyDataFlashHasNoneWhateverTheFlagSays)
{
    const vrk::McuRecord plain = record("Juniper-60");

    EXPECT_LT(plain.eeprom_last, plain.eeprom_first);
    EXPECT_FALSE(plain.cap_no_eeprom);
    EXPECT_FALSE(vrk::has_eeprom_buffer(plain));
    EXPECT_FALSE(vrk::has_eeprom_buffer(record("Juniper-I62")));
}

TEST(EepromBuffer, TheFlagAloneTakesItAway)
{
    const vrk::McuRecord iap = record("Juniper-I60Q");

    EXPECT_GT(iap.eeprom_last - iap.eeprom_first, 100);
    EXPECT_FALSE(vrk::has_eeprom_buffer(iap));
}

TEST(EepromBuffer, ASpanOfOneHundredIsTooSmall)
{
    vrk::McuRecord small = record("Juniper-60Q");
    small.eeprom_last = small.eeprom_first + 100;
    EXPECT_FALSE(vrk::has_eeprom_buffer(small));
    small.eeprom_last = small.eeprom_first + 101;
    EXPECT_TRUE(vrk::has_eeprom_buffer(small));
}

TEST(ElmOf24Kilobytes, OneByteBelongsToNeitherArea)
{
    EXPECT_EQ(record("Elm-24").ap_last, 0x5FFE);
    EXPECT_EQ(record("Elm-24").eeprom_first, 0x6000);
    EXPECT_EQ(record("Fir-24").ap_last, 0x5FFE);
    EXPECT_EQ(record("Fir-24").eeprom_first, 0x6000);
}

// Keys and labels of the tree.

TEST(Families, HaveKeyAndLabelBySeries)
{
    EXPECT_EQ(vrk::family_of_series(7)->key, "FamilyJuniper");
    EXPECT_EQ(vrk::family_of_series(7)->label, "Juniper series");
    EXPECT_EQ(vrk::family_of_series(7)->in_tree, vrk::InTree::yes);
    EXPECT_EQ(vrk::family_of_series(17)->label, "Willow series");
    EXPECT_EQ(vrk::family_of_series(17)->in_tree, vrk::InTree::unreleased_only);
    EXPECT_EQ(vrk::family_of_series(0)->label, "Alder series");
}

TEST(Families, FourHaveNoPlaceInTheTree)
{
    EXPECT_EQ(vrk::family_of_series(11)->in_tree, vrk::InTree::no);
    EXPECT_EQ(vrk::family_of_series(15)->in_tree, vrk::InTree::no);
    EXPECT_EQ(vrk::family_of_series(16)->in_tree, vrk::InTree::no);
    EXPECT_EQ(vrk::family_of_series(18)->in_tree, vrk::InTree::no);
    EXPECT_EQ(vrk::family_of_series(18)->label, "");
}

TEST(Families, ReservedAndUnknownSeriesHaveNone)
{
    EXPECT_EQ(vrk::family_of_series(14), nullptr);
    EXPECT_EQ(vrk::family_of_series(19), nullptr);
    EXPECT_EQ(vrk::family_of_series(-1), nullptr);
}

} // namespace
