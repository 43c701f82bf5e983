#include "shell/buffer_edit.h"

#include "form/main_form.h"

#include "image/dump.h"
#include "image/hex_digits.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/messages.h"

#include <algorithm>
#include <optional>

namespace vrk {

namespace {

constexpr int scrolling_lines_at_top = 3;

constexpr Text edit_question = {"Update the buffer? / 修改缓冲区内容吗?", "Update the buffer ?"};
constexpr Text no_file = {"    Please open code file./请打开文件。    ", " Please open code file."};

// Positions count characters, and only in plain text are those the bytes.
bool is_plain(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0x80) != 0; });
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
void scroll_by(Shell& shell, BufferKind kind, int lines)
{
    const BufferControls controls = controls_of(shell, kind);
    ScrollBar& bar = controls.bar;
    const int caret = controls.dump.sel_start();
    bar.set_value(bar.value() + lines);
    vscFile_Change(shell, index_of(kind));
    const int last_line = (static_cast<int>(controls.dump.text().size()) - 1) / dump_line_size;
    controls.dump.select(std::min(caret, last_line * dump_line_size + caret % dump_line_size), 0);
}

void move_up(Shell& shell, BufferKind kind)
{
    const BufferControls controls = controls_of(shell, kind);
    const ScrollBar& bar = controls.bar;
    const int caret = controls.dump.sel_start();
    if (caret / dump_line_size < scrolling_lines_at_top && bar.value() > bar.min())
        return scroll_by(shell, kind, -bar.small_step);
    if (caret >= dump_line_size)
        controls.dump.select(caret - dump_line_size, 0);
}

void move_down(Shell& shell, BufferKind kind)
{
    const BufferControls controls = controls_of(shell, kind);
    const ScrollBar& bar = controls.bar;
    const int caret = controls.dump.sel_start();
    const auto size = static_cast<int>(controls.dump.text().size());
    if (caret / dump_line_size >= (size - 1) / dump_line_size)
        return scroll_by(shell, kind, bar.small_step);
    controls.dump.select(caret + dump_line_size, 0);
}

void move_to_begin_of_line(TextBox& box)
{
    box.select(box.sel_start() / dump_line_size * dump_line_size + dump_data_column, 0);
}

// Its last digit is highlighted.
void move_to_end_of_line(TextBox& box)
{
    const int next_line = (box.sel_start() / dump_line_size + 1) * dump_line_size;
    box.select(std::min(next_line, static_cast<int>(box.text().size())), 0);
    highlight_previous(box);
}

void move_to_begin_of_buffer(Shell& shell, BufferKind kind)
{
    const BufferControls controls = controls_of(shell, kind);
    scroll_by(shell, kind, controls.bar.min() - controls.bar.value());
    controls.dump.select(dump_data_column, 0);
}

void move_to_end_of_buffer(Shell& shell, BufferKind kind)
{
    const BufferControls controls = controls_of(shell, kind);
    scroll_by(shell, kind, controls.bar.max() - controls.bar.value());
    controls.dump.select(std::max(static_cast<int>(controls.dump.text().size()) - 1, 0), 0);
    move_to_end_of_line(controls.dump);
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

void put_digit(Shell& shell, FileBuffer& buffer, const DigitEdit& edit, std::uint8_t value)
{
    buffer.data[static_cast<std::size_t>(edit.address)] = value;
    vscFile_Change(shell, index_of(buffer.kind));
    show_stretch(shell, buffer, edit.address, edit.address);
    TextBox& dump = controls_of(shell, buffer.kind).dump;
    highlight(dump, static_cast<std::size_t>(dump.sel_start()) + (edit.low_digit ? 1 : 0));
}

enum class Step { back, again };

void take_step(Shell& shell, FileBuffer& buffer, Step step)
{
    EditHistory& history = shell.loader.history[index_of(buffer.kind)];
    const bool back = step == Step::back;
    std::vector<DigitEdit>& from = back ? history.done : history.undone;
    if (from.empty() || !shell.job_may_change())
        return;
    const DigitEdit edit = from.back();
    from.pop_back();
    (back ? history.undone : history.done).push_back(edit);
    shell.loader.edited[index_of(buffer.kind)] = !back || edit.was_edited;
    put_digit(shell, buffer, edit, back ? edit.before : edit.after);
}

} // namespace

