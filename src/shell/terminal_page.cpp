#include "shell/terminal_page.h"

#include "form/main_form.h"

#include "shell/messages.h"
#include "shell/monitor_pages.h"
#include "shell/press.h"
#include "shell/screen_report.h"
#include "shell/terminal_send.h"

#include "inapp/user_command.h"
#include "platform/text_number.h"
#include "session/shared_texts.h"
#include "terminal/compare.h"
#include "terminal/find_text.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr int gather_ms = 10; // nobody sees it, and no monitor waits for its answer so closely

constexpr Text open_caption = {"打开串口", "Open COM"};
constexpr Text close_caption = {"关闭串口", "Close COM"};
constexpr Text receive_count = {"接收计数:", "Receive counter:"};
constexpr Text send_count = {"发送计数:", "Send counter:"};
constexpr Text box_title = {"  串口调试助手     ", ""};
constexpr Text no_port = {"没有这个串口。", "There is no such COM port."};
constexpr Text cannot_open = {"串口已被其它程序打开或该串口不存在。",
    "The COM port is opened by another Program or the COM port does not exist."};
constexpr Text no_such_line = {"该串口不支持所选的参数。", "The COM port does not take these settings."};
constexpr Text too_long = {"   显示文本太大，请点击串口调试助手‘清接收区’按钮。\n                     串口已关闭。",
    "The display text is too long, please click the Clear Receive button."};
constexpr Text port_gone = {"串口已断开。", "The serial port is gone."};
constexpr Text log_begin = {"保存到文件...", "Log to File..."};
constexpr Text log_end = {"停止保存", "Stop Log"};
constexpr Text log_title = {"接收数据保存到文件", "Log what is received"};
constexpr Text log_failed = {
    "无法写入文件，已停止保存，接收继续。", "The file cannot be written. The log has ended, receiving goes on."};
constexpr Text no_file = {"    Please open code file./请打开文件。    ", "    Please open code file.   "};

std::string chosen_path(const Shell& shell)
{
    const int number = shell.form.com_Debug_COM.index_chosen();
    const bool exists = number >= 0 && static_cast<std::size_t>(number) < shell.port_paths.size();
    return exists ? shell.port_paths[static_cast<std::size_t>(number)] : std::string{};
}

// Empty: the port is open.
Line why_it_does_not_open(Shell& shell)
{
    const std::string path = chosen_path(shell);
    if (path.empty())
        return Line{no_port};
    const auto line = user_line(shell.form.com_Debug_Baud.text(), shell.form.com_Debug_ParityCheck.text(),
        shell.form.com_Debug_DataBits.text(), shell.form.com_Debug_StopBits.text());
    shell.port.close();
    shell.port.path = path;
    if (!line || !shell.port.set_line(*line))
        return Line{path + "\n"} + Line{no_such_line};
    if (!shell.port.open()) {
        const Line why = refusal_text(shell.port);
        const Line told = Line{path + "\n"} + Line{cannot_open};
        return why.en.empty() ? told : told + Line{"\n"} + why;
    }
    return {};
}

void show_port_state(Shell& shell)
{
    const bool open = shell.desk.terminal.has_port;
    for (Button& button : shell.form.comOpenCOM)
        button.set_caption(in_language(shell, open ? close_caption : open_caption));
    shell.form.imgOpen.set_visible(open);
    shell.form.imgNotOpen.set_visible(!open);
}

void show_log_state(Shell& shell)
{
    shell.form.comDebugLog.set_caption(in_language(shell, shell.desk.terminal.log.is_on() ? log_end : log_begin));
    for (OptionButton& kind : shell.form.optDebugLog)
        kind.set_enabled(!shell.desk.terminal.log.is_on());
}

void tell_log_failed(Shell& shell, const std::string& path)
{
    show_log_state(shell);
    show_box(shell, std::string{in_language(shell, log_failed)} + "\n" + path);
}

void log_bytes(Shell& shell, std::span<const std::uint8_t> bytes)
{
    ReceiveLog& log = shell.desk.terminal.log;
    if (log.write(bytes, clock_text(shell.platform.loop.wall_time())))
        return;
    // The box waits until what has come is put away: a receiver does not stop for it.
    shell.platform.loop.call_at(0, [&shell, path = log.path()] { tell_log_failed(shell, path); });
}

void show_control_inputs(Shell& shell)
{
    const auto inputs = shell.port.inputs();
    std::string text;
    if (inputs && shell.desk.terminal.has_port) {
        const auto mark = [](bool on) { return on ? " \u25CF  " : " \u25CB  "; };
        text = std::string{"CTS"} + mark(inputs->cts) + "DSR" + mark(inputs->dsr) + "DCD" + mark(inputs->dcd);
    }
    shell.form.labDebugLines.set_caption(text);
}

