#include "image/buffer_view.h"

#include "image/auto_increase.h"
#include "image/buffers.h"

#include <algorithm>
#include <string_view>

namespace vrk {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";
constexpr int lines_left_at_bottom = 3; // the lowest stand of the bar still shows the last lines

std::int32_t line_of(std::int32_t address) { return std::max(address, 0) / bytes_per_line * bytes_per_line; }

// Behind the last byte of the lines that are drawn; not above the first one where there is nothing to draw.
std::int64_t end_of_dump(std::int64_t size, std::int32_t first, std::int32_t last, int lines)
{
    const std::int64_t lines_end = line_of(first) + std::int64_t{std::max(lines, 0)} * bytes_per_line;
    return std::min({lines_end, std::int64_t{last} + 1, size});
}

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
        text += "   ";
        for (std::int64_t address = line; address < std::min(line + bytes_per_line, end); ++address)
            append_byte(text, image[static_cast<std::size_t>(address)]);
        text += "\r\n";
    }
    return text;
}

std::optional<Selection> number_selection(const AutoIncrease& record, std::int32_t first, std::int64_t end)
{
    const std::int32_t line_first = line_of(first);
    const std::int64_t number_first =
        std::max<std::int64_t>(std::int64_t{record.address} + 1 - record.bytes, line_first);
    const std::int64_t number_last = std::min<std::int64_t>(record.address, end - 1);
    if (number_first > number_last)
        return std::nullopt;
    const auto place = [line_first](std::int64_t address) {
        const std::int64_t offset = address - line_first;
        return static_cast<int>(
            offset / bytes_per_line * dump_line_size + dump_data_column + offset % bytes_per_line * dump_byte_size);
    };
    return Selection{place(number_first), place(number_last) + 2 - place(number_first)};
}

void render(Shell& shell, const FileBuffer& buffer, std::int32_t first_address, std::int32_t last_address)
{
    read_records(shell);
    const BufferControls controls = controls_of(shell, buffer);
    const std::string text = dump_text(buffer.data, first_address, last_address, buffer.view_lines);
    controls.dump.set_text(text);
    controls.dump_twin.set_text(text);

    const AutoIncrease& record = increase_of(shell, buffer);
    const auto size = static_cast<std::int64_t>(buffer.data.size());
    const auto number =
        number_selection(record, first_address, end_of_dump(size, first_address, last_address, buffer.view_lines));
    if (record.valid && number)
        controls.dump.select(number->start, number->length);
}

void vscFile_Change(Shell& shell, int index)
{
    const FileBuffer& buffer = index == 0 ? shell.code_buffer : shell.data_buffer;
    const std::int32_t first_line = buffer.view_low / bytes_per_line + shell.form.vscFile[index].value();
    render(shell, buffer, first_line * bytes_per_line, buffer.view_high);
}

void update_view(Shell& shell, FileBuffer& buffer)
{
    buffer.view_low = std::min(buffer.view_low, buffer.low);
    buffer.view_high = std::max(buffer.view_high, buffer.high);
    const AutoIncrease& record = increase_of(shell, buffer);
    if (record.valid) {
        buffer.view_low = std::min(buffer.view_low, std::max(record.address - record.bytes, 0));
        buffer.view_high = std::max(buffer.view_high, record.address);
    }
    const int index = controls_of(shell, buffer).scroll_index;
    shell.form.vscFile[index].set_range(0, (buffer.view_high - buffer.view_low) / bytes_per_line - lines_left_at_bottom);
    vscFile_Change(shell, index);
}

} // namespace vrk
