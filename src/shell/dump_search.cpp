#include "shell/dump_search.h"

#include "form/main_form.h"

#include "image/dump.h"
#include "image/find_bytes.h"
#include "image/hex_digits.h"
#include "platform/text_number.h"
#include "shell/buffer_edit.h"
#include "shell/buffer_view.h"
#include "shell/messages.h"

#include <algorithm>
#include <optional>

namespace vrk {

namespace {

// clang-format off
//                              Chinese                           English
constexpr Text no_address   = { "地址应为十六进制数",              "No hexadecimal address" };
constexpr Text only_shown   = { "只显示 ",                         "Shown are " };
constexpr Text no_bytes     = { "输入 12 AB 或 \"文字\"",          "Type 12 AB or \"text\"" };
constexpr Text nowhere      = { "没有找到",                        "Not found" };
constexpr Text from_the_top = { "已从头继续查找",                  "Gone on from the top" };
// clang-format on

constexpr int address_digits = 5;

Label& told(Shell& shell, BufferKind kind) { return shell.form.labDumpFound[index_of(kind)]; }

std::optional<std::int32_t> typed_address(std::string_view typed)
{
    typed = trimmed(typed);
    const bool is_hex = std::ranges::all_of(typed, [](char c) { return digit_value(c) >= 0; });
    if (typed.empty() || typed.size() > address_digits + 1 || !is_hex)
        return std::nullopt;
    return static_cast<std::int32_t>(hex_number(typed));
}

// The byte at the caret; of a caret that stands at none, the first one in view.
std::int32_t address_at_caret(const TextBox& dump)
{
    if (const auto byte = dump_byte_at(dump.text(), static_cast<std::size_t>(dump.sel_start())))
        return byte->address;
    return dump_line_address(dump.text()).value_or(0);
}

} // namespace

void go_to_address(Shell& shell, BufferKind kind)
{
    const FileBuffer& buffer = buffer_of(shell, kind);
    const AddressRange shown = shown_range(shell, buffer);
    const auto address = typed_address(shell.form.texDumpAddress[index_of(kind)].text());
    Label& answer = told(shell, kind);
    answer.set_caption(address ? "" : in_language(shell, no_address));
    if (!address)
        return;
    if (*address < shown.first || *address > std::min(shown.last, buffer.last())) {
        const std::string range = hex_text(shown.first, address_digits) + " - " + hex_text(shown.last, address_digits);
        return answer.set_caption(std::string{in_language(shell, only_shown)} + range);
    }
    show_stretch(shell, buffer, *address, *address);
    highlight_digit(controls_of(shell, kind).dump);
}

void find_in_dump(Shell& shell, BufferKind kind)
{
    const FileBuffer& buffer = buffer_of(shell, kind);
    Label& answer = told(shell, kind);
    const std::string& typed = shell.form.texDumpFind[index_of(kind)].text();
    const auto what = search_bytes(typed);
    if (!what)
        return answer.set_caption(in_language(shell, no_bytes));
    const TextBox& dump = controls_of(shell, kind).dump;
    Found& last = shell.loader.found[index_of(kind)];
    const std::int32_t caret = address_at_caret(dump);
    const bool goes_on = caret == last.address && typed == last.what && dump.sel_length() > 0;
    const std::int32_t from = goes_on ? caret + 1 : caret;
    const auto found = find_bytes(buffer.data, shown_range(shell, buffer), *what, from);
    if (!found)
        return answer.set_caption(in_language(shell, nowhere));
    answer.set_caption(*found < from ? in_language(shell, from_the_top) : "");
    last = {*found, typed};
    show_stretch(shell, buffer, *found, *found + static_cast<std::int32_t>(what->size()) - 1);
}

} // namespace vrk
