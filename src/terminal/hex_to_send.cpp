#include "terminal/hex_to_send.h"

#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

std::optional<WrongCharacter> wrong_hex_character(std::string_view text)
{
    constexpr std::string_view good = " 0123456789ABCDEFabcdef";
    text = trimmed(text);
    const std::size_t at = text.find_first_not_of(good);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string character{first_characters(text.substr(at), 1)};
    return WrongCharacter{character_count(text.substr(0, at)) + 1, character};
}

std::vector<std::uint8_t> hex_to_send(std::string_view text)
{
    std::vector<std::uint8_t> bytes;
    for (std::string_view rest = trimmed(text); !rest.empty();) {
        const std::string_view pair = rest.substr(0, 2);
        bytes.push_back(static_cast<std::uint8_t>(hex_number(pair)));
        rest = trimmed(rest.substr(pair.size()));
    }
    return bytes;
}

} // namespace vrk
