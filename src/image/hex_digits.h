// Pairs of hexadecimal digits as files have them: in a pair the digits end at the first other character.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vrk {

inline constexpr auto hex_digit_values = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::size_t i = 0; i < 10; ++i)
        values['0' + i] = static_cast<std::int8_t>(i);
    for (std::size_t i = 0; i < 6; ++i) {
        values['A' + i] = static_cast<std::int8_t>(10 + i);
        values['a' + i] = static_cast<std::int8_t>(10 + i);
    }
    return values;
}();

inline int digit_value(char c) { return hex_digit_values[static_cast<unsigned char>(c)]; } // -1: no digit

inline std::uint8_t pair_value(char high, char low)
{
    const int h = digit_value(high);
    const int l = digit_value(low);
    if ((h | l) >= 0)
        return static_cast<std::uint8_t>(h * 16 + l);
    return static_cast<std::uint8_t>(std::max(h, 0));
}

} // namespace vrk
