#include "platform/text_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace vrk {

namespace {

constexpr std::string_view blanks = " \t\r\n";

int hex_digit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

std::string_view last_characters(std::string_view text, std::size_t count)
{
    text = trimmed(text);
    return text.size() > count ? text.substr(text.size() - count) : text;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

int character_count(std::string_view text)
{
    return static_cast<int>(std::count_if(text.begin(), text.end(), begins_character));
}

std::string_view first_characters(std::string_view text, int n)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (begins_character(text[at]) && n-- <= 0)
            return text.substr(0, at);
    }
    return text;
}

std::string upper_case(std::string_view text)
{
    std::string result{text};
    std::transform(result.begin(), result.end(), result.begin(),
        [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return result;
}

double number_in(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return 0;
    text.remove_prefix(text[first] == '+' ? first + 1 : first);
    // Letters never begin a number here: "inf" and "nan" are words.
    const std::size_t digit = text.find_first_not_of("-.");
    if (digit == std::string_view::npos || text[digit] < '0' || text[digit] > '9')
        return 0;
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::int64_t hex_number(std::string_view text)
{
    std::int64_t value = 0;
    for (const char c : trimmed(text)) {
        const int digit = hex_digit(c);
        if (digit < 0 || value > 0xFFFFFFFFFFFFFF)
            break;
        value = value * 16 + digit;
    }
    return value;
}

std::int32_t hex_address_4(std::string_view text)
{
    return static_cast<std::int32_t>(hex_number(last_characters(text, 4)));
}

std::int32_t hex_address_5(std::string_view text)
{
    return static_cast<std::int32_t>(hex_number(last_characters(text, 5)));
}

std::int32_t signed_hex_number(std::string_view text)
{
    const std::int64_t value = hex_number(text);
    if (value > 0x7FFF && value <= 0xFFFF)
        return static_cast<std::int32_t>(value - 0x10000);
    return static_cast<std::int32_t>(std::min<std::int64_t>(value, 0x7FFFFFFF));
}

std::string hex_text(std::int64_t value)
{
    std::array<char, 20> text{};
    const std::uint64_t bits =
        value < 0 ? static_cast<std::uint64_t>(value) & 0xFFFFFFFFU : static_cast<std::uint64_t>(value);
    const auto end = std::to_chars(text.data(), text.data() + text.size(), bits, 16).ptr;
    return upper_case({text.data(), static_cast<std::size_t>(end - text.data())});
}

std::string hex_text(std::int64_t value, int digits)
{
    const std::string text = std::string(static_cast<std::size_t>(digits), '0') + hex_text(value);
    return text.substr(text.size() - static_cast<std::size_t>(digits));
}

std::string number_text(double value)
{
    std::array<char, 40> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.15g", value);
    return {text.data(), static_cast<std::size_t>(size)};
}

std::string clock_text(const WallTime& time)
{
    std::array<char, 40> text{};
    const int size = std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", time.hour, time.minute, time.second);
    return {text.data(), static_cast<std::size_t>(size)};
}

std::string minutes_text(std::int64_t seconds)
{
    std::array<char, 48> text{};
    const int size = std::snprintf(text.data(), text.size(), "%02lld:%02lld", static_cast<long long>(seconds / 60),
        static_cast<long long>(seconds % 60));
    return {text.data(), static_cast<std::size_t>(size)};
}

double round_half_even(double value)
{
    return std::nearbyint(value); // the default rounding mode is to nearest, halves to even
}

} // namespace vrk
