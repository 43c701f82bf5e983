#include "catalog/ranges.h"

#include "catalog/families.h"

namespace vrk {
namespace {

constexpr std::int16_t highest_column = McuTable::column_count - 1;

RangeSizes fill_column(McuTable& table, const Family& family, std::int16_t column)
{
    int row = 0;
    for (const Model& model : models_of(family)) {
        table.set_cell(family.series, row, column, cell_text(family, model, column));
        ++row;
    }
    return {family.declared_rows, highest_column, 0};
}

// The getter that tells the sizes and fills column 0 need not be the one that fills the others.
template <typename SizesGetter, typename CellsGetter>
void load_range(McuTable& table, SizesGetter get_sizes, CellsGetter get_cells)
{
    const RangeSizes sizes = get_sizes(table, std::int16_t{0}, std::int16_t{0});
    for (std::int16_t column = 1; column <= sizes.highest_column; ++column) {
        get_cells(table, std::int16_t{0}, column);
    }
}

template <typename Getter> void load_range(McuTable& table, Getter get) { load_range(table, get, get); }

} // namespace

// clang-format off
RangeSizes getMCU_AP_ISP_range_xy0 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, alder,   column); }
RangeSizes getMCU_AP_ISP_range_xy1 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, aspen,   column); }
RangeSizes getMCU_AP_ISP_range_xy2 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, birch,   column); }
RangeSizes getMCU_AP_ISP_range_xy3 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, cedar,   column); }
RangeSizes getMCU_AP_ISP_range_xy4 (McuTable& table, std::int16_t, std::int16_t column, bool show_unreleased)
{
    return fill_column(table, show_unreleased ? elm_unreleased : elm, column);
}
RangeSizes getMCU_AP_ISP_range_xy5 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, fir,     column); }
RangeSizes getMCU_AP_ISP_range_xy6 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, hazel,   column); }
RangeSizes getMCU_AP_ISP_range_xy7 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, juniper, column); }
RangeSizes getMCU_AP_ISP_range_xy8 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, larch,   column); }
RangeSizes getMCU_AP_ISP_range_xy9 (McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, maple,   column); }
RangeSizes getMCU_AP_ISP_range_xy10(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, oak,     column); }
RangeSizes getMCU_AP_ISP_range_xy11(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, pine,    column); }
RangeSizes getMCU_AP_ISP_range_xy12(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, rowan,   column); }
RangeSizes getMCU_AP_ISP_range_xy13(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, spruce,  column); }
RangeSizes getMCU_AP_ISP_range_xy14(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, willow,  column); }
RangeSizes getMCU_AP_ISP_range_xy15(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, poplar,  column); }
RangeSizes getMCU_AP_ISP_range_xy16(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, holly,   column); }
RangeSizes getMCU_AP_ISP_range_xy17(McuTable& table, std::int16_t, std::int16_t column) { return fill_column(table, teak,    column); }

void setMCU_AP_ISP_range_1(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy0); }
void load_mcu_range_2 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy1); }
void load_mcu_range_3 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy2); }
void load_mcu_range_4 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy3); }
void load_mcu_range_5 (McuTable& table, bool show_unreleased)
{
    load_range(table, [show_unreleased](McuTable& its_table, std::int16_t reserved, std::int16_t column) {
        return getMCU_AP_ISP_range_xy4(its_table, reserved, column, show_unreleased);
    });
}
void load_mcu_range_6 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy5); }
void load_mcu_range_7 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy6); }
void load_mcu_range_8 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy7); }
void load_mcu_range_9 (McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy8); }
void load_mcu_range_10(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy9); }
void load_mcu_range_11(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy10); }
void load_mcu_range_12(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy11); }
void load_mcu_range_13(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy12); }
void load_mcu_range_14(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy13); }
void load_mcu_range_15(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy14); }
void load_mcu_range_16(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy15); }
void load_mcu_range_17(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy16); }
void load_mcu_range_18(McuTable& table) { load_range(table, getMCU_AP_ISP_range_xy17, getMCU_AP_ISP_range_xy15); }
// clang-format on

void load_mcu_tables(McuTable& table, bool show_unreleased)
{
    setMCU_AP_ISP_range_1(table);
    load_mcu_range_2(table);
    load_mcu_range_3(table);
    load_mcu_range_4(table);
    load_mcu_range_5(table, show_unreleased);
    load_mcu_range_6(table);
    load_mcu_range_7(table);
    load_mcu_range_8(table);
    load_mcu_range_9(table);
    load_mcu_range_10(table);
    load_mcu_range_11(table);
    load_mcu_range_12(table);
    load_mcu_range_13(table);
    load_mcu_range_14(table);
    load_mcu_range_15(table);
    load_mcu_range_16(table);
    load_mcu_range_17(table);
    load_mcu_range_18(table);
}

} // namespace vrk
