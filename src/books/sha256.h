// The sum by which an image is known again.
// Source: FIPS 180-4, Secure Hash Standard.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// 64 hexadecimal digits, lower case, as other tools write them.
std::string sha256(std::span<const std::uint8_t> bytes);

} // namespace vrk