void look_after_port(Shell& shell)
{
    show_control_inputs(shell);
    if (!shell.port.gone())
        return;
    shell.desk.lost_port = shell.port.path;
    terminal_close(shell);
    show_box(shell, in_language(shell, port_gone), in_language(shell, box_title));
}

void take_bytes(Shell& shell)
{
    TerminalDesk& desk = shell.desk;
    begin_monitor_burst(shell);
    while (shell.port.waiting() > 0 && desk.terminal.has_port) {
        const auto bytes = shell.port.take();
        if (bytes.empty())
            break;
        desk.terminal.receive(bytes);
        log_bytes(shell, bytes);
        look_for_monitor_frames(shell, {bytes.begin(), bytes.end()});
    }
    end_monitor_burst(shell);
    if (!desk.TimerDebugDisplay.enabled())
        desk.TimerDebugDisplay.start();
}

void compare(Shell& shell)
{
    if (!shell.file_loaded)
        return show_box(shell, in_language(shell, no_file));
    if (shell.desk.terminal.to_compare.empty()) {
        if (!shell.language_is_english)
            show_box(shell, "    串口缓冲区里没有数据。    ");
        return;
    }
    shell.form.textMsg.set_text("");
    ScreenReport report(shell);
    const FileBuffer& code = shell.code_buffer;
    const auto count = static_cast<std::size_t>(std::clamp(code.high + 1, 0, static_cast<int>(code.data.size())));
    compare_with_code(shell.desk.terminal.to_compare, std::span<const std::uint8_t>{code.data}.first(count),
        clock_text(shell.platform.loop.wall_time()), report);
}

} // namespace

void set_up_terminal(Shell& shell)
{
    TerminalDesk& desk = shell.desk;
    desk.TimerDebug.on_tick = [&shell] { TimerDebug_Timer(shell); };
    desk.TimerDebugDisplay.on_tick = [&shell] { terminal_display_tick(shell); };
    desk.TimerDebugAutoSend.on_tick = [&shell] { comDebugSend_Click(shell); };
    desk.TimerDebugPort.on_tick = [&shell] { look_after_port(shell); };
    desk.TimerSpreadAutoSend.on_tick = [&shell] { send_next_string(shell); };
    shell.form.combDebugCodePage.set_items({"UTF-8", "GBK", "Latin-1"});
    shell.form.combDebugCodePage.choose(0);
    shell.form.optReceiveHex[0].set_value(true);
    for (int row = 0; row < static_cast<int>(std::size(shell.form.comSpreadSendCom)); ++row)
        shell.form.comSpreadSendCom[row].set_caption(std::to_string(row + 1));
    shell.form.optDebugLog[0].set_value(true);
    shell.form.che_DebugDTR.set_value(true);
    shell.form.che_DebugRTS.set_value(true);
    show_log_state(shell);
    show_port_state(shell);
    show_terminal_port(shell);
    show_automatic_sends(shell);
    show_terminal_counts(shell);
    clear_monitor(shell);
}

bool terminal_open(Shell& shell)
{
    Terminal& terminal = shell.desk.terminal;
    if (terminal.has_port || shell.running)
        return terminal.has_port;
    const Line fault = why_it_does_not_open(shell);
    if (!fault.en.empty()) {
        terminal_close(shell);
        show_box(shell, fault.in(shell.language_is_english), in_language(shell, box_title));
        return false;
    }
    // What is compared is what came since the line was opened: an older dump is another chip's.
    terminal.to_compare.clear();
    terminal.has_port = true;
    shell.port.on_receive = [&shell] { take_bytes(shell); };
    shell.port.let_gather(gather_ms);
    shell.desk.lost_port.clear();
    shell.desk.TimerDebugPort.start();
    set_control_lines(shell);
    show_port_state(shell);
    return true;
}

void terminal_close(Shell& shell)
{
    Terminal& terminal = shell.desk.terminal;
    stop_automatic_sends(shell);
    shell.desk.TimerDebug.stop();
    shell.desk.TimerDebugPort.stop();
    shell.desk.scan.reset();
    if (!terminal.has_port)
        return;
    terminal.has_port = false;
    shell.port.on_receive = nullptr;
    shell.port.close();
    show_control_inputs(shell);
    show_port_state(shell);
}

void comOpenCOM_Click(Shell& shell)
{
    shell.desk.lost_port.clear(); // the user has decided
    if (shell.desk.terminal.has_port)
        terminal_close(shell);
    else
        terminal_open(shell);
}

