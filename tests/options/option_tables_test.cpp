#include "options/codec.h"
#include "options/option_tables.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>

using namespace vrk;

namespace {

const OptionTable& english()
{
    static const OptionTable table = [] {
        OptionTable loaded;
        load_option_tables(loaded, true);
        return loaded;
    }();
    return table;
}
const OptionTable& chinese()
{
    static const OptionTable table = [] {
        OptionTable loaded;
        load_option_tables(loaded, false);
        return loaded;
    }();
    return table;
}

// The 19 cells of a row behind its key, joined by bars: held against the table by eye.
std::string row_text(const OptionTable& table, int page, int row)
{
    std::string text;
    for (int column = 0; column < OptionTable::column_count; ++column)
        text += (column == 0 ? "" : "|") + table.cell(page, row, column);
    return text;
}
std::string row_text(const OptionTable& table, int page, std::string_view key)
{
    return row_text(table, page, find_key(table, page, key));
}

std::string cell(const OptionTable& table, int page, std::string_view key, OptionColumn column)
{
    return table.cell(page, find_key(table, page, key), column);
}

// "key code key code ..." of a page, in the order of its rows.
std::string codes(const OptionTable& table, int page)
{
    std::string text;
    for (int row = 0; row < table.filled_rows(page); ++row) {
        const std::string& code = table.cell(page, row, OptionColumn::bit_code);
        if (!code.empty())
            text += (text.empty() ? "" : " ") + table.cell(page, row, OptionColumn::key) + "=" + code;
    }
    return text;
}

// The keys that are preselected, in the order of the rows.
std::string defaults(const OptionTable& table, int page)
{
    std::string text;
    for (int row = 0; row < table.filled_rows(page); ++row) {
        if (table.cell(page, row, OptionColumn::property) == "Value" &&
            table.cell(page, row, OptionColumn::value) == "1")
            text += (text.empty() ? "" : " ") + table.cell(page, row, OptionColumn::key);
    }
    return text;
}

std::string strips(const OptionTable& table, int page)
{
    std::string text;
    for (int row = 0; row < table.filled_rows(page); ++row) {
        if (table.cell(page, row, OptionColumn::control) == "LabOption")
            text += (text.empty() ? "" : " ") + table.cell(page, row, OptionColumn::index) + ":" +
                table.cell(page, row, OptionColumn::key);
    }
    return text;
}

// Of a key that stands twice with a code, of a code that stands twice, of a code without its counterpart.
std::string faults(const OptionTable& table, int page)
{
    std::string text;
    std::map<std::string, std::string> key_of_code;
    std::set<std::string> keys;
    for (int row = 0; row < table.filled_rows(page); ++row) {
        const std::string& code = table.cell(page, row, OptionColumn::bit_code);
        const std::string& key = table.cell(page, row, OptionColumn::key);
        if (code.empty())
            continue;
        if (!keys.insert(key).second)
            text += key + " stands twice; ";
        if (!key_of_code.emplace(code, key).second)
            text += code + " stands twice; ";
        if (table.cell(page, row - 1, OptionColumn::property) != "Caption")
            text += key + " has no caption row; ";
    }
    for (const auto& [code, key] : key_of_code) {
        const std::string other = code.substr(0, 3) + (code[3] == '0' ? '1' : '0');
        if (!key_of_code.contains(other))
            text += key + " has no counterpart; ";
    }
    return text;
}

} // namespace

TEST(OptionTables, HaveTheirRowsInEveryPage)
{
    const std::map<int, std::pair<int, int>> wanted = {{0, {5, 5}}, {1, {0, 0}}, {2, {45, 50}}, {3, {0, 0}},
        {4, {51, 51}}, {5, {51, 51}}, {6, {56, 56}}, {7, {56, 56}}, {8, {67, 67}}, {9, {67, 67}}, {10, {56, 56}},
        {15, {0, 0}}, {20, {21, 21}}};
    for (const auto& [page, rows] : wanted) {
        EXPECT_EQ(chinese().filled_rows(page), rows.first) << "Chinese page " << page;
        EXPECT_EQ(english().filled_rows(page), rows.second) << "English page " << page;
    }
}

