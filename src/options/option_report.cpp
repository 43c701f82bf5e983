#include "options/option_report.h"

#include "options/voltage_texts.h"

#include "form/messages.h"
#include "platform/text_number.h"

#include <string>
#include <vector>

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

constexpr std::size_t head_label = 0;
constexpr std::size_t first_line_label = 2;
constexpr std::size_t most_line_labels = 10;
constexpr std::size_t last_cleared_label = 13;
constexpr std::size_t foot_label = 15;

constexpr std::size_t old_options_index = 22;
constexpr std::uint8_t double_speed_bit = 8;

constexpr Text firmware_text = {"   固件版本号: ", "  Firmware Version: "};

const McuRecord& chip_of(const Shell& shell) { return shell.target.identified ? shell.connected : shell.selected; }

// The watchdog's divider has no bit of its own: it is a number in a field. Its line is always said.
void decode_watchdog(Shell& shell, OptionPage page)
{
    OptionTable& table = shell.option_table;
    const int row = find_key(table, page.page, "WDT_Prescalar");
    const int byte = watchdog_byte(page.page);
    if (row < 0 || byte < 0)
        return;
    const int power_on = find_key(table, page.page, "Power_On_Run_WDT_YES");
    const bool runs = table.cell(page.page, power_on, OptionColumn::snapshot) == "1";
    const int divider = watchdog_divider(shell.options.status_bytes[byte]);
    table.set_cell(page.page, row, OptionColumn::snapshot, runs ? "1" : std::to_string(divider));
}

std::vector<std::string> lines_of(const Shell& shell, OptionPage page)
{
    const OptionTable& table = shell.option_table;
    std::vector<std::string> lines;
    for (int row = 0; row <= page.last_row; ++row) {
        const std::string& report = table.cell(page.page, row, OptionColumn::report);
        if (report.empty() || number_in(table.cell(page.page, row, OptionColumn::snapshot)) == 0)
            continue;
        std::string line = report;
        if (table.cell(page.page, row, OptionColumn::key) == "WDT_Prescalar")
            line += " " + std::to_string(watchdog_divider(shell.options.status_bytes[watchdog_byte(page.page)]));
        lines.push_back(std::move(line));
    }
    return lines;
}

void show_on_label(Shell& shell, std::size_t label, std::string_view line)
{
    shell.form.LabLock[label].set_caption(line);
    shell.form.LabLock[label].set_visible(true);
}

void show_check_page(Shell& shell, const std::vector<std::string>& lines)
{
    clear_check_page(shell);
    const TargetFacts& target = shell.target;
    show_on_label(shell, 1,
        " MCU: " + target.target_name + std::string{in_language(shell, firmware_text)} + target.fw_version +
            target.fw_letter);
    for (std::size_t i = 0; i < lines.size() && i < most_line_labels; ++i)
        show_on_label(shell, first_line_label + i, lines[i]);
}

void decode_and_say(Shell& shell, OptionPage page)
{
    const char letter = shell.target.fw_letter[0];
    decode_option_bytes(shell, page);
    write_report_voltages(shell, page.page, letter, chip_of(shell));
    decode_watchdog(shell, page);
    const std::vector<std::string> lines = lines_of(shell, page);
    for (const std::string& line : lines)
        append_message(shell, line);
    show_check_page(shell, lines);
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

void report_options(Shell& shell)
{
    const OptionPage page = option_page_of_letter(shell.target.fw_letter);
    if (!page.exists())
        return;
    auto& status = shell.options.status_bytes;
    if (shell.target.fw_letter != "R")
        return decode_and_say(shell, page);
    // Letter R keeps in byte 12 what the page looks for in byte 8.
    const std::int16_t kept = status[8];
    status[8] = status[12];
    status[12] = 255;
    decode_and_say(shell, page);
    status[12] = status[8];
    status[8] = kept;
}

void report_old_firmware(Shell& shell)
{
    const TargetFacts& target = shell.target;
    if (target.fw_letter != "A" && target.fw_letter != "B")
        return;
    clear_check_page(shell);
    show_on_label(shell, 1, "MCU Type is:                      " + target.target_name);
    show_on_label(shell, 2, "MCU Firmware Version / MCU 固件版本号: " + target.fw_version + target.fw_letter);
    if (target.fw_letter == "B")
        return show_on_label(shell, 3, "Double speed (6 clock) / 双倍速:     Unknown");
    const bool doubled = (shell.link.rx_buffer[old_options_index] & double_speed_bit) != 0;
    show_on_label(
        shell, 3, doubled ? "Double speed (6 clock) / 双倍速:       Yes" : "Double speed (6 clock) / 双倍速:        No");
}

void clear_check_page(Shell& shell)
{
    shell.form.LabLock[head_label].set_visible(true);
    shell.form.LabLock[foot_label].set_visible(true);
    for (std::size_t label = 1; label <= last_cleared_label; ++label)
        shell.form.LabLock[label].set_caption("");
}

} // namespace vrk
