// The search in an image: for bytes, or for a text.
#pragma once

#include "image/range_rules.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vrk {

// What a hand has typed: pairs of hexadecimal digits, blanks where it likes ("12 AB", "12ab"), or a text behind a
// quotation mark ("\"V1.2\"", the second mark may be missing). Nothing: neither, or empty.
std::optional<std::vector<std::uint8_t>> search_bytes(std::string_view typed);

// Address of the next place of `what` that lies whole in `within`, from `from` on; from the beginning of `within` where
// there is none behind. Nothing: it is nowhere.
std::optional<std::int32_t> find_bytes(
    std::span<const std::uint8_t> image, AddressRange within, std::span<const std::uint8_t> what, std::int32_t from);

} // namespace vrk