TEST(OptionTables, LoadedAnewLeaveNoRowOfTheOtherLanguage)
{
    OptionTable table;
    load_option_tables(table, true);
    load_option_tables(table, false);
    EXPECT_EQ(table.filled_rows(2), 45);
}

TEST(OptionTables, HaveTheirCellsInOrder)
{
    EXPECT_EQ(row_text(english(), 0, "Double_speed_Clew"),
        "Double_speed_Clew|LabOption|Label|0|Caption|Double speed / 双倍速:||1|1|1|1|1|1|||0|0||");
    EXPECT_EQ(row_text(chinese(), 0, "Double_speed_YES"),
        "Double_speed_YES|Option0|OptionButton|0|Value|0||1|1|1|0|1|0||||2900|Double speed / 双倍速:           "
        "6T/双倍速|0131");
    EXPECT_EQ(row_text(english(), 2, "Double_speed_NO"),
        "Double_speed_NO|Option0|OptionButton|1|Value|1||1|1|1|0|1|0||||4150|Double speed:                     NO, "
        "12T|0101");
    EXPECT_EQ(row_text(english(), 8, "RC30K_Divder"),
        "RC30K_Divder|comWDT_Prescalar|ComboBox|1|Text|32768||1|1|1|0|1|0||||4500|Wait n clocks after MCU is waked "
        "up:|");
    EXPECT_EQ(row_text(chinese(), 4, "WDT_Prescalar"),
        "WDT_Prescalar|comWDT_Prescalar|ComboBox|0|Text|256||1|1|1|0|1|0||||4500|冷启动后内部看门狗预分频数:|");
    EXPECT_EQ(row_text(english(), 5, "LowU_Reset_YES_Clew"),
        "LowU_Reset_YES_Clew|Option8|OptionButton|0|Caption|<1.33V Voltage Reset||1|1|1|1|1|1||||2900|P1.2/RESET2 pin, "
        "voltage<1.33V Reset|");
    EXPECT_EQ(row_text(chinese(), 7, "P4_7_As_RESET_YES"),
        "P4_7_As_RESET_YES|Option1|OptionButton|1|Value|1||1|1|1|0|1|0||||4150|RESET/P4.7 用作 RESET|0001");
    EXPECT_EQ(row_text(english(), 20, "Dtat_File_Name"),
        "Dtat_File_Name|frmDataFlash|Frame||Caption|Data File:||1|1|1|1|1|1||||||");
}

TEST(OptionTables, ParkTheButtonsOfANote)
{
    const int note = find_key(english(), 4, "Clear_EEPROM_Spite") + 1;
    EXPECT_EQ(row_text(english(), 4, note), "Clew|LabOption|Label|3|Caption|||1|1|1|1|1|1|||0|0||");
    EXPECT_EQ(row_text(english(), 4, note + 1), "Clew|Option3|OptionButton|0|Caption|||0|0|0|0|0|0||||90000||");
    EXPECT_EQ(row_text(english(), 4, note + 2), "Clew|Option3|OptionButton|0|Value|||0|0|0|0|0|0||||90000||");
    EXPECT_EQ(row_text(english(), 4, note + 4), "Clew|Option3|OptionButton|1|Value|||0|0|0|0|0|0||||90000||");
}

