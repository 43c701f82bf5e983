#include "shell/serial_numbers.h"

#include "form/main_form.h"

#include "image/dump.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/messages.h"
#include "shell/option_panel.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace vrk {

namespace {

constexpr int lines_above_number = 3; // it does not stand at the upper edge of the view

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

std::int16_t short_number(std::string_view text)
{
    constexpr double least = std::numeric_limits<std::int16_t>::min();
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::clamp(round_half_even(number_in(text)), least, most));
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
    record.bytes = short_number(side.fields[bytes_field].text());
    record.next_value = side.fields[next_field].text();
    record.increment = short_number(side.fields[increment_field].text());
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

// False, and the user is told, if the value does not fit.
bool value_fits(Shell& shell, const AutoIncrease& record)
{
    const ValueFault fault = value_fault(record);
    if (fault == ValueFault::none)
        return true;
    show_box(shell, in_language(shell, value_text(fault)), in_language(shell, increase_title(record.kind)));
    return false;
}

void scroll_to_number(Shell& shell, const NumberSide& side)
{
    side.bar.set_value((side.record.address - side.buffer.view_low) / bytes_per_line - lines_above_number);
    vscFile_Change(shell, index_of(side.record.kind));
}

void box_clicked(Shell& shell, const NumberSide& side)
{
    enable_number_fields(shell);
    side.record.valid = false;
    if (!side.box.value())
        return;
    read_records(shell);
    check_record(shell, side.record);
    save_increase_settings(shell);
    if (!side.record.valid)
        return;
    stamp_number(shell, side.record);
    update_view(shell, side.buffer);
    scroll_to_number(shell, side);
}

bool move_valid(Shell& shell, const NumberSide& side)
{
    if (!side.record.valid)
        return true;
    side.record.next_value = advanced_value(side.record);
    side.fields[next_field].set_text(side.record.next_value);
    const bool stamped = stamp_number(shell, side.record);
    vscFile_Change(shell, index_of(side.record.kind));
    save_increase_settings(shell);
    return stamped;
}

void stop_side(const NumberSide& side)
{
    side.box.set_value(false);
    side.record.valid = false;
}

} // namespace

void read_records(Shell& shell)
{
    read_record(side_of(shell, BufferKind::code));
    read_record(side_of(shell, BufferKind::data));
}

void check_record(Shell& shell, AutoIncrease& record)
{
    const PlaceFault fault = place_fault(shell.selected, record.kind, record.address, record.bytes);
    record.valid = fault == PlaceFault::none;
    if (!record.valid) {
        show_box(shell, place_text(fault, shell.selected).in(shell.language_is_english),
            in_language(shell, increase_title(record.kind)));
    }
}

bool stamp_number(Shell& shell, const AutoIncrease& record)
{
    return value_fits(shell, record) && stamp(record, buffer_of(shell, record.kind));
}

void load_increase_settings(Shell& shell)
{
    load_side(shell, side_of(shell, BufferKind::code));
    load_side(shell, side_of(shell, BufferKind::data));
}

void save_increase_settings(Shell& shell)
{
    save_side(shell, side_of(shell, BufferKind::code));
    save_side(shell, side_of(shell, BufferKind::data));
}

void cheAuto_Increase_Click(Shell& shell) { box_clicked(shell, side_of(shell, BufferKind::code)); }
void cheData_Auto_Increase_Click(Shell& shell) { box_clicked(shell, side_of(shell, BufferKind::data)); }

bool numbers_fit(Shell& shell)
{
    const auto fits = [&shell](const AutoIncrease& record) { return !record.valid || value_fits(shell, record); };
    const bool code = fits(shell.code_increase);
    return fits(shell.data_increase) && code;
}

bool move_numbers(Shell& shell)
{
    const bool code = move_valid(shell, side_of(shell, BufferKind::code));
    return move_valid(shell, side_of(shell, BufferKind::data)) && code;
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
        check_record(shell, side.record);
        const bool stamped = side.record.valid && stamp_number(shell, side.record);
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
