// What the seven lamps of the off-line board say. One line a state; '#' is lit, '*' flashes, '.' is dark.
#pragma once

#include "report/text.h"

#include <span>
#include <string_view>

namespace vrk {

struct LampState {
    std::string_view lamps; // 1 to 7
    Text meaning;
};

std::span<const LampState> board_lamp_states();

} // namespace vrk