TEST(OptionTables, HaveTheirStripsInOrder)
{
    EXPECT_EQ(strips(chinese(), 2),
        "0:Double_speed_Clew 1:Half_Gain_Clew 3:P10_P11_Clew 4:AUX_RAM_Enable_Clew 5:Clear_EEPROM_Clew 8:Clew 9:Clew "
        "10:Reset_Close_WDT_Clew 11:P4_5_As_ALE_Clew");
    EXPECT_EQ(strips(english(), 2),
        "0:Double_speed_Clew 1:Half_Gain_Clew 2:Clew 3:P10_P11_Clew 4:AUX_RAM_Enable_Clew 5:Clear_EEPROM_Clew 8:Clew "
        "9:Clew "
        "10:Reset_Close_WDT_Clew 11:P4_5_As_ALE_Clew");
    EXPECT_EQ(strips(english(), 4),
        "0:Clock_Source_Clew 1:P10_P11_Clew 2:Clear_EEPROM_Clew 3:Clew 4:Clear_Unused_AP_Clew 8:Low_Voltage_Reset_Clew "
        "9:Clew 10:Unchangeable_WDT_Clew 11:Power_On_Run_WDT_Clew 12:Idle_Run_WDT_Clew");
    EXPECT_EQ(strips(chinese(), 8),
        "0:Clock_Source_Clew 1:P4_7_As_RESET_pin_Clew 2:EN810_Delay_200mS_Clew 3:Half_Gain_Clew 4:P10_P11_Clew "
        "5:Clear_EEPROM_Clew 6:Clew 7:Clew 8:Low_Voltage_Reset_Clew 9:Clew 10:Unchangeable_WDT_Clew "
        "11:Power_On_Run_WDT_Clew 12:Idle_Run_WDT_Clew");
    EXPECT_EQ(strips(english(), 9), strips(chinese(), 8));
    EXPECT_EQ(strips(chinese(), 10),
        "0:New_RC_Frequency_Clew 1:P4_7_As_RESET_pin_Clew 2:EN810_Delay_200mS_Clew 3:P10_P11_Clew 4:Clear_EEPROM_Clew "
        "8:LVD_Reset_NO_Clew 9:LVD_Reset_NO_Clew 10:Low_Voltage_Value_Clew 11:Unchangeable_WDT_Clew "
        "12:Power_On_Run_WDT_Clew 13:Idle_Run_WDT_Clew");
}

TEST(OptionTables, HaveTheBitsOfEveryChoice)
{
    EXPECT_EQ(codes(english(), 0), "Double_speed_YES=0131 Double_speed_NO=0130");
    EXPECT_EQ(codes(chinese(), 2),
        "Double_speed_YES=0100 Double_speed_NO=0101 Half_Gain_YES=0140 Half_Gain_NO=0141 Disregard_P10_P11=0121 "
        "P10_P11_00_Download=0120 AUX_RAM_Enable_NO=0160 AUX_RAM_Enable_YES=0161 Clear_EEPROM_FFH=0130 "
        "Clear_EEPROM_Spite=0131 Reset_Close_WDT_NO=0170 Reset_Close_WDT_YES=0171 P4_5_As_ALE_NO=0150 "
        "P4_5_As_ALE_YES=0151");
    EXPECT_EQ(codes(english(), 4),
        "Interior_Oscillate=0210 Exterior_Oscillate=0211 Disregard_P10_P11=0801 P10_P11_00_Download=0800 "
        "Clear_EEPROM_00H=0810 Clear_EEPROM_Spite=0811 Clear_Unused_AP_YES=1600 Clear_Unused_AP_NO=1601 "
        "LowU_Reset_YES=0060 LowU_Reset_NO=0061 Unchangeable_WDT_YES=0370 Unchangeable_WDT_NO=0371 "
        "Power_On_Run_WDT_YES=0350 Power_On_Run_WDT_NO=0351 Idle_Run_WDT_YES=0330 Idle_Run_WDT_NO=0331");
    EXPECT_EQ(codes(english(), 5),
        "Interior_Oscillate=0210 Exterior_Oscillate=0211 EN810_200mS_YES=0270 EN810_200mS_NO=0271 Half_Gain_NO=0261 "
        "Half_Gain_YES=0260 Disregard_P10_P11=0801 P10_P11_00_Download=0800 Clear_EEPROM_00H=0810 "
        "Clear_EEPROM_Spite=0811 LowU_Reset_YES=0060 LowU_Reset_NO=0061 Unchangeable_WDT_YES=0370 "
        "Unchangeable_WDT_NO=0371 Power_On_Run_WDT_YES=0350 Power_On_Run_WDT_NO=0351 Idle_Run_WDT_YES=0330 "
        "Idle_Run_WDT_NO=0331");
    const std::string later =
        "Interior_Oscillate=0110 Exterior_Oscillate=0111 P4_7_As_RESET_NO=0000 P4_7_As_RESET_YES=0001 "
        "EN810_200mS_YES=0170 EN810_200mS_NO=0171 Half_Gain_NO=0161 Half_Gain_YES=0160 Disregard_P10_P11=0801 "
        "P10_P11_00_Download=0800 Clear_EEPROM_00H=0810 Clear_EEPROM_Spite=0811 LowU_Reset_YES=0060 LowU_Reset_NO=0061 "
        "Unchangeable_WDT_YES=0270 Unchangeable_WDT_NO=0271 Power_On_Run_WDT_YES=0250 Power_On_Run_WDT_NO=0251 "
        "Idle_Run_WDT_YES=0230 Idle_Run_WDT_NO=0231";
    EXPECT_EQ(codes(english(), 6), later);
    EXPECT_EQ(codes(english(), 7), later);
    EXPECT_EQ(codes(english(), 8), later);
    EXPECT_EQ(codes(english(), 9), later);
    EXPECT_EQ(codes(english(), 10), later);
    EXPECT_EQ(codes(chinese(), 10),
        "P4_7_As_RESET_NO=0040 P4_7_As_RESET_YES=0041 EN810_200mS_YES=0070 EN810_200mS_NO=0071 Disregard_P10_P11=0801 "
        "P10_P11_00_Download=0800 Clear_EEPROM_FFH=0810 Clear_EEPROM_Spite=0811 LVD_Reset_NO=0171 LVD_Reset_YES=0170 "
        "LVD_Reset_NO=0161 LVD_Reset_YES=0160 Unchangeable_WDT_YES=0270 Unchangeable_WDT_NO=0271 "
        "Power_On_Run_WDT_YES=0250 "
        "Power_On_Run_WDT_NO=0251 Idle_Run_WDT_YES=0230 Idle_Run_WDT_NO=0231");
}

