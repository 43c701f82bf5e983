#include "options/option_report.h"

#include "options/voltage_texts.h"

#include "platform/text_number.h"
#include "report/text.h"

#include <algorithm>

namespace vrk {

namespace {

struct PageOfLetters {
    std::string_view letters;
    OptionPage page;
};

// clang-format off
constexpr PageOfLetters pages_of_letters[] = {
//    letters   page last row
    { "CN",   {  2,  48 } },
    { "DEFG", {  4,  55 } },
    { "H",    {  5,  55 } },
    { "I",    {  6,  55 } },
    { "JR",   {  7,  55 } },
    { "K",    {  8,  66 } },
    { "L",    {  9,  66 } },
};
// clang-format on

constexpr std::size_t most_option_lines = 10; // of the check page

constexpr Text firmware_text = {"   固件版本号: ", "  Firmware Version: "};

// Letter R keeps in byte 12 what the page looks for in byte 8.
StatusBytes bytes_as_the_page_has_them(const ChipStatus& status)
{
    StatusBytes bytes = status.status_bytes;
    if (status.fw_letter == "R") {
        bytes[8] = bytes[12];
        bytes[12] = 255;
    }
    return bytes;
}

// Of a page with a divider; 0: it has none.
int divider_of_page(const StatusBytes& bytes, int page)
{
    const int byte = watchdog_byte(page);
    return byte < 0 ? 0 : watchdog_divider(bytes[static_cast<std::size_t>(byte)]);
}

// The watchdog's divider has no bit of its own: it is a number in a field. Its line is always said.
void decode_watchdog(OptionTable& table, int page, int divider)
{
    const int row = find_key(table, page, "WDT_Prescalar");
    if (row < 0 || divider == 0)
        return;
    const int power_on = find_key(table, page, "Power_On_Run_WDT_YES");
    const bool runs = table.cell(page, power_on, OptionColumn::snapshot) == "1";
    table.set_cell(page, row, OptionColumn::snapshot, runs ? "1" : std::to_string(divider));
}

std::vector<std::string> lines_of(const OptionTable& table, OptionPage page, int divider)
{
    std::vector<std::string> lines;
    for (int row = 0; row <= page.last_row; ++row) {
        const std::string& report = table.cell(page.page, row, OptionColumn::report);
        if (report.empty() || number_in(table.cell(page.page, row, OptionColumn::snapshot)) == 0)
            continue;
        const bool is_divider = table.cell(page.page, row, OptionColumn::key) == "WDT_Prescalar";
        lines.push_back(is_divider ? report + " " + std::to_string(divider) : report);
    }
    return lines;
}

std::vector<std::string> old_firmware_lines(const ChipStatus& status)
{
    const auto speed = [&] {
        if (status.fw_letter == "B")
            return "Double speed (6 clock) / 双倍速:     Unknown";
        return status.double_speed_bit ? "Double speed (6 clock) / 双倍速:       Yes"
                                       : "Double speed (6 clock) / 双倍速:        No";
    };
    return {"MCU Type is:                      " + status.target_name,
        "MCU Firmware Version / MCU 固件版本号: " + status.fw_version + status.fw_letter, speed()};
}

} // namespace

OptionPage option_page_of_letter(std::string_view letter)
{
    if (letter.size() != 1)
        return {};
    for (const PageOfLetters& row : pages_of_letters) {
        if (row.letters.find(letter) != std::string_view::npos)
            return row.page;
    }
    return {};
}

std::vector<std::string> option_lines(OptionTable& table, const ChipStatus& status, bool english)
{
    const OptionPage page = option_page_of_letter(status.fw_letter);
    if (!page.exists() || !status.options_told)
        return {};
    const StatusBytes bytes = bytes_as_the_page_has_them(status);
    const int divider = divider_of_page(bytes, page.page);
    decode_option_bytes(table, page, bytes);
    write_report_voltages(table, page.page, status.fw_letter[0], status.model, english);
    decode_watchdog(table, page.page, divider);
    return lines_of(table, page, divider);
}

std::vector<std::string> check_page_lines(
    const ChipStatus& status, const std::vector<std::string>& option_lines, bool english)
{
    if (status.fw_letter == "A" || status.fw_letter == "B")
        return old_firmware_lines(status);
    if (!option_page_of_letter(status.fw_letter).exists())
        return {};
    std::vector<std::string> lines = {" MCU: " + status.target_name + std::string{in_language(english, firmware_text)} +
        status.fw_version + status.fw_letter};
    const std::size_t shown = std::min(option_lines.size(), most_option_lines);
    lines.insert(lines.end(), option_lines.begin(), option_lines.begin() + static_cast<std::ptrdiff_t>(shown));
    return lines;
}

} // namespace vrk
