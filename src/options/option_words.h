// The options and their choices as readable words, for those who write them: "clock-source=internal". They stand beside
// the pairs of option_pairs.h, and stay as they are: command lines and makefiles hang on them.
#pragma once

#include "options/option_pairs.h"

#include <span>
#include <string_view>

namespace vrk {

struct OptionWords {
    const Pair* pair;
    std::string_view option; // unique on every page
    std::string_view first; // choice of the pair
    std::string_view second;
};

std::span<const OptionWords> option_words();
const OptionWords* words_of(const Pair& pair); // null: a pair of no page that is loaded

} // namespace vrk