TEST(OptionTables, NameTheEraseChoiceByLanguageInFourPages)
{
    for (const int page : {2, 6, 9, 10}) {
        EXPECT_GE(find_key(chinese(), page, "Clear_EEPROM_FFH"), 0) << page;
        EXPECT_LT(find_key(chinese(), page, "Clear_EEPROM_00H"), 0) << page;
        EXPECT_EQ(cell(english(), page, "Clear_EEPROM_00H", OptionColumn::bit_code),
            cell(chinese(), page, "Clear_EEPROM_FFH", OptionColumn::bit_code));
    }
    for (const int page : {4, 5, 7, 8}) {
        EXPECT_GE(find_key(chinese(), page, "Clear_EEPROM_00H"), 0) << page;
        EXPECT_GE(find_key(english(), page, "Clear_EEPROM_00H"), 0) << page;
        EXPECT_LT(find_key(chinese(), page, "Clear_EEPROM_FFH"), 0) << page;
    }
}

TEST(OptionTables, PreselectWhatThePageDefaultsTo)
{
    EXPECT_EQ(defaults(english(), 2),
        "Double_speed_NO Half_Gain_NO Disregard_P10_P11 AUX_RAM_Enable_YES Clear_EEPROM_Spite Reset_Close_WDT_YES "
        "P4_5_As_ALE_YES");
    EXPECT_EQ(defaults(chinese(), 4),
        "Exterior_Oscillate Disregard_P10_P11 Clear_EEPROM_Spite Clear_Unused_AP_NO LowU_Reset_YES Unchangeable_WDT_NO "
        "Power_On_Run_WDT_NO Idle_Run_WDT_NO");
    EXPECT_EQ(defaults(english(), 5),
        "Interior_Oscillate EN810_200mS_YES Half_Gain_NO Disregard_P10_P11 Clear_EEPROM_Spite LowU_Reset_NO "
        "Unchangeable_WDT_NO Power_On_Run_WDT_NO Idle_Run_WDT_YES");
    EXPECT_EQ(defaults(english(), 6),
        "Exterior_Oscillate P4_7_As_RESET_YES EN810_200mS_YES Half_Gain_NO Disregard_P10_P11 Clear_EEPROM_Spite "
        "LowU_Reset_NO Unchangeable_WDT_NO Power_On_Run_WDT_NO Idle_Run_WDT_YES");
    EXPECT_EQ(defaults(chinese(), 7),
        "Exterior_Oscillate P4_7_As_RESET_YES EN810_200mS_YES Half_Gain_NO Disregard_P10_P11 Clear_EEPROM_Spite "
        "LowU_Reset_YES Unchangeable_WDT_NO Power_On_Run_WDT_NO Idle_Run_WDT_YES");
    EXPECT_EQ(defaults(chinese(), 8),
        "Interior_Oscillate P4_7_As_RESET_YES EN810_200mS_YES Half_Gain_NO Disregard_P10_P11 Clear_EEPROM_Spite "
        "LowU_Reset_YES Unchangeable_WDT_NO Power_On_Run_WDT_NO Idle_Run_WDT_YES");
    EXPECT_EQ(defaults(english(), 9), defaults(chinese(), 7));
    EXPECT_EQ(defaults(english(), 10), defaults(chinese(), 7));
    EXPECT_EQ(defaults(chinese(), 10),
        "P4_7_As_RESET_YES EN810_200mS_YES Disregard_P10_P11 Clear_EEPROM_Spite LVD_Reset_NO LVD_Reset_NO "
        "Unchangeable_WDT_NO Power_On_Run_WDT_NO Idle_Run_WDT_YES");
}

