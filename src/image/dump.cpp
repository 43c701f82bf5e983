#include "image/dump.h"

#include "image/hex_digits.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";
constexpr std::string_view column_gap = "   "; // between the address and the bytes
constexpr std::size_t address_digits = 5;

std::int32_t line_of(std::int32_t address) { return std::max(address, 0) / bytes_per_line * bytes_per_line; }

void append_address(std::string& text, std::int32_t address)
{
    for (int shift = 20; shift >= 0; shift -= 4)
        text += digits[static_cast<std::size_t>(address >> shift & 0xF)];
}

void append_byte(std::string& text, std::uint8_t byte)
{
    text += digits[byte >> 4];
    text += digits[byte & 0xF];
    text += ' ';
}

bool is_hex(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return digit_value(c) >= 0; });
}

std::size_t line_start(std::string_view text, std::size_t position)
{
    const std::size_t before = position == 0 ? std::string_view::npos : text.rfind('\n', position - 1);
    return before == std::string_view::npos ? 0 : before + 1;
}

} // namespace

std::string dump_text(std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last, int lines)
{
    std::string text;
    const std::int64_t line_first = line_of(first);
    const std::int64_t end = end_of_dump(static_cast<std::int64_t>(image.size()), first, last, lines);
    if (end <= line_first)
        return text;
    text.reserve(static_cast<std::size_t>((end - line_first) / bytes_per_line + 1) * dump_line_size);
    for (std::int64_t line = line_first; line < end; line += bytes_per_line) {
        append_address(text, static_cast<std::int32_t>(line));
        text += column_gap;
        for (std::int64_t address = line; address < std::min(line + bytes_per_line, end); ++address)
            append_byte(text, image[static_cast<std::size_t>(address)]);
        text += "\r\n";
    }
    return text;
}

std::int64_t end_of_dump(std::int64_t size, std::int32_t first, std::int32_t last, int lines)
{
    const std::int64_t lines_end = line_of(first) + std::int64_t{std::max(lines, 0)} * bytes_per_line;
    return std::min({lines_end, std::int64_t{last} + 1, size});
}

std::optional<Selection> number_selection(const AutoIncrease& record, std::int32_t first, std::int64_t end)
{
    return stretch_selection(record.address + 1 - record.bytes, record.address, first, end);
}

std::optional<Selection> stretch_selection(std::int32_t from, std::int32_t to, std::int32_t first, std::int64_t end)
{
    const std::int32_t line_first = line_of(first);
    const std::int64_t first_seen = std::max(from, line_first);
    const std::int64_t last_seen = std::min<std::int64_t>(to, end - 1);
    if (first_seen > last_seen)
        return std::nullopt;
    const auto place = [line_first](std::int64_t address) {
        const std::int64_t offset = address - line_first;
        return static_cast<int>(
            offset / bytes_per_line * dump_line_size + dump_data_column + offset % bytes_per_line * dump_byte_size);
    };
    return Selection{place(first_seen), place(last_seen) + 2 - place(first_seen)};
}

std::string dump_characters(std::string_view line)
{
    std::string characters;
    for (std::size_t pair = dump_data_column; pair + 1 < line.size() && is_hex(line.substr(pair, 2));
         pair += dump_byte_size) {
        const char character = static_cast<char>(pair_value(line[pair], line[pair + 1]));
        characters += character >= ' ' && character <= '~' ? character : '.';
    }
    return characters;
}

std::optional<std::int32_t> dump_line_address(std::string_view line)
{
    const std::size_t gap = line.find(column_gap);
    if (gap == std::string_view::npos || gap < address_digits)
        return std::nullopt;
    const std::string_view address = line.substr(gap - address_digits, address_digits);
    if (!is_hex(address))
        return std::nullopt;
    return hex_address_5(address);
}

std::optional<DumpByte> dump_byte_at(std::string_view text, std::size_t position)
{
    if (position >= text.size())
        return std::nullopt;
    const std::size_t start = line_start(text, position);
    const std::string_view line = text.substr(start, text.find('\n', position) - start);
    const auto address = dump_line_address(line);
    const std::size_t in_line = position - start;
    if (!address || in_line < dump_data_column || in_line == line.size())
        return std::nullopt;
    const std::size_t column = (in_line - dump_data_column) / dump_byte_size;
    const std::size_t pair = dump_data_column + column * dump_byte_size;
    if (column >= bytes_per_line || in_line - pair > 1 || pair + 2 > line.size() || !is_hex(line.substr(pair, 2)))
        return std::nullopt;
    return DumpByte{*address + static_cast<std::int32_t>(column), start + pair};
}

} // namespace vrk
