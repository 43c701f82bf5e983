#include "session/guidance.h"

#include <span>
#include <string>

namespace vrk {

namespace {

constexpr int patience_ms = 4000;

// clang-format off
constexpr std::string_view page_english[] = {
    "Connection is failed. Please try:",
    " 1. Click ISP-Programmig button in Power-Down mode, ",
    "    then Power-Up",
    " 2. Stop programming, choose another RS-232 port,",
    "    check the connection line",
    " 3. Connect P1.0/P1.1 to ground, then supply target",
    "    MCU power.",
    " 4. Check external clock connection.",
    " 5. Update VRK-ISP.exe software",
    " 6. MCU might not have ISP code inside, ",
    "    or the MCU has been damaged.",
    " 7. If using USB-to-RS232 line, it might not",
    "    be compatible. We can help you buy a compatible",
    "    USB-to-RS232 line.",
    "",
    "        It is still in connection state,",
    "        please supply target MCU power...",
};

constexpr std::string_view page_chinese[] = {
    "Chinese:连接失败，请尝试以下操作：",
    " 1.在单片机停电状态下，点下载按钮，再给单片机上电",
    " 2.停止下载，重新选择 RS-232 串口, 接好电缆",
    " 3.可能需要先将 P1.0/P1.1 短接到地",
    " 4.可能外部时钟未接",
    " 5.因 PLCC、PQFP 转换座引线过长而引起时钟不振荡，请",
    "   调整参数",
    " 6.可能要升级电脑端的 VRK-ISP.exe 软件",
    " 7.若仍然不成功，可能 MCU/单片机内无 ISP 系统引导码，",
    "   或需退回升级，或 MCU 已损坏",
    " 8.若使用 USB 转 RS-232 串口线下载，可能会遇到不兼容",
    "   的问题，可以让我们帮助购买兼容的 USB 转 RS-232 ",
    "   串口线",
    "",
    " 仍在连接中, 请给 MCU 上电...",
};

// The target runs user code: advice on its power would be wrong.
constexpr std::string_view page_chinese_demo[] = {
    "连接失败，请尝试以下操作：",
    " 1.重新选择 RS-232 串口, 接好电缆，打开电源。",
    " 2.检查波特率、奇偶位、数据位、停止位是否正确。",
    " 3.因 PLCC、PQFP 转换座引线过长而引起时钟不振荡，请调整参数。",
    " 4.可能要升级电脑端的 VRK-ISP.exe 软件。",
    " 5.若仍然不成功，可能 MCU/单片机内无 ISP 系统引导码，",
    "   或需退回升级，或 MCU 已损坏。",
    " 6.若使用 USB 转 RS-232 串口线下载，可能会遇到不兼容",
    "   的问题，可以让我们帮助购买兼容的 USB 转 RS-232 ",
    "   串口线",
    "",
    " 仍在连接中, 请给 MCU 上电...",
};
// clang-format on

std::string text_of(std::span<const std::string_view> page)
{
    std::string text;
    for (const std::string_view line : page)
        text.append(text.empty() ? "" : "\n").append(line);
    return text;
}

} // namespace

Guidance::Guidance(Session& session, Report& report)
    : session_(session)
    , report_(report)
    , call_(session.loop.call_at(session.loop.now_us() + patience_ms * 1000, [this] { speak_up(); }))
{
}

Guidance::~Guidance()
{
    if (call_ != 0)
        session_.loop.cancel(call_);
}

void Guidance::speak_up()
{
    call_ = 0;
    report_.beep(2);
    Line page{text_of(page_english)};
    page.zh = text_of(session_.demo_mode ? std::span<const std::string_view>{page_chinese_demo}
                                         : std::span<const std::string_view>{page_chinese});
    report_.say(page.as(Tone::advice));
}

} // namespace vrk
