#include "terminal/find_text.h"

#include <algorithm>

namespace vrk {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

} // namespace

std::optional<std::size_t> find_around(std::string_view text, std::string_view what, std::size_t from)
{
    if (what.empty())
        return std::nullopt;
    const auto place_behind = [&](std::size_t first) {
        const auto same = [](char a, char b) { return lower(a) == lower(b); };
        return std::search(
            text.begin() + static_cast<std::ptrdiff_t>(first), text.end(), what.begin(), what.end(), same);
    };
    auto found = place_behind(std::min(from, text.size()));
    if (found == text.end())
        found = place_behind(0);
    if (found == text.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - text.begin());
}

} // namespace vrk
