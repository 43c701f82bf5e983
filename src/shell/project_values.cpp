#include "shell/project_values.h"

#include "options/codec.h"
#include "shell/option_choices.h"
#include "shell/row_control.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace vrk {

namespace {

constexpr std::string_view model_key = "MCU_Type";

// clang-format off
// LVD_Reset_NO and LVD_Reset_YES have no place: the choices at low voltage are not part of a project.
constexpr std::string_view option_keys[] = {
    "Double_speed_YES",     "Double_speed_NO",
    "Interior_Oscillate",   "Exterior_Oscillate",
    "Half_Gain_YES",        "Half_Gain_NO",
    "Disregard_P10_P11",    "P10_P11_00_Download",
    "AUX_RAM_Enable_NO",    "AUX_RAM_Enable_YES",
    "Reset_Close_WDT_NO",   "Reset_Close_WDT_YES",
    "Clear_EEPROM_00H",     "Clear_EEPROM_FFH",     "Clear_EEPROM_Spite",
    "Clear_Unused_AP_YES",  "Clear_Unused_AP_NO",
    "Unchangeable_WDT_YES", "Unchangeable_WDT_NO",
    "Power_On_Run_WDT_YES", "Power_On_Run_WDT_NO",
    "Idle_Run_WDT_YES",     "Idle_Run_WDT_NO",
    "LowU_Unwrite_YES",     "LowU_Unwrite_NO",
    "LowU_Reset_YES",       "LowU_Reset_NO",
    "WDT_Prescalar",
    "EN810_200mS_YES",      "EN810_200mS_NO",
    "P4_7_As_RESET_NO",     "P4_7_As_RESET_YES",
    "P4_5_As_ALE_NO",       "P4_5_As_ALE_YES",
    "RC30K_Divder",
};

// Files from before versions were written. Of a pair they may hold one choice only, the one that is not the default.
constexpr std::string_view oldest_layout[26] = {
    "VER",                  "MCU_Type",             "File_Name",            "AP_File_CheckSum",
    "Auto_Increase_Enable", "Auto_Increase_Address","Auto_Increase_Bytes",  "Auto_Increase_Next",
    "Auto_Increase",        "Auto_Increase_HEX",    "Auto_Increase_BCD",    "Auto_Increase_ASCII",
    "Double_speed_YES",     "Double_speed_NO",      "Half_Gain_YES",        "Half_Gain_NO",
    "Disregard_P10_P11",    "P10_P11_00_Download",  "AUX_RAM_Enable_NO",    "AUX_RAM_Enable_YES",
    "Reset_Close_WDT_NO",   "Reset_Close_WDT_YES",  "Clear_EEPROM_FFH",     "Clear_EEPROM_Spite",
    "P4_5_As_ALE_NO",       "buffer_check_sum",
};
constexpr std::string_view second_oldest_layout[26] = {
    "VER",                  "MCU_Type",             "File_Name",            "AP_File_CheckSum",
    "Auto_Increase_Enable", "Auto_Increase_Address","Auto_Increase_Bytes",  "Auto_Increase_Next",
    "Auto_Increase",        "Auto_Increase_HEX",    "Auto_Increase_BCD",    "Auto_Increase_ASCII",
    "Interior_Oscillate",   "Exterior_Oscillate",   "Disregard_P10_P11",    "P10_P11_00_Download",
    "Clear_EEPROM_00H",     "Clear_EEPROM_Spite",   "Clear_Unused_AP_YES",  "Clear_Unused_AP_NO",
    "LowU_Reset_YES",       "LowU_Reset_NO",        "Unchangeable_WDT_YES", "Power_On_Run_WDT_YES",
    "Idle_Run_WDT_YES",     "buffer_check_sum",
};
struct OldLayout { int page; std::span<const std::string_view> keys; };
constexpr OldLayout old_layouts[] = {
//    page  keys
    {  0,   oldest_layout },
    {  2,   oldest_layout },
    {  4,   second_oldest_layout },
};

struct OldName { std::string_view then; std::string_view now; };
constexpr OldName old_names[] = {
    { "AP_File_CheckSum", "File_Check_Sum" },
};
// clang-format on

int page_of_model(const Shell& shell) { return option_page_of_series(shell.selected.series).page; }

// ---- from the controls

std::string text_of(const Control& control, std::string_view property)
{
    if (const auto* box = dynamic_cast<const CheckBox*>(&control))
        return box->value() ? "1" : "0";
    return read_property(control, property);
}

std::string text_of_row(const Shell& shell, int page, int row)
{
    const Control* control = control_of_row(shell, page, row);
    return control == nullptr ? "" : text_of(*control, shell.option_table.cell(page, row, OptionColumn::property));
}

// Choices as the snapshot has them; boxes, which are no part of it, as they stand.
std::string option_text(const Shell& shell, int page, int row)
{
    if (shell.option_table.cell(page, row, OptionColumn::bit_code).empty())
        return text_of_row(shell, page, row);
    return shell.option_table.cell(page, row, OptionColumn::snapshot);
}

// ---- to the controls

std::optional<int> whole_number(std::string_view text)
{
    int number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

// Nothing: the text says neither.
std::optional<bool> checked_by(std::string_view text)
{
    if (text == "True" || text == "False")
        return text == "True";
    const auto number = whole_number(text);
    return number ? std::optional{*number != 0} : std::nullopt;
}

void write_checked(Control& control, bool checked)
{
    // The choice of another button lets one go: a damaged file must not leave a pair without any choice.
    if (!checked && dynamic_cast<const OptionButton*>(&control) != nullptr)
        return;
    write_property(control, "Value", checked ? "1" : "0");
}

// By its text, or by its number from 0.
void write_item(ComboBox& box, const std::string& value)
{
    const auto item = std::ranges::find(box.items(), value);
    const auto place =
        item != box.items().end() ? std::optional{static_cast<int>(item - box.items().begin())} : whole_number(value);
    if (place && *place >= 0 && *place < static_cast<int>(box.items().size()))
        box.choose(*place);
}

void write_value(Control& control, const std::string& property, const std::string& value)
{
    if (property == "Value") {
        if (const auto checked = checked_by(value))
            write_checked(control, *checked);
    } else if (auto* box = dynamic_cast<ComboBox*>(&control)) {
        write_item(*box, value);
    } else {
        write_property(control, property, value);
    }
}

void write_row(Shell& shell, int page, int row, const std::string& value)
{
    if (Control* control = control_of_row(shell, page, row))
        write_value(*control, shell.option_table.cell(page, row, OptionColumn::property), value);
}

// The captions of the panel have keys too, and are no part of a project.
bool is_option(const Shell& shell, int page, int row)
{
    return row >= 0 && shell.option_table.cell(page, row, OptionColumn::property) != "Caption";
}

void apply_value(Shell& shell, std::string_view key, const std::string& value)
{
    const int common = find_key(shell.option_table, option_page::project_fields, key);
    if (common >= 0)
        return write_row(shell, option_page::project_fields, common, value);
    const int page = page_of_model(shell);
    const int row = find_key(shell.option_table, page, key);
    if (is_option(shell, page, row))
        write_row(shell, page, row, value);
}

std::string_view name_of_today(std::string_view key)
{
    const auto found = std::ranges::find(old_names, key, &OldName::then);
    return found == std::end(old_names) ? key : found->now;
}

} // namespace

std::span<const std::string_view> project_option_keys() { return option_keys; }

std::span<const std::string_view> old_project_keys(int page)
{
    const auto found = std::ranges::find(old_layouts, page, &OldLayout::page);
    return found == std::end(old_layouts) ? std::span<const std::string_view>{} : found->keys;
}

std::vector<ProjectValue> project_values(Shell& shell)
{
    std::vector<ProjectValue> values;
    constexpr int common = option_page::project_fields;
    for (int row = 0; row < shell.option_table.filled_rows(common); ++row)
        values.push_back({shell.option_table.cell(common, row, OptionColumn::key), text_of_row(shell, common, row)});
    snapshot_controls(shell);
    const int page = page_of_model(shell);
    for (const std::string_view key : option_keys) {
        const int row = find_key(shell.option_table, page, key);
        if (row >= 0)
            values.push_back({std::string{key}, option_text(shell, page, row)});
    }
    return values;
}

void apply_project_values(Shell& shell, const Project& project)
{
    const bool old = project.version == Project::Version::old;
    const auto keys = old ? old_project_keys(page_of_model(shell)) : std::span<const std::string_view>{};
    for (const auto& [key, value] : project.values) {
        const bool listed = keys.empty() || std::ranges::find(keys, key) != keys.end();
        if (listed && key != model_key)
            apply_value(shell, old ? name_of_today(key) : std::string_view{key}, value);
    }
}

} // namespace vrk
