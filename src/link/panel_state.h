// Which controls can be used while a sequence runs or a project holds the panel.
#pragma once

#include "form/shell.h"

namespace vrk {

namespace panel {
constexpr std::int16_t free = 0;
constexpr std::int16_t free_running = 1;
constexpr std::int16_t locked = 2; // by a project, or by the lock button
constexpr std::int16_t locked_running = 3;
}

// Stores the state and sets what is enabled. Does nothing for a model without options to write.
void set_panel_state(Shell& shell, std::int16_t state);
void lock_panel_for_sequence(Shell& shell); // 0 becomes 1, 2 becomes 3
void unlock_panel_after_sequence(Shell& shell); // 1 becomes 0, 3 becomes 2

// The EEPROM file can be opened, described and numbered, for a model that has a buffer for it.
void enable_eeprom_controls(Shell& shell, bool enabled);

void enable_buttons(Shell& shell); // download can be pressed, stop cannot
void disable_buttons(Shell& shell); // the other way round

} // namespace vrk
