// The text of a hexadecimal dump: made from the bytes, and read back where a digit of it is edited.
#pragma once

#include "image/auto_increase.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vrk {

constexpr std::int32_t bytes_per_line = 16;

// A whole line with its end: six digits of the address and three blanks, two digits and a blank a byte, CR LF.
constexpr int dump_data_column = 6 + 3;
constexpr int dump_byte_size = 3;
constexpr int dump_line_size = dump_data_column + bytes_per_line * dump_byte_size + 2;

// Lines of 16 bytes, from the line that holds `first` on, as many as `lines`; the last byte drawn is `last`, or the
// last one of the image. Nothing where `first` lies above either.
std::string dump_text(std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last, int lines);
// Behind the last byte of such a dump; not above the first one where there is nothing to draw. `size` is the image's.
std::int64_t end_of_dump(std::int64_t size, std::int32_t first, std::int32_t last, int lines);

// Where a record's number stands in the text of a dump that begins with the line of `first` and ends before address
// `end`: as much of it as is in view, from its first digit to its last one. Nothing: it is out of view.
struct Selection {
    int start;
    int length;
};
std::optional<Selection> number_selection(const AutoIncrease& record, std::int32_t first, std::int64_t end);
// The same of any bytes, from `from` to `to`.
std::optional<Selection> stretch_selection(std::int32_t from, std::int32_t to, std::int32_t first, std::int64_t end);

// The byte that has one of its two digits at a position of a dump. Nothing: another thing stands there.
struct DumpByte {
    std::int32_t address;
    std::size_t digits; // position of the first one
};
std::optional<DumpByte> dump_byte_at(std::string_view text, std::size_t position);

// The bytes of a line, with its end or without, as characters: a full stop for those that are none of plain text.
std::string dump_characters(std::string_view line);

// The address that a line of a dump begins with: the five digits in front of its first three blanks.
std::optional<std::int32_t> dump_line_address(std::string_view line);

} // namespace vrk
