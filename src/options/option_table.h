// The table of options: a page for each group of families, a row for each label, caption, choice and box of the panel.
#pragma once

#include "catalog/text_table.h"

namespace vrk {

using OptionTable = TextTable<21, 68, 19>;

enum class OptionColumn {
    key, // "Clew" for a row that only holds a place
    control,
    control_type, // Label, OptionButton, ComboBox, ...
    index, // in the control array; empty: a single control
    property, // Caption, Value or Text: what `value` sets
    value, // for Value rows 1 on the default, else 0
    snapshot, // state of the control as last taken, or after a decode "1" on the rows that hold in the chip
    visible,
    enable_idle,
    spare_idle,
    enable_running,
    spare_running,
    enable_locked,
    height, // twips from here
    width,
    top,
    left, // 90000: parked, the row exists but cannot be seen
    report,
    bit_code, // "BBbv": option byte, bit, value of the bit where this row is chosen
};

// Pages by what they hold. The others belong to one group of families each.
namespace option_page {
constexpr int juniper = 6;
constexpr int teak = 15; // never filled
constexpr int project_fields = 20;
} // namespace option_page

} // namespace vrk
