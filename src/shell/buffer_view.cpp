#include "shell/buffer_view.h"

#include "form/main_form.h"

#include "image/dump.h"
#include "image/load.h"
#include "shell/messages.h"
#include "shell/serial_numbers.h"

#include "platform/text_number.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>
#include <string>

namespace vrk {

namespace {

constexpr std::int32_t cleared_view_last = 991; // of an empty kilobyte the view is given 62 lines
constexpr int cleared_scroll_max = 64;
constexpr int lines_left_at_bottom = 3; // the lowest stand of the bar still shows the last lines

// clang-format off
//                                   Chinese                English
constexpr Text code_length_label = { "程序文件有效长度：", "Effective length of code file: " };
constexpr Text data_length_label = { "数据文件有效长度：", "Effective length of data file: " };
constexpr Text edited_sum_label  = { "修改后: ",          "Edited: " };
// clang-format on

std::string length_text(const Shell& shell, const Text& label, const FileBuffer& buffer)
{
    std::string text{in_language(shell, label)};
    if (buffer.loaded)
        text += std::to_string(std::int64_t{buffer.high} + 1);
    return text;
}

} // namespace

FileBuffer& buffer_of(Shell& shell, BufferKind kind)
{
    return kind == BufferKind::code ? shell.code_buffer : shell.data_buffer;
}

AutoIncrease& increase_of(Shell& shell, BufferKind kind)
{
    return kind == BufferKind::code ? shell.code_increase : shell.data_increase;
}

BufferControls controls_of(Shell& shell, BufferKind kind)
{
    MainForm& form = shell.form;
    if (kind == BufferKind::code) {
        return {form.txtAP_FileStart, form.cheClearAP_Buffer, form.txtFileCheckSum, form.Frame7,
            "Program File: ", form.txtBuffer2, form.txtBuffer, form.vscFile[0], form.Label7[1],
            form.labEditedCheckSum[0]};
    }
    return {form.txtDataFileStart, form.cheClearDataBuffer, form.txtDataFileCheckSum, form.frmDataFlash,
        "Data File: ", form.tetDataFlash2, form.txtDataFlash1, form.vscFile[1], form.Label7[2],
        form.labEditedCheckSum[1]};
}

void clear_buffer(Shell& shell, std::uint8_t fill, FileBuffer& buffer)
{
    empty_buffer(fill, buffer);
    ++shell.loader.acts[index_of(buffer.kind)];
    forget_edits(shell, buffer.kind);
    if (buffer.kind == BufferKind::code) {
        shell.file_loaded = false;
        shell.loader.code_is_project = false;
    }

    const BufferControls controls = controls_of(shell, buffer.kind);
    controls.bar.set_range(0, cleared_scroll_max);
    controls.bar.set_value(0);
    render(shell, buffer, 0, cleared_view_last);
    controls.path_frame.set_caption(controls.path_caption);
    controls.checksum.set_text("");
    show_effective_lengths(shell);
}

void forget_edits(Shell& shell, BufferKind kind)
{
    shell.loader.edited[index_of(kind)] = false;
    forget_history(shell, kind);
}

void forget_history(Shell& shell, BufferKind kind) { shell.loader.history[index_of(kind)] = {}; }

void show_edited_sum(Shell& shell, const FileBuffer& buffer)
{
    Label& label = controls_of(shell, buffer.kind).edited_sum;
    if (!shell.loader.edited[index_of(buffer.kind)])
        return label.set_caption("");
    const auto first = static_cast<std::size_t>(std::max(buffer.view_low, 0));
    const auto end = static_cast<std::size_t>(std::clamp(buffer.view_high, -1, buffer.last()) + 1);
    const std::span<const std::uint8_t> bytes{buffer.data.data() + std::min(first, end), end - std::min(first, end)};
    const std::string sum = checksum_text(std::accumulate(bytes.begin(), bytes.end(), 0));
    label.set_caption(std::string{in_language(shell, edited_sum_label)} + std::string{trimmed(sum)} + "*");
}

void show_effective_lengths(Shell& shell)
{
    controls_of(shell, BufferKind::code).length.set_caption(length_text(shell, code_length_label, shell.code_buffer));
    controls_of(shell, BufferKind::data).length.set_caption(length_text(shell, data_length_label, shell.data_buffer));
}

void render(Shell& shell, const FileBuffer& buffer, std::int32_t first_address, std::int32_t last_address)
{
    read_records(shell);
    const BufferControls controls = controls_of(shell, buffer.kind);
    const int lines = shell.view_lines[index_of(buffer.kind)];
    const std::string text = dump_text(buffer.data, first_address, last_address, lines);
    controls.dump.set_text(text);
    controls.dump_twin.set_text(text);

    const AutoIncrease& record = increase_of(shell, buffer.kind);
    const auto size = static_cast<std::int64_t>(buffer.data.size());
    const auto number = number_selection(record, first_address, end_of_dump(size, first_address, last_address, lines));
    if (record.valid && number)
        controls.dump.select(number->start, number->length);
    show_edited_sum(shell, buffer);
}

AddressRange shown_range(Shell& shell, const FileBuffer& buffer)
{
    const AutoIncrease& record = increase_of(shell, buffer.kind);
    if (!record.valid)
        return {buffer.view_low, buffer.view_high};
    return {std::min(buffer.view_low, std::max(record.address - record.bytes, 0)),
        std::max(buffer.view_high, record.address)};
}

namespace {

void set_scroll_range(Shell& shell, const FileBuffer& buffer)
{
    const AddressRange shown = shown_range(shell, buffer);
    controls_of(shell, buffer.kind)
        .bar.set_range(0, (shown.last - shown.first) / bytes_per_line - lines_left_at_bottom);
}

} // namespace

void vscFile_Change(Shell& shell, int index)
{
    const FileBuffer& buffer = index == 0 ? shell.code_buffer : shell.data_buffer;
    const AddressRange shown = shown_range(shell, buffer);
    const std::int32_t first_line = shown.first / bytes_per_line + shell.form.vscFile[index].value();
    render(shell, buffer, first_line * bytes_per_line, shown.last);
}

void update_view(Shell& shell, const FileBuffer& buffer)
{
    set_scroll_range(shell, buffer);
    vscFile_Change(shell, index_of(buffer.kind));
}

void show_from(Shell& shell, const FileBuffer& buffer, std::int32_t address)
{
    set_scroll_range(shell, buffer);
    controls_of(shell, buffer.kind).bar.set_value((address - shown_range(shell, buffer).first) / bytes_per_line);
    vscFile_Change(shell, index_of(buffer.kind));
}

void show_stretch(Shell& shell, const FileBuffer& buffer, std::int32_t first, std::int32_t last)
{
    TextBox& dump = controls_of(shell, buffer.kind).dump;
    const auto place = [&]() -> std::optional<Selection> {
        const auto top = dump_line_address(dump.text());
        if (!top || first < *top)
            return std::nullopt;
        const auto lines = static_cast<std::int64_t>(dump.text().size() + dump_line_size - 1) / dump_line_size;
        return stretch_selection(first, last, *top, *top + lines * bytes_per_line);
    };
    if (!place())
        show_from(shell, buffer, first);
    if (const auto found = place())
        dump.select(found->start, found->length);
}

} // namespace vrk
