#include "image/buffer_edit.h"

#include "form/messages.h"
#include "image/buffer_view.h"
#include "image/buffers.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::string_view column_gap = "   "; // between the address and the bytes
constexpr std::size_t address_digits = 5;
constexpr int scrolling_lines_at_top = 3;

constexpr Text edit_question = {"Update the buffer? / 修改缓冲区内容吗?", "Update the buffer ?"};
constexpr Text no_file = {"    Please open code file./请打开文件。    ", " Please open code file."};

bool is_hex_digit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool is_hex(std::string_view text) { return !text.empty() && std::all_of(text.begin(), text.end(), is_hex_digit); }

// Positions count characters, and only in plain text are those the bytes.
bool is_plain(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0x80) != 0; });
}

std::size_t line_start(std::string_view text, std::size_t position)
{
    const std::size_t before = position == 0 ? std::string_view::npos : text.rfind('\n', position - 1);
    return before == std::string_view::npos ? 0 : before + 1;
}

std::optional<std::size_t> first_digit_in(std::string_view text, std::size_t from, std::size_t end)
{
    for (std::size_t position = from; position < std::min(end, text.size()); ++position) {
        if (dump_byte_at(text, position))
            return position;
    }
    return std::nullopt;
}

void highlight(TextBox& box, std::size_t position) { box.select(static_cast<int>(position), 1); }

void highlight_next(TextBox& box)
{
    const auto from = static_cast<std::size_t>(box.sel_start()) + 1;
    if (const auto next = first_digit_in(box.text(), from, from + dump_line_size))
        highlight(box, *next);
}

void highlight_previous(TextBox& box)
{
    const auto here = static_cast<std::size_t>(box.sel_start());
    for (std::size_t back = 1; back <= std::min<std::size_t>(here, dump_line_size); ++back) {
        if (dump_byte_at(box.text(), here - back))
            return highlight(box, here - back);
    }
}

// Draws the view elsewhere, or leaves it where the bar has come to its end. The caret keeps its place on the screen,
// or its column where the lines end above it.
void scroll_by(Shell& shell, const BufferControls& controls, int lines)
{
    ScrollBar& bar = shell.form.vscFile[controls.scroll_index];
    const int caret = controls.dump.sel_start();
    bar.set_value(bar.value() + lines);
    vscFile_Change(shell, controls.scroll_index);
    const int last_line = (static_cast<int>(controls.dump.text().size()) - 1) / dump_line_size;
    controls.dump.select(std::min(caret, last_line * dump_line_size + caret % dump_line_size), 0);
}

void move_up(Shell& shell, const BufferControls& controls)
{
    const ScrollBar& bar = shell.form.vscFile[controls.scroll_index];
    const int caret = controls.dump.sel_start();
    if (caret / dump_line_size < scrolling_lines_at_top && bar.value() > bar.min())
        return scroll_by(shell, controls, -bar.small_step);
    if (caret >= dump_line_size)
        controls.dump.select(caret - dump_line_size, 0);
}

void move_down(Shell& shell, const BufferControls& controls)
{
    const ScrollBar& bar = shell.form.vscFile[controls.scroll_index];
    const int caret = controls.dump.sel_start();
    const auto size = static_cast<int>(controls.dump.text().size());
    if (caret / dump_line_size >= (size - 1) / dump_line_size)
        return scroll_by(shell, controls, bar.small_step);
    controls.dump.select(caret + dump_line_size, 0);
}

bool may_edit(Shell& shell)
{
    if (shell.edit_confirmed)
        return true;
    if (!ask_yes_no(shell, in_language(shell, edit_question)))
        return false;
    if (!shell.file_loaded) {
        show_box(shell, in_language(shell, no_file));
        return false;
    }
    shell.edit_confirmed = true;
    return true;
}

// The byte of which exactly one digit is highlighted.
std::optional<DumpByte> highlighted_byte(const TextBox& box)
{
    if (box.sel_length() != 1 || !is_plain(box.text()))
        return std::nullopt;
    return dump_byte_at(box.text(), static_cast<std::size_t>(box.sel_start()));
}

} // namespace

std::optional<std::int32_t> dump_line_address(std::string_view line)
{
    const std::size_t gap = line.find(column_gap);
    if (gap == std::string_view::npos || gap < address_digits)
        return std::nullopt;
    const std::string_view digits = line.substr(gap - address_digits, address_digits);
    if (!is_hex(digits))
        return std::nullopt;
    return hex_address_5(digits);
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
    const std::size_t digits = dump_data_column + column * dump_byte_size;
    if (column >= bytes_per_line || in_line - digits > 1 || digits + 2 > line.size() || !is_hex(line.substr(digits, 2)))
        return std::nullopt;
    return DumpByte{*address + static_cast<std::int32_t>(column), start + digits};
}

void highlight_digit(TextBox& box)
{
    const auto caret = static_cast<std::size_t>(box.sel_start());
    const auto digit = is_plain(box.text()) ? first_digit_in(box.text(), caret, caret + dump_line_size) : std::nullopt;
    if (digit)
        highlight(box, *digit);
    else
        box.select(box.sel_start(), 0);
}

void press_edit_key(Shell& shell, FileBuffer& buffer, std::string_view key)
{
    if (key.size() == 1)
        key_press(shell, buffer, key[0]);
    else
        key_down(shell, buffer, key);
}

void key_down(Shell& shell, FileBuffer& buffer, std::string_view key)
{
    const BufferControls controls = controls_of(shell, buffer);
    const ScrollBar& bar = shell.form.vscFile[controls.scroll_index];
    if (key == "PageUp")
        scroll_by(shell, controls, -bar.large_step);
    else if (key == "PageDown")
        scroll_by(shell, controls, bar.large_step);
    else if (key == "Up")
        move_up(shell, controls);
    else if (key == "Down")
        move_down(shell, controls);
    else if (key == "Left")
        return highlight_previous(controls.dump);
    else if (key == "Right")
        return highlight_next(controls.dump);
    else
        return;
    highlight_digit(controls.dump);
}

void key_press(Shell& shell, FileBuffer& buffer, char key)
{
    const BufferControls controls = controls_of(shell, buffer);
    if (!is_hex_digit(key) || !highlighted_byte(controls.dump) || !shell.job.may_change() || !may_edit(shell))
        return;
    const auto byte = highlighted_byte(controls.dump); // the question may have waited while the view was drawn anew
    if (!byte || byte->address > buffer.last())
        return;
    const int caret = controls.dump.sel_start();
    std::string text = controls.dump.text();
    text[static_cast<std::size_t>(caret)] = upper_case({&key, 1})[0];
    buffer.data[static_cast<std::size_t>(byte->address)] =
        static_cast<std::uint8_t>(hex_number(std::string_view{text}.substr(byte->digits, 2)));
    controls.dump.set_text(text);
    controls.dump_twin.set_text(text);
    controls.dump.select(caret + 1, 0);
    shell.form.LabEdit_Clew.set_visible(true);
    shell.Timer11.start();
    highlight_digit(controls.dump);
}

} // namespace vrk
