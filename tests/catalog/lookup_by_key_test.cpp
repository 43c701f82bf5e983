#include "catalog/attributes.h"
#include "tests/catalog/loaded_table.h"

#include <gtest/gtest.h>

namespace {

using namespace catalog_test;

TEST(FindById, GivesNameSeriesAndRow)
{
    const vrk::FoundRow found = vrk::find_mcu_by_id(table(), "D17E");

    EXPECT_EQ(found.name, "Juniper-60Q");
    EXPECT_EQ(found.series, 7);
    EXPECT_EQ(found.row, 15);
}

TEST(FindById, BlanksAroundTheIdDoNotCount)
{
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "  D17E ").name, "Juniper-60Q");
    EXPECT_EQ(vrk::find_mcu_by_id(table(), " 56 ").name, "Aspen-63");
}

TEST(FindById, TwoDigitsAreLookedForInAspenOnly)
{
    const vrk::FoundRow found = vrk::find_mcu_by_id(table(), "52");

    EXPECT_EQ(found.name, "Aspen-8");
    EXPECT_EQ(found.series, 1);
    EXPECT_EQ(found.row, 4);
}

TEST(FindById, TheIdOfAlderIsNeverFoundThoughItStandsInItsRows)
{
    const vrk::FoundRow found = vrk::find_mcu_by_id(table(), "FF");

    EXPECT_EQ(table().cell(0, 0, 1), "FF");
    EXPECT_EQ(found.name, "");
    EXPECT_EQ(found.series, 32767);
    EXPECT_EQ(found.row, 32767);
}

TEST(FindById, UnknownIdGivesAnEmptyNameAndNoPlace)
{
    const vrk::FoundRow found = vrk::find_mcu_by_id(table(), "ABCD");

    EXPECT_EQ(found.name, "");
    EXPECT_EQ(found.series, 32767);
    EXPECT_EQ(found.row, 32767);
}

TEST(FindById, EmptyIdFindsNothing)
{
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "").series, 32767);
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "   ").series, 32767);
}

TEST(FindById, ElmSeriesComesBeforeItsThreeVoltTwin)
{
    const vrk::FoundRow found = vrk::find_mcu_by_id(table(), "E01E");

    EXPECT_EQ(found.name, "Elm-Series");
    EXPECT_EQ(found.row, 44);
    EXPECT_EQ(table().cell(4, 45, 1), "E01E");
    EXPECT_EQ(table().cell(4, 45, 9), "ElmL-Series");
}

TEST(FindById, AnOlderIdLeadsToTheModelThatHasItAsItsSecond)
{
    const vrk::FoundRow found = vrk::find_mcu_by_id(table(), "F314");

    EXPECT_EQ(found.name, "Elm-4R");
    EXPECT_EQ(found.series, 4);
    EXPECT_EQ(found.row, 13);
}

TEST(FindById, ElmComesBeforePoplarWhereTheirIdsMeet)
{
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "F306").name, "Elm-6");
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "F305").name, "Poplar-5");
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "F32C").name, "Elm-12L");
}

TEST(FindById, PineAnswersForTeak)
{
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "F402").name, "Pine-8"); // an id of Teak-8 as well
    EXPECT_EQ(vrk::find_mcu_by_id(table(), "F422").name, ""); // Teak-8R, which is nowhere
}

TEST(FindById, WithUnreleasedModelsTheOlderIdsLeadToTheSameModels)
{
    EXPECT_EQ(vrk::find_mcu_by_id(unreleased_table(), "F314").name, "Elm-4R");
}

TEST(LocateByName, IsExactAndMindsTheCase)
{
    EXPECT_TRUE(vrk::locate_mcu_by_name(table(), "Hazel-1"));
    EXPECT_FALSE(vrk::locate_mcu_by_name(table(), "hazel-1"));
    EXPECT_FALSE(vrk::locate_mcu_by_name(table(), " Hazel-1"));
    EXPECT_FALSE(vrk::locate_mcu_by_name(table(), "Hazel"));
    EXPECT_FALSE(vrk::locate_mcu_by_name(table(), "Teak-8"));
}

