#include "shell/terminal_send.h"

#include "form/main_form.h"

#include "shell/messages.h"
#include "shell/terminal_page.h"

#include "platform/text_number.h"
#include "terminal/hex_to_send.h"

#include <optional>

namespace vrk {

namespace {

constexpr std::size_t most_bytes = 4097; // of one hexadecimal string
constexpr int strings = 25;
constexpr double longest_cycle_ms = 2'000'000'000;

constexpr Text send_off = {"自动发送", "Repeat Send"};
constexpr Text send_on = {"停止自动发送", "Stop Repeat"};
constexpr Text rotate_off = {"自动循环发送", "Round Send"};
constexpr Text rotate_on = {"停止循环发送", "Stop Round"};
constexpr Text cycle_too_small = {"自动发送周期太小", "The interval is too small."};
constexpr Text pause_too_short = {"间隔时间太短", "The interval too short"};
constexpr Text wrong_hex_title = {"串口调试助手:十六进制发送", ""};
constexpr Text too_many = {
    "十六进制数据太长，最多 4097 字节，未发送。", "The HEX data is too long: 4097 bytes at most. Nothing was sent."};

void show_wrong_character(Shell& shell, const WrongCharacter& wrong)
{
    if (shell.language_is_english) {
        show_box(shell, "Please input HEX format data: 0-9, A-F, a-f, a space between each two charaters.");
        return;
    }
    show_box(shell,
        "           第 " + std::to_string(wrong.position) + " 个字符有误: " + wrong.character +
            "  (计数包括空格数)\n\n请输入 HEX 格式数据: 0-9, A-F, a-f, 每 2 个字符之间隔 1 个空格，\n\n"
            "                如果自动发送已打开串口将会被关闭。",
        wrong_hex_title.zh);
}

// Nothing: there is nothing to send, or it has been told why not.
std::optional<std::vector<std::uint8_t>> bytes_to_send(Shell& shell, std::string_view text, bool hex)
{
    if (!hex)
        return encode_text(shell.desk.terminal.page, text);
    if (const auto wrong = wrong_hex_character(text)) {
        stop_automatic_sends(shell);
        show_wrong_character(shell, *wrong);
        return std::nullopt;
    }
    auto bytes = hex_to_send(text);
    if (bytes.size() > most_bytes) {
        stop_automatic_sends(shell);
        show_box(shell, in_language(shell, too_many));
        return std::nullopt;
    }
    return bytes;
}

void send_bytes(Shell& shell, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty() || !shell.port.send(bytes))
        return;
    shell.desk.terminal.tx_count += static_cast<std::int32_t>(bytes.size());
    show_terminal_counts(shell);
}

// The only way out for text.
void terminal_send(Shell& shell, std::string_view text, bool hex)
{
    if (!terminal_open(shell))
        return;
    if (const auto bytes = bytes_to_send(shell, text, hex))
        send_bytes(shell, *bytes);
}

// Whole milliseconds of a cycle; below 1 where there are none.
int cycle_of(const TextBox& box)
{
    const double ms = number_in(box.text());
    return ms < 1 ? 0 : static_cast<int>(std::min(ms, longest_cycle_ms));
}

void toggle(Shell& shell, Timer& timer, const TextBox& cycle, const Text& refused)
{
    const bool was_on = timer.enabled();
    timer.stop();
    if (!was_on) {
        if (const int ms = cycle_of(cycle); ms >= 1)
            timer.start(ms);
        else
            show_box(shell, in_language(shell, refused));
    }
    show_automatic_sends(shell);
}

} // namespace

void comDebugSend_Click(Shell& shell)
{
    terminal_send(shell, shell.form.texSend.text(), shell.form.optHexSend[1].value());
}

void comSpreadSendCom_Click(Shell& shell, int row)
{
    terminal_send(shell, shell.form.texSpreadSend[row].text(), shell.form.cheSpreadHex[row].value());
    shell.desk.spread_current = row + 1 < strings ? row + 1 : 0;
}

void send_next_string(Shell& shell)
{
    const int first = shell.desk.spread_current;
    for (int i = 0; i < strings; ++i) {
        const int row = (first + i) % strings;
        if (!trimmed(shell.form.texSpreadSend[row].text()).empty())
            return comSpreadSendCom_Click(shell, row);
    }
}

void comAutoSend_Click(Shell& shell)
{
    toggle(shell, shell.desk.TimerDebugAutoSend, shell.form.texSendCycle, cycle_too_small);
}

void comSpreadAutoSend_Click(Shell& shell)
{
    toggle(shell, shell.desk.TimerSpreadAutoSend, shell.form.texSpreadSendCycle, pause_too_short);
}

// A cycle that is being typed may read as nothing for a moment: the last good one holds until then.
void take_send_cycles(Shell& shell)
{
    const auto take = [](Timer& timer, const TextBox& box) {
        const int ms = cycle_of(box);
        if (timer.enabled() && ms >= 1 && ms != timer.interval_ms())
            timer.start(ms);
    };
    take(shell.desk.TimerDebugAutoSend, shell.form.texSendCycle);
    take(shell.desk.TimerSpreadAutoSend, shell.form.texSpreadSendCycle);
}

void stop_automatic_sends(Shell& shell)
{
    shell.desk.TimerDebugAutoSend.stop();
    shell.desk.TimerSpreadAutoSend.stop();
    show_automatic_sends(shell);
}

void show_automatic_sends(Shell& shell)
{
    shell.form.comAutoSend.set_caption(
        in_language(shell, shell.desk.TimerDebugAutoSend.enabled() ? send_on : send_off));
    shell.form.comSpreadAutoSend.set_caption(
        in_language(shell, shell.desk.TimerSpreadAutoSend.enabled() ? rotate_on : rotate_off));
}

void send_key(Shell& shell, std::string_view key)
{
    if (shell.desk.terminal.has_port && key.size() == 1)
        send_bytes(shell, std::span{reinterpret_cast<const std::uint8_t*>(key.data()), 1});
}

} // namespace vrk
