// SHA-256, by which an image is known wherever its file has gone.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

std::string sha256_hex(std::span<const std::uint8_t> bytes); // 64 hexadecimal digits, lower case

} // namespace vrk