TEST(LocateByName, EmptyNameNamesNoModel) { EXPECT_FALSE(vrk::locate_mcu_by_name(table(), "")); }

TEST(ReadRow, TakesEveryColumnToItsField)
{
    const vrk::McuRecord found = record("Juniper-I62Q");

    EXPECT_EQ(found.series, 7);
    EXPECT_EQ(found.mcu_id, "D17F");
    EXPECT_EQ(found.ap_first, 0);
    EXPECT_EQ(found.ap_last, 0xF7FF);
    EXPECT_EQ(found.ap_last_alt, 0);
    EXPECT_EQ(found.eeprom_first, 0xF800);
    EXPECT_EQ(found.eeprom_last, 0xF7FF);
    EXPECT_EQ(found.isp_first, 0xF800);
    EXPECT_EQ(found.isp_start, 0xF400);
    EXPECT_EQ(found.isp_last, 0xFFFF);
    EXPECT_FALSE(found.ap_abuts_isp);
    EXPECT_EQ(found.mcu_name, "Juniper-I62Q");
    EXPECT_EQ(found.alt_id, "");
    EXPECT_EQ(found.rom_image, "");
    EXPECT_TRUE(found.listed);
    EXPECT_TRUE(found.cap_new_protocol);
    EXPECT_TRUE(found.cap_parity);
    EXPECT_TRUE(found.cap_parity_even);
    EXPECT_TRUE(found.cap_long_frame);
    EXPECT_TRUE(found.cap_no_option_write);
    EXPECT_TRUE(found.cap_all_flash_ap);
    EXPECT_TRUE(found.cap_no_eeprom);
}

TEST(ReadRow, TellsTheLastThreeFlagsApart)
{
    EXPECT_TRUE(record("Hazel-5").cap_no_option_write);
    EXPECT_TRUE(record("Hazel-5").cap_all_flash_ap);
    EXPECT_FALSE(record("Hazel-5").cap_no_eeprom);
    EXPECT_FALSE(record("Larch-I2").cap_no_option_write);
    EXPECT_FALSE(record("Larch-I2").cap_all_flash_ap);
    EXPECT_TRUE(record("Larch-I2").cap_no_eeprom);
}

TEST(ReadRow, TakesSecondIdRomImageAndBoundary)
{
    EXPECT_EQ(record("Elm-4R").alt_id, "F314");
    EXPECT_TRUE(record("Elm-4R").ap_abuts_isp);
    EXPECT_EQ(record("Alder-64").rom_image, "BOOTB_2003.ROM");
    EXPECT_EQ(record("Birch-20").ap_last_alt, 0x7FFF);
}

TEST(ReadRow, EmptyFlagCellOfTheHalfKilobyteCedarsReadsAsFalse)
{
    EXPECT_EQ(table().cell(3, 0, 20), "");
    EXPECT_FALSE(record("Cedar-0.5").cap_no_eeprom);
    EXPECT_FALSE(record("Cedar-0.5").listed);
    EXPECT_FALSE(record("Cedar-0.5R").listed);
    EXPECT_FALSE(record("Cedar-0.5L").listed);
    EXPECT_FALSE(record("Cedar-0.5RL").listed);
}

TEST(ReadRow, ARowWithoutAModelGivesAHarmlessRecord)
{
    const vrk::McuRecord found = vrk::read_mcu_row(table(), 14, 0);

    EXPECT_EQ(found.mcu_name, "");
    EXPECT_EQ(found.ap_last, 0);
    EXPECT_FALSE(found.listed);
}

TEST(Blocks, OfAlderAreShortAndItNamesARomImage)
{
    EXPECT_EQ(record("Alder-32M").rom_image, "BOOTC_2003.ROM");
    EXPECT_EQ(vrk::block_bytes(record("Alder-32M")), 128);
}

TEST(Blocks, OfAllOthersHave512Bytes)
{
    EXPECT_EQ(record("Aspen-63").rom_image, "");
    EXPECT_EQ(vrk::block_bytes(record("Aspen-63")), 512);
}

} // namespace
