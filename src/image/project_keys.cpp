#include "image/project_keys.h"

#include <algorithm>
#include <iterator>
#include <string>

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

std::vector<ProjectValue> values_in_use(const Project& project, int page)
{
    const bool old = project.version == Project::Version::old;
    const auto keys = old ? old_project_keys(page) : std::span<const std::string_view>{};
    std::vector<ProjectValue> values;
    for (const auto& [key, value] : project.values) {
        const bool listed = keys.empty() || std::ranges::find(keys, key) != keys.end();
        if (listed && key != model_key)
            values.push_back({std::string{old ? name_of_today(key) : std::string_view{key}}, value});
    }
    return values;
}

} // namespace vrk
