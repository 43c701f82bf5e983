#include "options/fixed_options.h"

#include "options/codec.h"
#include "options/voltage_texts.h"

#include "report/text.h"

namespace vrk {

namespace {

constexpr std::size_t most_lines = 7;
constexpr int hazel = 6;

// clang-format off
constexpr Text hazel_lines[] = {
    { "下次冷启动后使用外部晶体或时钟",           "Next Power-Up-Reset, use External Crystal/Clock" },
    { "上电复位不增加额外的复位延时",             "Power-Up do not add extra Reset-Delay-Time" },
    { "振荡器放大增益:                  High gain", "Oscillator gain:                 High gain" },
    { "下次冷启动后P1.0/P1.1 = 0/0才可以下载程序",  "P1.0/P1.1 need = 0/0 when programming" },
    { "下次下载用户应用程序时将数据Flash区清0:  NO", "Next ISP Programming Code,don't clear EEPROM data" },
    { "P1.2 仍为 LVD 脚",                         "P1.2/RESET2 is used as P1.2/LVD" },
    { "",                                         "Next Cold Start WatchDog did not start." },
};
// clang-format on

// The state of the other families in their own words: every choice that the factory has made, in the order of the
// panel.
constexpr std::string_view factory_choices[] = {"Double_speed_NO", "Exterior_Oscillate", "P4_7_As_RESET_YES",
    "EN810_200mS_NO", "Half_Gain_NO", "P10_P11_00_Download", "AUX_RAM_Enable_YES", "Clear_EEPROM_Spite",
    "LowU_Reset_NO", "Reset_Close_WDT_YES", "P4_5_As_ALE_YES", "Power_On_Run_WDT_NO"};

std::vector<std::string> lines_of_hazel(bool english)
{
    std::vector<std::string> lines;
    for (const Text& line : hazel_lines)
        lines.emplace_back(in_language(english, line));
    return lines;
}

} // namespace

std::vector<std::string> fixed_option_lines(OptionTable& table, const McuRecord& record, bool english)
{
    if (record.series < 5 || record.series > 17)
        return {};
    const int page = option_page_of_series(record.series).page;
    write_panel_voltages(table, page, record, english);
    if (record.series == hazel)
        return lines_of_hazel(english);
    std::vector<std::string> lines;
    for (const std::string_view key : factory_choices) {
        const int row = find_key(table, page, key);
        if (row >= 0 && lines.size() < most_lines)
            lines.push_back(table.cell(page, row, OptionColumn::report));
    }
    return lines;
}

} // namespace vrk
