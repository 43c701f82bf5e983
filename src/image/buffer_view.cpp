#include "image/buffer_view.h"

#include "image/buffers.h"

#include <algorithm>
#include <string_view>

namespace vrk {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";
constexpr int lines_left_at_bottom = 3; // the lowest stand of the bar still shows the last lines

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
    const std::int64_t line_first = std::max(first, 0) / bytes_per_line * bytes_per_line;
    const std::int64_t end = std::min({line_first + std::int64_t{std::max(lines, 0)} * bytes_per_line,
        std::int64_t{last} + 1, static_cast<std::int64_t>(image.size())});
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

void render(MainForm& form, const FileBuffer& buffer, std::int32_t first_address, std::int32_t last_address)
{
    const BufferControls controls = controls_of(form, buffer);
    const std::string text = dump_text(buffer.data, first_address, last_address, buffer.view_lines);
    controls.dump.set_text(text);
    controls.dump_twin.set_text(text);
}

void vscFile_Change(MainForm& form, int index)
{
    const FileBuffer& buffer = index == 0 ? form.code_buffer : form.data_buffer;
    const std::int32_t first_line = buffer.view_low / bytes_per_line + form.vscFile[index].value();
    render(form, buffer, first_line * bytes_per_line, buffer.view_high);
}

void update_view(MainForm& form, FileBuffer& buffer)
{
    buffer.view_low = std::min(buffer.view_low, buffer.low);
    buffer.view_high = std::max(buffer.view_high, buffer.high);
    const int index = controls_of(form, buffer).scroll_index;
    form.vscFile[index].set_range(0, (buffer.view_high - buffer.view_low) / bytes_per_line - lines_left_at_bottom);
    vscFile_Change(form, index);
}

} // namespace vrk
