// The search in what the terminal shows.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vrk {

// The next place of `what` from byte `from` on, and from the top where there is none below. Letters A to Z are found in
// either case. Nothing: the text is nowhere, or empty.
std::optional<std::size_t> find_around(std::string_view text, std::string_view what, std::size_t from);

} // namespace vrk
