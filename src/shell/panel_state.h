// Which controls can be used while a sequence runs or a project holds the panel.
#pragma once

#include "shell/shell.h"

namespace vrk {

namespace panel {
constexpr std::int16_t free = 0;
constexpr std::int16_t free_running = 1;
constexpr std::int16_t locked = 2; // by a project, or by the lock button
constexpr std::int16_t locked_running = 3;
} // namespace panel

// The state that follows from what is locked and what runs.
std::int16_t panel_state(const Shell& shell);

// Sets what is enabled in the state in force. A model without options to write has its option strips left alone.
void show_panel_state(Shell& shell);
void set_locked(Shell& shell, bool locked);

// The EEPROM file can be opened, described and numbered, for a model that has a buffer for it.
void enable_eeprom_controls(Shell& shell, bool enabled);

} // namespace vrk
