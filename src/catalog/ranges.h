// Fills McuTable from the families. A getter writes one column of all rows of its family and tells its sizes; a loader
// asks its getter for column 0 to learn the sizes, then for columns 1 to 20.
//
// The getters' numbers follow the series up to 13. Series 14 is reserved, and from there on the numbers run on:
// xy14 fills series 17, xy15 and xy16 their own, xy17 fills series 18.
#pragma once

#include "catalog/mcu_table.h"

#include <cstdint>

namespace vrk {

struct RangeSizes {
    std::int16_t rows = 0; // declared by the family; rows without a model stay empty
    std::int16_t highest_column = 0; // always 20
    std::int16_t unused = 0; // third result, which no caller looks at
};

// A column outside 0 to 20 writes nothing. The first number is reserved.
RangeSizes getMCU_AP_ISP_range_xy0(McuTable& table, std::int16_t reserved, std::int16_t column); // Alder
RangeSizes getMCU_AP_ISP_range_xy1(McuTable& table, std::int16_t reserved, std::int16_t column); // Aspen
RangeSizes getMCU_AP_ISP_range_xy2(McuTable& table, std::int16_t reserved, std::int16_t column); // Birch
RangeSizes getMCU_AP_ISP_range_xy3(McuTable& table, std::int16_t reserved, std::int16_t column); // Cedar
RangeSizes getMCU_AP_ISP_range_xy4(
    McuTable& table, std::int16_t reserved, std::int16_t column, bool show_unreleased); // Elm has two sets of rows
RangeSizes getMCU_AP_ISP_range_xy5(McuTable& table, std::int16_t reserved, std::int16_t column); // Fir
RangeSizes getMCU_AP_ISP_range_xy6(McuTable& table, std::int16_t reserved, std::int16_t column); // Hazel
RangeSizes getMCU_AP_ISP_range_xy7(McuTable& table, std::int16_t reserved, std::int16_t column); // Juniper
RangeSizes getMCU_AP_ISP_range_xy8(McuTable& table, std::int16_t reserved, std::int16_t column); // Larch
RangeSizes getMCU_AP_ISP_range_xy9(McuTable& table, std::int16_t reserved, std::int16_t column); // Maple
RangeSizes getMCU_AP_ISP_range_xy10(McuTable& table, std::int16_t reserved, std::int16_t column); // Oak
RangeSizes getMCU_AP_ISP_range_xy11(McuTable& table, std::int16_t reserved, std::int16_t column); // Pine
RangeSizes getMCU_AP_ISP_range_xy12(McuTable& table, std::int16_t reserved, std::int16_t column); // Rowan
RangeSizes getMCU_AP_ISP_range_xy13(McuTable& table, std::int16_t reserved, std::int16_t column); // Spruce
RangeSizes getMCU_AP_ISP_range_xy14(McuTable& table, std::int16_t reserved, std::int16_t column); // Willow, series 17
RangeSizes getMCU_AP_ISP_range_xy15(McuTable& table, std::int16_t reserved, std::int16_t column); // Poplar
RangeSizes getMCU_AP_ISP_range_xy16(McuTable& table, std::int16_t reserved, std::int16_t column); // Holly
RangeSizes getMCU_AP_ISP_range_xy17(McuTable& table, std::int16_t reserved, std::int16_t column); // Teak, series 18

// One a family, in the order of the getters.
void setMCU_AP_ISP_range_1(McuTable& table);
void load_mcu_range_2(McuTable& table);
void load_mcu_range_3(McuTable& table);
void load_mcu_range_4(McuTable& table);
void load_mcu_range_5(McuTable& table, bool show_unreleased);
void load_mcu_range_6(McuTable& table);
void load_mcu_range_7(McuTable& table);
void load_mcu_range_8(McuTable& table);
void load_mcu_range_9(McuTable& table);
void load_mcu_range_10(McuTable& table);
void load_mcu_range_11(McuTable& table);
void load_mcu_range_12(McuTable& table);
void load_mcu_range_13(McuTable& table);
void load_mcu_range_14(McuTable& table);
void load_mcu_range_15(McuTable& table);
void load_mcu_range_16(McuTable& table);
void load_mcu_range_17(McuTable& table);
// Keeps a slip that the table's readers have come to rely on: columns 1 to 20 come from the getter of Poplar, which
// fills series 15 a second time. Series 18 thus has its number in column 0 and neither name nor id, and no look-up
// ever finds a Teak.
void load_mcu_range_18(McuTable& table);

// All of them. Called once at start, before the device tree is built.
void load_mcu_tables(McuTable& table, bool show_unreleased);

} // namespace vrk
