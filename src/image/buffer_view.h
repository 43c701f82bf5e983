// The buffers as hexadecimal dumps. Only the lines that fit are ever drawn; view_lines of a buffer says how many.
#pragma once

#include "form/shell.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vrk {

constexpr std::int32_t bytes_per_line = 16;

// A whole line with its end: six digits of the address and three blanks, two digits and a blank a byte, CR LF.
constexpr int dump_data_column = 6 + 3;
constexpr int dump_byte_size = 3;
constexpr int dump_line_size = dump_data_column + bytes_per_line * dump_byte_size + 2;

// Lines of 16 bytes, from the line that holds `first` on, as many as `lines`; the last byte drawn is `last`, or the
// last one of the image. Nothing where `first` lies above either.
std::string dump_text(std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last, int lines);

// Where a record's number stands in the text of a dump that begins with the line of `first` and ends before address
// `end`: as much of it as is in view, from its first digit to its last one. Nothing: it is out of view.
struct Selection {
    int start;
    int length;
};
std::optional<Selection> number_selection(const AutoIncrease& record, std::int32_t first, std::int64_t end);

// Draws the buffer from first_address on into its box and the box's twin. A valid number is selected, so that it stands
// out.
void render(Shell& shell, const FileBuffer& buffer, std::int32_t first_address, std::int32_t last_address);

// Index 0 is the code buffer, 1 the EEPROM buffer. A bar's value is the first line shown, from view_low on.
void vscFile_Change(Shell& shell, int index);

// After the bytes of a buffer have changed: the loaded span takes in the last load and a valid number, the scroll bar
// follows, the view is drawn anew.
void update_view(Shell& shell, FileBuffer& buffer);

} // namespace vrk
