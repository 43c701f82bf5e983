#include "terminal/compare.h"

#include "platform/text_number.h"

#include <string>

namespace vrk {

namespace {

constexpr int most_unasked = 100;

std::string difference_line(const CompareRing& received, std::size_t address, std::uint8_t wanted)
{
    const std::uint8_t found = received.at(address);
    // A byte that never came is told by what stands in its place, unless that would look like the right one.
    const std::string shown = found == wanted ? "--" : hex_text(found, 2);
    return "地址: " + hex_text(static_cast<std::int64_t>(address), 4) + "H;  文件缓冲区: " + hex_text(wanted, 2) +
        ";  MCU: " + shown;
}

} // namespace

void compare_with_code(
    const CompareRing& received, std::span<const std::uint8_t> code, std::string_view time, Report& report)
{
    bool equal = true;
    int untold = 0;
    for (std::size_t address = 0; address < code.size(); ++address) {
        if (received.received(address) && received.at(address) == code[address])
            continue;
        equal = false;
        report.say(difference_line(received, address, code[address]));
        if (++untold <= most_unasked)
            continue;
        if (!report.ask("\n\n不相等的单元已达 100 个， 继续比较请输入 Y"))
            break;
        untold = 0;
    }
    const std::string last = hex_text(static_cast<std::int64_t>(code.size()) - 1, 4);
    const std::string time_line = "          时    间: " + std::string{time};
    if (equal) {
        report.say("比较完毕，比较范围: 0000H -- " + last + "H");
        report.say(time_line);
        report.say(Line{"MCU AP 区的内容与程序文件缓冲区一致。"}.as(Tone::good));
        return;
    }
    report.say("比较范围: 0000H -- " + last + "H");
    report.say(time_line);
    report.say(Line{"MCU AP 区的内容与程序文件缓冲区不相等。"}.as(Tone::bad));
}

} // namespace vrk