TEST(OptionTables, GiveEveryKeyAndEveryBitOncePerPage)
{
    for (const int page : {0, 2, 4, 5, 6, 7, 8, 9, 10})
        EXPECT_EQ(faults(english(), page), "") << "English page " << page;
    for (const int page : {0, 2, 4, 5, 6, 7, 8, 9})
        EXPECT_EQ(faults(chinese(), page), "") << "Chinese page " << page;
    EXPECT_EQ(faults(chinese(), 10), "LVD_Reset_NO stands twice; LVD_Reset_YES stands twice; ");
}

TEST(OptionTables, DifferInTheTextsOfTheirPages)
{
    using enum OptionColumn;
    EXPECT_EQ(cell(english(), 8, "P4_7_As_RESET_pin_Clew", value), "RESET/P3.6 is used as");
    EXPECT_EQ(cell(chinese(), 6, "P4_7_As_RESET_YES", report), "RESET pin 仍为 RESET");
    EXPECT_EQ(cell(english(), 8, "Interior_Oscillate", report), "Next Power-Up-Reset, use On-Chip RC Oscillator");
    EXPECT_EQ(cell(chinese(), 4, "Unchangeable_WDT_NO", report), "启动内部看门狗后禁止改看门狗分频数      NO");
    EXPECT_EQ(cell(chinese(), 5, "Unchangeable_WDT_NO", report), "启动内部看门狗后禁止改看门狗分频数       NO");
    EXPECT_EQ(cell(chinese(), 9, "Half_Gain_Clew", value), "振荡器放大增益(12MHz以下可选 Low):");
    EXPECT_EQ(cell(english(), 9, "LowU_Reset_NO_Clew", value), "< 3.7V");
    EXPECT_EQ(cell(chinese(), 10, "P10_P11_Clew", value), "下次冷启动P3.2/P3.2:");
}

TEST(TeaksTable, LandsOnJunipersPageWith53Rows)
{
    OptionTable table;
    load_teak_table(table, false);
    EXPECT_EQ(table.filled_rows(6), 53);
    EXPECT_EQ(table.filled_rows(15), 0);
}

TEST(TeaksTable, HasThreeWaysWithTheDataFlash)
{
    OptionTable table;
    load_teak_table(table, false);
    EXPECT_EQ(codes(table, 6),
        "Interior_Oscillate=0310 Exterior_Oscillate=0311 Half_Gain_NO=0361 Half_Gain_YES=0360 Disregard_P10_P11=0801 "
        "P10_P11_00_Download=0800 Clear_EEPROM_00H=0840 Clear_EEPROM_Spite=0841 Clear_EEPROM_FFH=0810 "
        "Clear_Unused_AP_YES=0830 Clear_Unused_AP_NO=0831 LowU_Reset_YES=0060 LowU_Reset_NO=0061 LowU_Unwrite_YES=0070 "
        "LowU_Unwrite_NO=0071 Unchangeable_WDT_YES=0470 Unchangeable_WDT_NO=0471 Power_On_Run_WDT_YES=0450 "
        "Power_On_Run_WDT_NO=0451 Idle_Run_WDT_YES=0430 Idle_Run_WDT_NO=0431");
    EXPECT_EQ(cell(table, 6, "LowU_Unwrite_NO", OptionColumn::report), "EEPROM 低压写保护                       NO");
}
