#include "shell/monitor_pages.h"

#include "form/main_form.h"

#include "shell/terminal_page.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr int most_repeats = 3;

void send_command(Shell& shell, std::uint8_t command) { shell.port.send(monitor_command_bytes(command)); }

void answer(Shell& shell, std::uint8_t command)
{
    if (!shell.form.che_disable_Debug_SFR_232.value())
        send_command(shell, command);
}

void show_lists(Shell& shell)
{
    const Monitor& monitor = shell.desk.monitor;
    const auto show = [](ListBox& box, const MonitorList& list) { box.set_items(list.lines, list.changed); };
    show(shell.form.lst_debug1, monitor.registers);
    show(shell.form.lst_debug2, monitor.ram);
    show(shell.form.lst_debug3, monitor.external_ram);
    show(shell.form.lst_debug4, monitor.data_flash);
}

} // namespace

void begin_monitor_burst(Shell& shell)
{
    shell.desk.TimerDebug.stop();
    shell.desk.repeats_left = most_repeats;
}

void look_for_monitor_frames(Shell& shell, const std::vector<std::uint8_t>& bytes)
{
    TerminalDesk& desk = shell.desk;
    for (std::span<const std::uint8_t> rest = bytes; !rest.empty();) {
        switch (desk.scan.look(rest)) {
        case FrameScan::Found::good:
            desk.TimerDebug.stop();
            desk.monitor.show(desk.scan.frame());
            show_lists(shell);
            answer(shell, monitor_command::received);
            break;
        case FrameScan::Found::bad:
            desk.TimerDebug.start(); // asks for it again when the target has had its time
            break;
        case FrameScan::Found::nothing:
            break;
        }
    }
}

void end_monitor_burst(Shell& shell)
{
    if (shell.desk.scan.in_frame())
        shell.desk.TimerDebug.start();
}

void TimerDebug_Timer(Shell& shell)
{
    TerminalDesk& desk = shell.desk;
    if (!desk.terminal.has_port || desk.repeats_left <= 0)
        return;
    --desk.repeats_left;
    desk.TimerDebug.start();
    desk.scan.reset();
    answer(shell, monitor_command::repeat);
}

void comDebugContinue_Click(Shell& shell)
{
    if (!terminal_open(shell))
        return;
    send_command(shell, monitor_command::go_on);
    ++shell.desk.terminal.tx_count;
    show_terminal_counts(shell);
}

void clear_monitor(Shell& shell)
{
    shell.desk.monitor.clear(shell.selected.series);
    show_lists(shell);
}

} // namespace vrk
