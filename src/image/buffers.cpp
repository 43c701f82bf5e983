#include "image/buffers.h"

#include "form/messages.h"
#include "image/buffer_view.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::int32_t cleared_last = 1023; // an empty buffer counts as 1 KB
constexpr std::int32_t cleared_view_last = 991; // of which the view is given 62 lines
constexpr int cleared_scroll_max = 64;
constexpr std::int32_t no_low_yet = 0x10FFFF; // above every address, so that the first load lowers it

// clang-format off
//                                     Chinese                                                English
constexpr Text code_start_refused  = { "缓冲区起始地址超出有效空间。",                            "Start Buffer Address exceeded the valid scope. \n" };
constexpr Text data_start_refused  = { "Start Buffer Address exceeded the valid scope. \n"
                                       "        缓冲区起始地址超出有效空间。",                    "Start Buffer Address exceeded the valid scope. \n" };
constexpr Text code_length_label   = { "程序文件有效长度：",                                     "Effective length of code file: " };
constexpr Text data_length_label   = { "数据文件有效长度：",                                     "Effective length of data file: " };
// clang-format on

std::string length_text(const Shell& shell, const Text& label, const FileBuffer& buffer)
{
    std::string text{in_language(shell, label)};
    if (buffer.loaded)
        text += std::to_string(std::int64_t{buffer.high} + 1);
    return text;
}

} // namespace

BufferKind kind_of(const FileBuffer& buffer)
{
    return upper_case(buffer.name) == "AP_FILE" ? BufferKind::code : BufferKind::data;
}

AutoIncrease& increase_of(Shell& shell, const FileBuffer& buffer)
{
    return kind_of(buffer) == BufferKind::code ? shell.code_increase : shell.data_increase;
}

BufferControls controls_of(Shell& shell, const FileBuffer& buffer)
{
    if (kind_of(buffer) == BufferKind::code) {
        return {shell.form.txtAP_FileStart, shell.form.cheClearAP_Buffer, shell.form.txtFileCheckSum, shell.form.Frame7,
            "Program File: ", shell.form.txtBuffer2, shell.form.txtBuffer, 0, shell.form.Label7[1]};
    }
    return {shell.form.txtDataFileStart, shell.form.cheClearDataBuffer, shell.form.txtDataFileCheckSum, shell.form.frmDataFlash,
        "Data File: ", shell.form.tetDataFlash2, shell.form.txtDataFlash1, 1, shell.form.Label7[2]};
}

void clear_buffer(Shell& shell, std::uint8_t fill, FileBuffer& buffer)
{
    fill_buffer(fill, buffer);
    ++buffer.changes;
    buffer.low = 0;
    buffer.high = cleared_last;
    buffer.first = 0;
    buffer.view_low = 0;
    buffer.view_high = cleared_last;
    buffer.checksum = 0;
    buffer.loaded = false;
    if (kind_of(buffer) == BufferKind::code) {
        shell.file_loaded = false;
        shell.loader.code_is_project = false;
    }

    const BufferControls controls = controls_of(shell, buffer);
    shell.form.vscFile[controls.scroll_index].set_range(0, cleared_scroll_max);
    shell.form.vscFile[controls.scroll_index].set_value(0);
    render(shell, buffer, 0, cleared_view_last);
    controls.path_frame.set_caption(controls.path_caption);
    controls.checksum.set_text("");
    show_effective_lengths(shell);
}

void fill_buffer(std::uint8_t fill, FileBuffer& buffer) { std::fill(buffer.data.begin(), buffer.data.end(), fill); }

void read_load_parameters(Shell& shell, FileBuffer& buffer)
{
    const BufferControls controls = controls_of(shell, buffer);
    buffer.start = signed_hex_number(controls.start.text());
    buffer.clear_first = controls.clear_first.value();
}

std::int32_t load_base(std::int32_t start) { return start < 0 ? start + 0x10000 : start; }

bool start_address_fits(Shell& shell, const FileBuffer& buffer)
{
    const McuRecord& model = shell.selected;
    const bool is_code = kind_of(buffer) == BufferKind::code;
    const std::int32_t last = is_code ? model.eeprom_last : model.eeprom_last - model.eeprom_first;
    if (buffer.start <= last)
        return true;
    show_box(shell, in_language(shell, is_code ? code_start_refused : data_start_refused));
    return false;
}

void merge_or_replace(Shell& shell, FileBuffer& buffer)
{
    ++buffer.changes;
    if (shell.file_loaded && !buffer.clear_first) {
        buffer.view_low = std::min(buffer.view_low, buffer.low);
        buffer.view_high = std::max(buffer.view_high, buffer.high);
        return;
    }
    fill_buffer(0, buffer);
    shell.file_loaded = false;
    buffer.view_low = no_low_yet;
    buffer.low = no_low_yet;
    buffer.view_high = 0;
    buffer.high = 0;
}

void show_effective_lengths(Shell& shell)
{
    shell.form.Label7[1].set_caption(length_text(shell, code_length_label, shell.code_buffer));
    shell.form.Label7[2].set_caption(length_text(shell, data_length_label, shell.data_buffer));
}

std::string checksum_text(std::int32_t checksum) { return hex_text(checksum, 7) + "H       "; }

} // namespace vrk
