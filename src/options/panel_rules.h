// What the choices of a panel are bound to beyond their own rows: the model, and each other.
#pragma once

#include "options/option_table.h"

#include "catalog/mcu_record.h"

#include <optional>
#include <string_view>

namespace vrk {

// The small models of some families have no choices on their code and data area's ends; their rows keep the defaults.
bool strip_is_offered(const McuRecord& record, int strip);

// The factory starts the small models of these families without a crystal: the first choice of strip 0 is the default.
bool starts_on_internal_oscillator(const McuRecord& record);

// The default of the low-voltage pair goes by the model in series 3 to 5; Chinese page only. `chosen_by`: the model or
// the node of the tree that was chosen.
void set_low_voltage_default(OptionTable& table, const McuRecord& record, bool english, std::string_view chosen_by);

struct StripButton {
    int strip = 0;
    int button = 0;
};
// The choice that a choice brings along: the internal oscillator needs the reset pin as RESET, and the pin as a port
// needs the external clock.
std::optional<StripButton> brings_along(int series, const StripButton& chosen);

} // namespace vrk
