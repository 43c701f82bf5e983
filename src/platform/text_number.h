// Text and numbers: the rules by which fields are read and values are shown.
#pragma once

#include "platform/event_loop.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vrk {

std::string_view trimmed(std::string_view text); // blanks, tabs and line ends off both ends
std::string upper_case(std::string_view text); // ASCII letters only

// Texts are UTF-8, and people count characters.
constexpr bool begins_character(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }
int character_count(std::string_view text);
std::string_view first_characters(std::string_view text, int n); // all of them where there are no more

// The number that a text begins with, blanks in front skipped; 0 where there is none. Decimal point, exponent allowed.
double number_in(std::string_view text);

// A hexadecimal field read as a number. Digits end at the first other character; an empty text gives 0.
std::int64_t hex_number(std::string_view text);
// Four-digit and five-digit address fields: the last four (five) characters of the trimmed text, so that 8000 to FFFF
// stay positive. 0..0xFFFF, 0..0xFFFFF.
std::int32_t hex_address_4(std::string_view text);
std::int32_t hex_address_5(std::string_view text);
// A start address: four digits or fewer are read as a signed 16-bit number, so 8000 gives -32768; longer ones plainly.
std::int32_t signed_hex_number(std::string_view text);

// Upper-case hexadecimal without padding; negative values as 32 bits.
std::string hex_text(std::int64_t value);
// Exactly `digits` characters: zeros in front, or the leading digits cut off.
std::string hex_text(std::int64_t value, int digits);

// Up to 15 significant digits, no trailing zeros, a leading zero below one: 11.0592, 0.5, 12.
std::string number_text(double value);

std::string clock_text(const WallTime& time); // "hh:mm:ss"
std::string minutes_text(std::int64_t seconds); // "mm:ss"; minutes may grow past 99

// To nearest, halves to the even neighbour: the rounding of every figure of the link.
double round_half_even(double value);

} // namespace vrk
