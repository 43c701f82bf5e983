#include "image/find_bytes.h"

#include "image/hex_digits.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

std::vector<std::uint8_t> bytes_of_text(std::string_view text)
{
    if (!text.empty() && text.back() == '"')
        text.remove_suffix(1);
    return {text.begin(), text.end()};
}

} // namespace

std::optional<std::vector<std::uint8_t>> search_bytes(std::string_view typed)
{
    typed = trimmed(typed);
    std::vector<std::uint8_t> bytes;
    if (typed.starts_with('"')) {
        bytes = bytes_of_text(typed.substr(1));
    } else {
        for (std::size_t at = 0; at < typed.size(); ++at) {
            if (typed[at] == ' ')
                continue;
            if (at + 1 == typed.size() || digit_value(typed[at]) < 0 || digit_value(typed[at + 1]) < 0)
                return std::nullopt;
            bytes.push_back(pair_value(typed[at], typed[at + 1]));
            ++at;
        }
    }
    if (bytes.empty())
        return std::nullopt;
    return bytes;
}

std::optional<std::int32_t> find_bytes(
    std::span<const std::uint8_t> image, AddressRange within, std::span<const std::uint8_t> what, std::int32_t from)
{
    const std::int32_t first = std::max(within.first, 0);
    const std::int32_t end = std::min(within.last + 1, static_cast<std::int32_t>(image.size()));
    const auto search = [&](std::int32_t begin) -> std::optional<std::int32_t> {
        if (begin >= end)
            return std::nullopt;
        const auto found = std::search(image.begin() + begin, image.begin() + end, what.begin(), what.end());
        if (what.empty() || found == image.begin() + end)
            return std::nullopt;
        return static_cast<std::int32_t>(found - image.begin());
    };
    const auto found = search(std::max(from, first));
    return found ? found : search(first);
}

} // namespace vrk
