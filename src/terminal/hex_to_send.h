// Hexadecimal text as the bytes that it stands for, as a user types it to be sent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

struct WrongCharacter {
    int position = 0; // from 1 on, blanks counted
    std::string character; // as typed
};

// The first character that is neither a digit nor a blank, of the trimmed text.
std::optional<WrongCharacter> wrong_hex_character(std::string_view text);

// Pairs from the left, blanks between them left out; a last digit alone is a byte, and so is one before a blank: "FFF"
// is FF 0F, "1 2" is 01 02. The text has no wrong character.
std::vector<std::uint8_t> hex_to_send(std::string_view text);

} // namespace vrk
