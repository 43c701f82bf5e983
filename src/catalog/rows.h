// Finds a model in McuTable, and reads its row. Nothing is changed and no one is told: that is for the callers.
// A look-up is a plain scan, series by series and row by row; the first hit wins.
#pragma once

#include "catalog/mcu_record.h"
#include "catalog/mcu_table.h"

#include <optional>
#include <string>
#include <string_view>

namespace vrk {

inline constexpr int row_not_found = 32767;

struct FoundRow {
    int series = row_not_found;
    int row = row_not_found;
    std::string name; // empty: not found
};

// By the id that a chip reported, blanks around it allowed. Two digits are looked for in series 1 only, all others from
// series 2 on, among the ids and the older ids. Series 0 is never searched: all its models have the same id.
FoundRow find_mcu_by_id(const McuTable& table, std::string_view id);

// By name, exact to the letter. An empty name names no model.
std::optional<FoundRow> locate_mcu_by_name(const McuTable& table, std::string_view name);

// The row in numbers and flags, isp_start derived. An empty flag cell reads as false, an empty number as 0.
McuRecord read_mcu_row(const McuTable& table, int series, int row);

} // namespace vrk
