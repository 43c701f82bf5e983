// The text of a custom command as bytes.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace vrk {

// Pairs from the left, blanks between them left out: "12 34" and "1234" are the same, and "A" alone is 0A. A pair that
// begins with a character below "0" (a blank, a sign) is left out; one that is no hexadecimal number counts as 00. At
// most one byte for two characters of the text, and one more where a digit is left over.
std::vector<std::uint8_t> parse_hex_pairs(std::string_view text);

} // namespace vrk