void terminal_line_Change(Shell& shell)
{
    show_terminal_port(shell);
    if (!shell.desk.terminal.has_port)
        return;
    terminal_close(shell);
    terminal_open(shell);
}

void combDebugCodePage_Click(Shell& shell)
{
    shell.desk.terminal.use(static_cast<CodePage>(std::max(shell.form.combDebugCodePage.index_chosen(), 0)));
}

void comDebugClear_Click(Shell& shell, int row)
{
    if (row != 0)
        return clear_monitor(shell);
    shell.form.texReceive.set_text("");
    shell.desk.search_from = 0;
    shell.desk.terminal.to_compare.clear();
}

void comDebugFind_Click(Shell& shell)
{
    TextBox& display = shell.form.texReceive;
    const std::string& what = shell.form.texDebugFind.text();
    const auto place = find_around(display.text(), what, shell.desk.search_from);
    shell.form.labDebugFound.set_caption(place || what.empty() ? "" : "×");
    if (!place)
        return;
    shell.desk.search_from = *place + 1;
    display.select(0, 0); // shown anew where it is the same place again: the user may have selected another one
    display.select(character_count(std::string_view{display.text()}.substr(0, *place)), character_count(what));
}

void comDebugLog_Click(Shell& shell)
{
    Terminal& terminal = shell.desk.terminal;
    if (terminal.log.is_on()) {
        terminal.log.end();
        return show_log_state(shell);
    }
    FileDialog dialog;
    dialog.kind = FileDialog::Kind::save;
    dialog.title = in_language(shell, log_title);
    dialog.filter = "(*.log)|*.log|All Files (*.*)|*.*";
    const auto path = choose_path(shell, dialog);
    if (!path || path->empty())
        return;
    const auto kind = shell.form.optDebugLog[1].value() ? ReceiveLog::Kind::lines : ReceiveLog::Kind::bytes;
    if (!terminal.log.begin(*path, kind, terminal.page))
        return tell_log_failed(shell, *path);
    show_log_state(shell);
}

void set_control_lines(Shell& shell)
{
    if (shell.desk.terminal.has_port)
        shell.port.set_outputs(shell.form.che_DebugDTR.value(), shell.form.che_DebugRTS.value());
    show_control_inputs(shell);
}

void terminal_ports_Change(Shell& shell, const std::vector<std::string>& paths_before)
{
    ComboBox& number = shell.form.com_Debug_COM;
    std::string& chosen = shell.desk.chosen_port;
    const auto place = static_cast<std::size_t>(number.index_chosen());
    if (number.index_chosen() >= 0 && place < paths_before.size())
        chosen = paths_before[place];
    const auto found = std::ranges::find(shell.port_paths, chosen);
    if (!chosen.empty())
        number.choose(found == shell.port_paths.end() ? -1 : static_cast<int>(found - shell.port_paths.begin()));
    show_terminal_port(shell);
    if (!shell.desk.lost_port.empty() && chosen_path(shell) == shell.desk.lost_port)
        terminal_open(shell);
}

void comComp_Click(Shell& shell) { compare(shell); }

void terminal_display_tick(Shell& shell)
{
    Terminal& terminal = shell.desk.terminal;
    TextBox& display = shell.form.texReceive;
    const bool as_hex = shell.form.optReceiveHex[1].value();
    const bool timed = shell.form.che_DebugTime.value() && !as_hex;
    const std::string chunk =
        timed ? terminal.take_timed_text(clock_text(shell.platform.loop.wall_time())) : terminal.take_text(as_hex);
    const int room = Terminal::display_limit - display.length();
    const std::string_view fits = first_characters(chunk, room);
    if (!fits.empty())
        display.append(fits);
    show_terminal_counts(shell);
    if (fits.size() == chunk.size())
        return;
    comStop_Download_Click(shell);
    terminal_close(shell);
    show_box(shell, in_language(shell, too_long));
}

void show_terminal_counts(Shell& shell)
{
    const Terminal& terminal = shell.desk.terminal;
    const auto show = [&shell](Label& label, const Text& text, std::int32_t count) {
        label.set_caption(std::string{in_language(shell, text)} + std::to_string(count));
    };
    show(shell.form.labReceiveCount, receive_count, terminal.rx_count);
    show(shell.form.labSendCount, send_count, terminal.tx_count);
}

void show_terminal_port(Shell& shell)
{
    constexpr std::string_view devices = "/dev/"; // what all of them have in common tells nothing
    const std::string path = chosen_path(shell);
    const bool is_device = path.starts_with(devices);
    shell.form.labDebugPort.set_caption(is_device ? path.substr(devices.size()) : path);
}

} // namespace vrk
