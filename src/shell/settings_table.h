// Which control is kept from one run to the next, under which key, and what it is when nothing is stored.
#pragma once

#include "form/controls.h"

#include <span>
#include <string_view>

namespace vrk {

// What of the control is kept, and how it is written.
enum class Holds {
    text, // of a text box, as it stands
    count, // a text box with a number
    item, // of a list, the text chosen or typed
    place, // of a list, the position chosen, from 0
    check, // of a check box, 0 or 1
    button, // True or False, of one button
    choice, // which of a group of buttons is chosen, from 0
};

struct SettingRow {
    static constexpr int single = Control::no_index;
    static constexpr int each = -2; // a key for each element: the key of the row, "_" and the index

    std::string_view key;
    const char* fallback; // null: what the control holds at start
    std::string_view control;
    int index;
    Holds holds;
};

std::span<const SettingRow> setting_rows(); // in the order of reading

} // namespace vrk
