// From a model of the catalogue to a simulated specimen of it.
#pragma once

#include "catalog/mcu_record.h"
#include "catalog/mcu_table.h"
#include "sim/chip_model.h"

#include <optional>
#include <string_view>

namespace vrk {

sim::ChipModel chip_model_of(const McuRecord& record);

// As the model leaves the factory. Nothing: no such model in the catalogue.
std::optional<sim::ChipSetup> chip_setup_of(const McuTable& table, std::string_view name);

} // namespace vrk
