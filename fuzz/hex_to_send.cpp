// A hexadecimal string as a user types it to be sent. The whole input is the text.
#include "fuzz/target.h"

#include "platform/text_number.h"
#include "terminal/code_page.h"
#include "terminal/hex_to_send.h"

#include <algorithm>

namespace fuzz {

namespace {

bool is_digit(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f'); }

std::string complaint_of(std::string_view text, const vrk::WrongCharacter& wrong)
{
    const std::string before{vrk::first_characters(text, wrong.position - 1)};
    if (wrong.position < 1 || wrong.position > vrk::character_count(text) || wrong.character.empty())
        return "a wrong character that does not stand in the text";
    if (text.substr(before.size(), wrong.character.size()) != wrong.character)
        return "a wrong character that is not the one at its place";
    const bool good = std::all_of(before.begin(), before.end(), [](char c) { return c == ' ' || is_digit(c); });
    return good ? "" : "a wrong character in front of the one that was told";
}

} // namespace

std::string fuzz_hex_to_send(Input input)
{
    const std::string text(input.begin(), input.end());
    if (const auto wrong = vrk::wrong_hex_character(text))
        return complaint_of(vrk::trimmed(text), *wrong);

    const auto bytes = vrk::hex_to_send(text);
    const auto digits = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_digit));
    if (bytes.size() > digits || bytes.size() < (digits + 1) / 2)
        return "more or fewer bytes than the digits give";
    // As pairs they stand for themselves.
    return vrk::hex_to_send(vrk::hex_pairs_text(bytes)) == bytes ? "" : "pairs that read as other bytes";
}

} // namespace fuzz
