// The pages of the option table: which strips of the panel an option page has, and what each stands for.
#pragma once

#include "options/option_pairs.h"

#include <span>
#include <vector>

namespace vrk {

enum class Box { none, watchdog_divider, rc30k_divider }; // a list behind the buttons of a strip

// One strip of the panel: a label and two buttons, all with the strip's index.
struct Strip {
    int index;
    const Pair* pair; // null: only the label is shown, its buttons are parked
    std::string_view bit; // "BBb": option byte and bit that the pair writes
    char first_value; // of that bit, where the first choice is taken
    bool first_is_default;
    Text note; // of a strip without a pair
    std::string_view note_key; // of its label; empty: "Clew"
    Box box;
    const Choice* third = nullptr; // a third button, where the data flash can be cleared in two ways
    std::string_view third_code = {}; // "BBbv"
};

struct Page {
    int number;
    std::span<const Strip> base; // the page that this one is like; empty: none
    std::span<const Strip> own; // replaces strips of the base by index, or adds to them
};

std::span<const Page> option_pages(bool english);

// The strips of a page in the order of the panel.
std::vector<Strip> strips_of(const Page& page);

// The strips of Teak, of which no page is filled at start.
std::span<const Strip> teak_strips();

} // namespace vrk
