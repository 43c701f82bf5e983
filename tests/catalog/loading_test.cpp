#include "tests/catalog/loaded_table.h"

#include <gtest/gtest.h>

namespace {

using namespace catalog_test;
using vrk::McuColumn;

TEST(Getter, FillsOneColumnOfAllRowsAndTellsTheSizes)
{
    vrk::McuTable found;

    const vrk::RangeSizes sizes = vrk::getMCU_AP_ISP_range_xy7(found, 0, 9);

    EXPECT_EQ(sizes.rows, 136);
    EXPECT_EQ(sizes.highest_column, 20);
    EXPECT_EQ(found.cell(7, 0, 9), "Juniper-8");
    EXPECT_EQ(found.cell(7, 135, 9), "Juniper-I62TL");
    EXPECT_EQ(found.cell(7, 0, 1), "");
    EXPECT_EQ(found.cell(7, 136, 9), "");
}

TEST(Getter, ReservedValueChangesNothing)
{
    vrk::McuTable found;
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy0(found, 1234, 9).rows, 4);
    EXPECT_EQ(names(found, 0), names(table(), 0));
}

TEST(Getter, ColumnOutsideTheTableWritesNothing)
{
    vrk::McuTable found;

    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy6(found, 0, 21).rows, 36);
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy6(found, 0, -1).rows, 36);

    EXPECT_EQ(found.cell(6, 0, 0), "");
    EXPECT_EQ(found.cell(6, 0, 20), "");
}

TEST(Getter, NumbersLeaveTheSeriesBehindThirteen)
{
    vrk::McuTable found;
    vrk::getMCU_AP_ISP_range_xy13(found, 0, 9);
    vrk::getMCU_AP_ISP_range_xy14(found, 0, 9);
    vrk::getMCU_AP_ISP_range_xy15(found, 0, 9);
    vrk::getMCU_AP_ISP_range_xy16(found, 0, 9);
    vrk::getMCU_AP_ISP_range_xy17(found, 0, 9);

    EXPECT_EQ(found.cell(13, 0, 9), "Spruce-4");
    EXPECT_EQ(found.cell(14, 0, 9), "");
    EXPECT_EQ(found.cell(15, 0, 9), "Poplar-1");
    EXPECT_EQ(found.cell(16, 0, 9), "Holly-1");
    EXPECT_EQ(found.cell(17, 0, 9), "Willow-2");
    EXPECT_EQ(found.cell(18, 0, 9), "Teak-8");
}

TEST(Getter, DeclaresMoreRowsThanModelsForThreeFamiliesAndLeavesThemEmpty)
{
    vrk::McuTable found;
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy10(found, 0, 0).rows, 113);
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy15(found, 0, 0).rows, 74);
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy16(found, 0, 0).rows, 74);

    EXPECT_EQ(found.cell(10, 111, 0), "10");
    EXPECT_EQ(found.cell(10, 112, 0), "");
    EXPECT_EQ(found.cell(15, 35, 0), "15");
    EXPECT_EQ(found.cell(15, 36, 0), "");
    EXPECT_EQ(found.cell(16, 36, 0), "");
}

TEST(Getter, ElmHasARowSetForEachAnswerToShowUnreleased)
{
    vrk::McuTable released;
    vrk::McuTable unreleased;
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy4(released, 0, 1, false).rows, 74);
    EXPECT_EQ(vrk::getMCU_AP_ISP_range_xy4(unreleased, 0, 1, true).rows, 73);

    EXPECT_EQ(released.cell(4, 46, 1), "F301");
    EXPECT_EQ(unreleased.cell(4, 46, 1), "");
}

TEST(Loader, FirstFamilyComesWhole)
{
    vrk::McuTable found;
    vrk::setMCU_AP_ISP_range_1(found);

    EXPECT_EQ(names(found, 0), "Alder-64 Alder-64M Alder-32 Alder-32M");
    EXPECT_EQ(found.cell(0, 3, McuColumn::rom_image), "BOOTC_2003.ROM");
    EXPECT_EQ(found.cell(0, 3, McuColumn::cap_no_eeprom), "0");
    EXPECT_EQ(names(found, 1), "");
}

TEST(Loader, TeakFillsItsOwnNumberAndThenPoplarAgain)
{
    vrk::McuTable found;
    vrk::load_mcu_range_18(found);

    EXPECT_EQ(count_rows(found, 18, McuColumn::series), 32);
    EXPECT_EQ(count_rows(found, 18, McuColumn::mcu_name), 0);
    EXPECT_EQ(names(found, 15), names(table(), 15));
    EXPECT_EQ(found.cell(15, 0, McuColumn::series), ""); // the column that Poplar was not asked for
}

TEST(Loader, LoadingTwiceChangesNothing)
{
    vrk::McuTable found = load(false);
    vrk::load_mcu_tables(found, false);

    EXPECT_EQ(names(found, 4), names(table(), 4));
    EXPECT_EQ(names(found, 10), names(table(), 10));
}

TEST(McuTable, KeepsACellWithoutTheBlanksAtItsEnds)
{
    vrk::McuTable found;
    found.set_cell(20, 140, 20, "  two words ");

    EXPECT_EQ(found.cell(20, 140, 20), "two words");
    EXPECT_EQ(found.cell(20, 139, 20), "");
}

TEST(McuTable, OutsideItsBoundsIsEmptyAndTakesNothing)
{
    vrk::McuTable found;
    found.set_cell(21, 0, 0, "x");
    found.set_cell(0, 141, 0, "x");
    found.set_cell(0, 0, 21, "x");
    found.set_cell(-1, -1, -1, "x");

    EXPECT_EQ(found.cell(21, 0, 0), "");
    EXPECT_EQ(found.cell(0, 141, 0), "");
    EXPECT_EQ(found.cell(0, 0, 21), "");
    EXPECT_EQ(found.cell(-1, -1, -1), "");
    EXPECT_EQ(found.cell(vrk::row_not_found, vrk::row_not_found, 9), "");
}

} // namespace
