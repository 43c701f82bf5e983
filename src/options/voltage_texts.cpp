#include "options/voltage_texts.h"

#include "options/codec.h"

#include "catalog/attributes.h"

#include <string>

namespace vrk {

namespace {

constexpr int juniper = 7;
constexpr int hazel = 6;
constexpr int willow = 17;

struct Voltages {
    std::string_view high; // of the first button
    std::string_view low;
};

struct VoltagesOfSeries {
    int first_series;
    int last_series;
    std::string_view letters; // the steppings that mean these families in a report
    Voltages v5;
    Voltages v3;
};

// clang-format off
constexpr VoltagesOfSeries voltages[] = {
//    series    letters   5 V: high, low       3 V: high, low
    {  3,  5,   "DEFG", { "3.7V", "3.3V" },  { "2.4V", "2.0V" } },
    {  8,  8,   "JR",   { "3.8V", "3.3V" },  { "2.4V", "2.0V" } },
    {  9,  9,   "K",    { "4.1V", "3.5V" },  { "2.4V", "2.1V" } },
    { 10, 10,   "L",    { "4.1V", "3.7V" },  { "2.4V", "2.1V" } },
    { 17, 17,   "",     { "4.3V", "3.8V" },  { "2.5V", "2.2V" } }, // reports itself as J or R
};
// clang-format on

const VoltagesOfSeries* voltages_of_series(int series)
{
    for (const VoltagesOfSeries& row : voltages) {
        if (series >= row.first_series && series <= row.last_series)
            return &row;
    }
    return nullptr;
}

const VoltagesOfSeries* voltages_of_letter(char letter, int series)
{
    for (const VoltagesOfSeries& row : voltages) {
        if (row.letters.find(letter) != std::string_view::npos)
            return row.letters == "JR" && series == willow ? voltages_of_series(willow) : &row;
    }
    return nullptr;
}

const Voltages& of_class(const VoltagesOfSeries& row, const McuRecord& record)
{
    return voltage_class(record) == VoltageClass::V5 ? row.v5 : row.v3;
}

// The caption row, and the value row behind it.
void write_row_pair(OptionTable& table, int page, int row, const std::string& caption, const std::string& report)
{
    table.set_cell(page, row, OptionColumn::value, caption);
    table.set_cell(page, row, OptionColumn::report, report);
    table.set_cell(page, row + 1, OptionColumn::report, report);
}

std::string caption_of(bool english, std::string_view voltage)
{
    return english ? "< " + std::string{voltage} : std::string{voltage} + " 以下 ";
}

std::string report_of(bool english, std::string_view voltage)
{
    return english ? "Low Voltage Reset, when MCU-VCC < " + std::string{voltage}
                   : "电源电压低于 " + std::string{voltage} + " 复位";
}

std::string short_report_of(bool english, std::string_view voltage)
{
    return english ? report_of(english, voltage) : std::string{voltage} + " 以下复位 ";
}

void write_label(OptionTable& table, int page, std::string_view text)
{
    const int row = find_key(table, page, "Low_Voltage_Reset_Clew");
    if (row >= 0)
        table.set_cell(page, row, OptionColumn::value, text);
}

void write_label_of_oldest(OptionTable& table, int page, int series, bool english)
{
    if (english)
        write_label(table, page, "Low Voltage Reset, when MCU-VCC");
    else
        write_label(table, page, series == 5 ? "低压复位电压(固件版本>5.7有效)" : "低压复位电压(固件版本>5.4有效)");
}

// Hazel and Juniper reset by a pin instead, at a fixed voltage.
void write_reset_pin(OptionTable& table, int page, int row, const McuRecord& record, bool english)
{
    const bool is_hazel = record.series == hazel;
    const std::string pin = is_hazel ? "P1.2" : "P4.6";
    const std::string voltage = voltage_class(record) == VoltageClass::V5 ? "1.33V" : "1.31V";
    if (english) {
        write_label(table, page, pin + "/RESET2:");
        write_row_pair(
            table, page, row, "<" + voltage + " Voltage Reset", pin + "/RESET2 pin voltage <" + voltage + " Reset");
        return;
    }
    write_label(table, page, pin + "/RESET2脚低于" + voltage + "复位,固件>" + (is_hazel ? "V5.7" : "V6.0") + "有效");
    write_row_pair(table, page, row, "YES",
        is_hazel ? "P1.2 脚低于" + voltage + "复位" : "P4.6/RESET2 脚低于 " + voltage + " 复位");
}

} // namespace

void write_panel_voltages(OptionTable& table, int page, const McuRecord& record, bool english)
{
    const int row = find_key(table, page, "LowU_Reset_YES_Clew");
    if (row < 0)
        return;
    const int series = record.series;
    if (series == hazel || series == juniper)
        return write_reset_pin(table, page, row, record, english);
    const VoltagesOfSeries* found = voltages_of_series(series);
    if (found == nullptr || (series == willow && english))
        return;
    const bool oldest = series <= 5;
    const Voltages& pair = of_class(*found, record);
    const auto report = oldest ? short_report_of : report_of;
    write_row_pair(table, page, row, caption_of(english, pair.high), report(english, pair.high));
    write_row_pair(table, page, row + 2, caption_of(english, pair.low), report(english, pair.low));
    if (oldest)
        write_label_of_oldest(table, page, series, english);
}

void write_report_voltages(OptionTable& table, int page, char letter, const McuRecord& record, bool english)
{
    const VoltagesOfSeries* found = voltages_of_letter(letter, record.series);
    const int row = find_key(table, page, "LowU_Reset_YES_Clew");
    if (found == nullptr || row < 0)
        return;
    const Voltages& pair = of_class(*found, record);
    write_row_pair(table, page, row, caption_of(english, pair.high), report_of(english, pair.high));
    write_row_pair(table, page, row + 2, caption_of(english, pair.low), report_of(english, pair.low));
}

} // namespace vrk
