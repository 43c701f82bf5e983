#include "image/hex_lines.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::size_t longest_line = 1024; // a record has 523 characters at most

bool ends_line(char c) { return c == '\n' || c == '\r'; }

} // namespace

std::optional<std::string_view> HexLines::next()
{
    line_.clear();
    bool begun = false;
    while (!rest_.empty() || read_piece()) {
        if (behind_return_ && rest_.front() == '\n') {
            behind_return_ = false;
            rest_.remove_prefix(1);
            continue;
        }
        behind_return_ = false;
        begun = true;
        const auto end = std::find_if(rest_.begin(), rest_.end(), ends_line);
        const std::string_view part{rest_.begin(), end};
        if (end == rest_.end()) {
            keep(part);
            rest_ = {};
            continue;
        }
        behind_return_ = *end == '\r';
        rest_.remove_prefix(part.size() + 1);
        if (line_.empty())
            return part.substr(0, longest_line);
        keep(part);
        return line_;
    }
    return begun ? std::optional<std::string_view>{line_} : std::nullopt;
}

bool HexLines::read_piece()
{
    text_.read(piece_.data(), static_cast<std::streamsize>(piece_.size()));
    rest_ = {piece_.data(), static_cast<std::size_t>(text_.gcount())};
    return !rest_.empty();
}

void HexLines::keep(std::string_view part)
{
    line_ += part.substr(0, longest_line - std::min(longest_line, line_.size()));
}

} // namespace vrk
