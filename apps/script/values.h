// What a script can read: controls, buffers, records and variables of the main object as JSON values.
#pragma once

#include "shell/shell.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace vrk::script {

using Json = nlohmann::ordered_json;

// Nothing: no such property, variable, buffer, ... of that name.
std::optional<Json> control_property(const Control& control, std::string_view property); // "" is its main value
Json control_names(const Shell& shell, std::string_view prefix);
std::optional<Json> variable(const Shell& shell, std::string_view name);
Json record_value(const McuRecord& record);
Json buffer_info(const FileBuffer& buffer);
std::string hex_bytes(std::span<const std::uint8_t> bytes); // two upper-case digits a byte

} // namespace vrk::script