void highlight_digit(TextBox& box)
{
    const auto caret = static_cast<std::size_t>(box.sel_start());
    const auto digit = is_plain(box.text()) ? first_digit_in(box.text(), caret, caret + dump_line_size) : std::nullopt;
    if (digit)
        highlight(box, *digit);
    else
        box.select(box.sel_start(), 0);
}

bool changes_bytes(std::string_view key) { return key.size() == 1 || key == undo_key || key == redo_key; }

void press_edit_key(Shell& shell, FileBuffer& buffer, std::string_view key)
{
    if (key.size() == 1)
        key_press(shell, buffer, key[0]);
    else if (key == undo_key)
        take_step(shell, buffer, Step::back);
    else if (key == redo_key)
        take_step(shell, buffer, Step::again);
    else
        key_down(shell, buffer, key);
}

void key_down(Shell& shell, FileBuffer& buffer, std::string_view key)
{
    const BufferKind kind = buffer.kind;
    const BufferControls controls = controls_of(shell, kind);
    const ScrollBar& bar = controls.bar;
    if (key == "PageUp")
        scroll_by(shell, kind, -bar.large_step);
    else if (key == "PageDown")
        scroll_by(shell, kind, bar.large_step);
    else if (key == "Up")
        move_up(shell, kind);
    else if (key == "Down")
        move_down(shell, kind);
    else if (key == "Left")
        return highlight_previous(controls.dump);
    else if (key == "Right")
        return highlight_next(controls.dump);
    else if (key == "End")
        return move_to_end_of_line(controls.dump);
    else if (key == "CtrlEnd")
        return move_to_end_of_buffer(shell, kind);
    else if (key == "Home")
        move_to_begin_of_line(controls.dump);
    else if (key == "CtrlHome")
        move_to_begin_of_buffer(shell, kind);
    else
        return;
    highlight_digit(controls.dump);
}

void key_press(Shell& shell, FileBuffer& buffer, char key)
{
    const BufferControls controls = controls_of(shell, buffer.kind);
    if (digit_value(key) < 0 || !highlighted_byte(controls.dump) || !shell.job_may_change() || !may_edit(shell))
        return;
    // The question may have waited while the view was drawn anew, or a download begun.
    const auto byte = highlighted_byte(controls.dump);
    if (!byte || !shell.job_may_change() || byte->address > buffer.last())
        return;
    const int caret = controls.dump.sel_start();
    std::string text = controls.dump.text();
    text[static_cast<std::size_t>(caret)] = upper_case({&key, 1})[0];
    std::uint8_t& value = buffer.data[static_cast<std::size_t>(byte->address)];
    DigitEdit edit{byte->address, value, value, static_cast<std::size_t>(caret) != byte->digits,
        shell.loader.edited[index_of(buffer.kind)]};
    value = edit.after = static_cast<std::uint8_t>(hex_number(std::string_view{text}.substr(byte->digits, 2)));
    shell.loader.history[index_of(buffer.kind)].done.push_back(edit);
    shell.loader.history[index_of(buffer.kind)].undone.clear();
    shell.loader.edited[index_of(buffer.kind)] = true;
    show_edited_sum(shell, buffer);
    controls.dump.set_text(text);
    controls.dump_twin.set_text(text);
    controls.dump.select(caret + 1, 0);
    shell.form.LabEdit_Clew.set_visible(true);
    shell.Timer11.start();
    highlight_digit(controls.dump);
}

} // namespace vrk
