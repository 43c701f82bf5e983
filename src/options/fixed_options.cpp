#include "options/fixed_options.h"

#include "report/text.h"

#include <span>

namespace vrk {

namespace {

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
// Of the other families no line is known to be true for all models.
constexpr Text fixed = { "出厂时已固定。", "Fixed at the factory." };
// clang-format on

} // namespace

std::vector<std::string> fixed_option_lines(const McuRecord& record, bool english)
{
    if (record.series < 5 || record.series > 17)
        return {};
    const std::span<const Text> known = record.series == hazel ? hazel_lines : std::span<const Text>{&fixed, 1};
    std::vector<std::string> lines;
    for (const Text& line : known)
        lines.emplace_back(in_language(english, line));
    return lines;
}

} // namespace vrk
