// A hexadecimal string as a user types it to be sent. The whole input is the text.
#include "fuzz/target.h"

#include "platform/text_number.h"
#include "terminal/code_page.h"
#include "terminal/hex_to_send.h"

#include <algorithm>

namespace fuzz {

namespace {

bool is_digit(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f'); }

bool is_good(char c) { return c == ' ' || is_digit(c); }

// All in front of it are good, and so of one byte each.
std::string complaint_of(std::string_view text, const vrk::WrongCharacter& wrong)
{
    const auto at = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), is_good) - text.begin());
    if (at == text.size() || wrong.position != static_cast<int>(at) + 1)
        return "a wrong character that does not stand at its place";
    const bool as_typed = !wrong.character.empty() && text.substr(at).starts_with(wrong.character);
    return as_typed ? "" : "a wrong character that is not shown as typed";
}

} // namespace

std::string fuzz_hex_to_send(Input input)
{
    const std::string text(input.begin(), input.end());
    if (const auto wrong = vrk::wrong_hex_character(text))
        return complaint_of(vrk::trimmed(text), *wrong);
    if (!std::all_of(text.begin(), text.end(), [](char c) { return is_good(c) || vrk::trimmed({&c, 1}).empty(); }))
        return "a wrong character that was not told";

    const auto bytes = vrk::hex_to_send(text);
    const auto digits = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_digit));
    if (bytes.size() > digits || bytes.size() < (digits + 1) / 2)
        return "more or fewer bytes than the digits give";
    // As pairs they stand for themselves.
    return vrk::hex_to_send(vrk::hex_pairs_text(bytes)) == bytes ? "" : "pairs that read as other bytes";
}

} // namespace fuzz
