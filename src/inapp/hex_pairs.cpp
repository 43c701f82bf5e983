#include "inapp/hex_pairs.h"

#include "platform/text_number.h"

namespace vrk {

std::vector<std::uint8_t> parse_hex_pairs(std::string_view text)
{
    std::vector<std::uint8_t> bytes;
    for (std::string_view rest = trimmed(text); !rest.empty();) {
        const std::string_view pair = first_characters(rest, 2);
        rest = trimmed(rest.substr(pair.size()));
        if (static_cast<unsigned char>(pair.front()) >= '0')
            bytes.push_back(static_cast<std::uint8_t>(hex_number(pair)));
    }
    return bytes;
}

} // namespace vrk
