#include "shell/serial_numbers.h"

#include "form/main_form.h"

#include "image/dump.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/kept_settings.h"
#include "shell/line_books.h"
#include "shell/messages.h"
#include "shell/option_panel.h"

#include <algorithm>
#include <string_view>

namespace vrk {

namespace {

constexpr int lines_above_number = 3; // it does not stand at the upper edge of the view

constexpr Text project_number_off = {"工程文件的自动增量未能启用，未下载。",
    "The automatic increment of the project is not in use. Nothing was programmed."};

enum Field { address_field, bytes_field, next_field, increment_field };

// clang-format off
struct SettingRow { const char* key; const char* otherwise; Field field; };
constexpr SettingRow setting_rows[] = {
//    key           default  field
    { "address",    "FFFF",  address_field },
    { "Length",     "8",     bytes_field },
    { "next_value", "0000",  next_field },
    { "Increase",   "1",     increment_field },
};
// clang-format on
constexpr const char* system_key = "numeral_system";
constexpr const char* system_otherwise = "1";

// One number at the form: its record, and the controls that it is read from and shown in.
struct NumberSide {
    AutoIncrease& record;
    FileBuffer& buffer;
    const char* section; // of the settings
    ScrollBar& bar;
    CheckBox& box;
    TextBox (&fields)[4];
    OptionButton (&systems)[3];
};
NumberSide side_of(Shell& shell, BufferKind kind)
{
    MainForm& form = shell.form;
    if (kind == BufferKind::code) {
        return {shell.code_increase, shell.code_buffer, "Auto_Increase", form.vscFile[0], form.cheAuto_Increase,
            form.texAuto_Increase, form.optAuto_Increase};
    }
    return {shell.data_increase, shell.data_buffer, "Data_Auto_Increase", form.vscFile[1], form.cheData_Auto_Increase,
        form.texData_Auto_Increase, form.optData_Auto_Increase};
}

int chosen_system(const OptionButton (&systems)[3])
{
    for (int i = 0; i < 3; ++i) {
        if (systems[i].value())
            return i;
    }
    return AutoIncrease::hex;
}

void read_record(const NumberSide& side)
{
    AutoIncrease& record = side.record;
    side.fields[address_field].set_text(upper_case(side.fields[address_field].text()));
    record.address = hex_address_5(side.fields[address_field].text());
    record.bytes = record_number(side.fields[bytes_field].text());
    record.next_value = side.fields[next_field].text();
    record.increment = record_number(side.fields[increment_field].text());
    record.system = static_cast<std::int16_t>(chosen_system(side.systems));
}

void load_side(Shell& shell, const NumberSide& side)
{
    SettingsStore& settings = shell.platform.settings;
    for (const SettingRow& row : setting_rows)
        side.fields[row.field].set_text(settings.get(side.section, row.key, row.otherwise));
    const double system = number_in(settings.get(side.section, system_key, system_otherwise));
    side.systems[system >= 0 && system < 3 ? static_cast<int>(system) : 0].set_value(true);
}

void save_side(Shell& shell, const NumberSide& side)
{
    SettingsStore& settings = shell.platform.settings;
    for (const SettingRow& row : setting_rows)
        settings.set(side.section, row.key, side.fields[row.field].text());
    settings.set(side.section, system_key, std::to_string(chosen_system(side.systems)));
}

// Always false: for a check that has failed.
bool refuse(Shell& shell, const AutoIncrease& record, const Line& why)
{
    show_box(shell, why.in(shell.language_is_english), in_language(shell, increase_title(record.kind)));
    return false;
}

// These tell the user what is wrong.
bool fields_are_numbers(Shell& shell, const AutoIncrease& record, FieldFault fault)
{
    return fault == FieldFault::none || refuse(shell, record, field_text(fault));
}
bool place_fits(Shell& shell, const AutoIncrease& record)
{
    const PlaceFault fault = place_fault(shell.selected, record.kind, record.address, record.bytes);
    return fault == PlaceFault::none || refuse(shell, record, place_text(fault, shell.selected));
}
bool value_fits(Shell& shell, const AutoIncrease& record)
{
    const ValueFault fault = value_fault(record);
    return fault == ValueFault::none || refuse(shell, record, value_text(fault));
}

bool all_fits(Shell& shell, const NumberSide& side)
{
    const auto& fields = side.fields;
    const FieldFault counts = counts_fault(fields[bytes_field].text(), fields[increment_field].text());
    return fields_are_numbers(shell, side.record, counts) && place_fits(shell, side.record) &&
        fields_are_numbers(shell, side.record, address_fault(fields[address_field].text())) &&
        value_fits(shell, side.record);
}

// A number is of use only where the one behind it survives: else the next run would begin with it again. Tells why not,
// each time.
bool next_can_be_kept(Shell& shell)
{
    shell.settings_fault_told = false;
    return keep_settings(shell);
}

void scroll_to_number(Shell& shell, const NumberSide& side)
{
    side.bar.set_value(
        (side.record.address - shown_range(shell, side.buffer).first) / bytes_per_line - lines_above_number);
    vscFile_Change(shell, index_of(side.record.kind));
}

// Into the buffer, over what a hand may have typed there.
bool put_number(Shell& shell, const NumberSide& side)
{
    forget_history(shell, side.record.kind);
    return stamp(side.record, side.buffer);
}

// The box of a number that cannot be used comes off again: ticked, it would promise what no chip gets.
void take_up(Shell& shell, const NumberSide& side)
{
    side.record.valid = all_fits(shell, side) && next_can_be_kept(shell);
    side.record.left_behind = side.record.left_behind && !side.record.valid;
    side.box.set_value(side.record.valid);
    enable_number_fields(shell);
}

void box_clicked(Shell& shell, const NumberSide& side)
{
    enable_number_fields(shell);
    const bool was_in_use = side.record.valid;
    side.record.valid = false;
    if (side.box.value()) {
        read_records(shell);
        save_side(shell, side);
        take_up(shell, side);
    }
    if (side.record.valid) {
        put_number(shell, side);
        update_view(shell, side.buffer);
        scroll_to_number(shell, side);
    } else if (was_in_use) {
        update_view(shell, side.buffer);
    }
}

bool move_valid(Shell& shell, const NumberSide& side)
{
    return !side.record.valid || put_next_value(shell, side.record.kind, advanced_value(side.record));
}

void stop_side(const NumberSide& side)
{
    side.box.set_value(false);
    side.record.valid = false;
    side.record.left_behind = false;
}

} // namespace

void read_records(Shell& shell)
{
    read_record(side_of(shell, BufferKind::code));
    read_record(side_of(shell, BufferKind::data));
}

void load_increase_settings(Shell& shell)
{
    load_side(shell, side_of(shell, BufferKind::code));
    load_side(shell, side_of(shell, BufferKind::data));
}

void cheAuto_Increase_Click(Shell& shell)
{
    box_clicked(shell, side_of(shell, BufferKind::code));
    show_next_numbers(shell);
}
void cheData_Auto_Increase_Click(Shell& shell)
{
    box_clicked(shell, side_of(shell, BufferKind::data));
    show_next_numbers(shell);
}

bool take_up_project_numbers(Shell& shell)
{
    if (!shell.form.cheAuto_Increase.value() && !shell.form.cheData_Auto_Increase.value())
        return false;
    read_records(shell);
    for (const BufferKind kind : {BufferKind::code, BufferKind::data}) {
        const NumberSide side = side_of(shell, kind);
        side.record.left_behind = side.box.value();
        if (side.box.value())
            take_up(shell, side);
        vscFile_Change(shell, index_of(kind));
    }
    return true;
}

bool numbers_fit(Shell& shell)
{
    if (shell.code_increase.left_behind || shell.data_increase.left_behind) {
        show_box(shell, in_language(shell, project_number_off));
        return false;
    }
    const auto fits = [&shell](const AutoIncrease& record) { return !record.valid || value_fits(shell, record); };
    const bool code = fits(shell.code_increase);
    return fits(shell.data_increase) && code;
}

bool numbers_are_safe(Shell& shell)
{
    constexpr Text not_kept = {"设置无法保存，未下载。", "The settings can not be stored. Nothing was programmed."};
    const bool safe = !numbers_in_use(shell).any() || next_can_be_kept(shell);
    if (!safe)
        append_message(shell, not_kept);
    return safe;
}

bool put_next_value(Shell& shell, BufferKind kind, const std::string& value)
{
    const NumberSide side = side_of(shell, kind);
    side.record.next_value = value;
    side.fields[next_field].set_text(value);
    const bool stamped = put_number(shell, side);
    vscFile_Change(shell, index_of(kind));
    save_side(shell, side);
    return stamped;
}

bool move_numbers(Shell& shell)
{
    const bool code = move_valid(shell, side_of(shell, BufferKind::code));
    return move_valid(shell, side_of(shell, BufferKind::data)) && code;
}

void use_up_numbers(Shell& shell)
{
    const bool moved = move_numbers(shell) && show_next_numbers(shell);
    const bool kept = keep_settings(shell);
    shell.number_for_next = moved && (kept || !numbers_in_use(shell).any());
}

NumbersInUse numbers_in_use(const Shell& shell) { return {shell.code_increase.valid, shell.data_increase.valid}; }

bool put_numbers_back(Shell& shell, const NumbersInUse& numbers)
{
    const auto put_back = [&shell](BufferKind kind, bool in_use) {
        const NumberSide side = side_of(shell, kind);
        if (!in_use)
            return true;
        side.box.set_value(true);
        read_records(shell);
        side.record.valid = all_fits(shell, side);
        const bool stamped = side.record.valid && put_number(shell, side);
        if (stamped)
            update_view(shell, side.buffer);
        return stamped;
    };
    const bool code = put_back(BufferKind::code, numbers.code);
    const bool data = put_back(BufferKind::data, numbers.data);
    enable_number_fields(shell);
    return code && data;
}

void keep_numbers(Shell& shell, const NumbersInUse& numbers)
{
    const auto keep = [&shell](BufferKind kind, bool in_use) {
        const NumberSide side = side_of(shell, kind);
        side.box.set_value(in_use);
        side.record.valid = in_use;
    };
    keep(BufferKind::code, numbers.code);
    keep(BufferKind::data, numbers.data);
    enable_number_fields(shell);
}

void stop_stamping(Shell& shell)
{
    stop_side(side_of(shell, BufferKind::code));
    stop_side(side_of(shell, BufferKind::data));
    enable_number_fields(shell);
}

} // namespace vrk
