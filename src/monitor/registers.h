// The special function registers that the monitor shows, in the order of its list.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vrk {

struct Register {
    std::uint8_t address;
    std::string_view name;
};

std::span<const Register> registers_of(int series); // none in series 0 and 1

} // namespace vrk
