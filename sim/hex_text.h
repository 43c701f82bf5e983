// Upper-case hexadecimal for complaints and logs.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace sim {

// At least `digits` digits, more where the value needs them.
inline std::string hex(std::uint64_t value, int digits)
{
    std::string text;
    for (; value != 0 || digits > 0; value >>= 4U, --digits)
        text.insert(text.begin(), "0123456789ABCDEF"[value & 0xFU]);
    return text;
}

// "46 B9 6A"
inline std::string hex_bytes(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += (text.empty() ? "" : " ") + hex(byte, 2);
    return text;
}

} // namespace sim
