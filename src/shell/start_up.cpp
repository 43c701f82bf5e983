#include "shell/start_up.h"
#include "shell/line_books.h"

#include "form/main_form.h"

#include "catalog/ranges.h"
#include "options/option_tables.h"
#include "shell/buffer_view.h"
#include "shell/captions.h"
#include "shell/device.h"
#include "shell/events.h"
#include "shell/kept_settings.h"
#include "shell/language.h"
#include "shell/lists.h"
#include "shell/option_pins.h"
#include "shell/ports.h"
#include "shell/press.h"
#include "shell/recent.h"
#include "shell/screen_report.h"
#include "shell/serial_numbers.h"
#include "shell/settings.h"
#include "shell/shrink.h"
#include "shell/tabs.h"
#include "shell/terminal_page.h"
#include "shell/tool_press.h"

namespace vrk {

namespace {

// What a user finds at every start, or until the settings say otherwise.
void choose_defaults(Shell& shell)
{
    shell.form.cobBaudMax.choose(0); // 115200
    shell.form.comWDT_Prescalar[0].choose(7); // 256
    shell.form.comb_WDT.choose(0);
    shell.form.opt_ISP_DEMO_WDT[0].set_value(true);
    shell.form.optHexSend[0].set_value(true);
    shell.form.optFillbyte[0].set_value(true);
    shell.form.txtAP_FileStart.set_text("0000");
    shell.form.txtDataFileStart.set_text("0000");
    shell.form.txt_Start_Address.set_text("0000");
    shell.form.txt_length.set_text("10000");
    shell.form.cheClearAP_Buffer.set_value(true);
    shell.form.cheClearDataBuffer.set_value(true);
    shell.form.Text1.max_length = 999;
}

void unload(Shell& shell)
{
    if (shell.running)
        return shell.TimerUnload.start(); // it has been told to stop, and winds down
    shell.unloaded = true;
    save_window(shell);
    terminal_close(shell);
    shell.port.close();
    for (Timer* timer : {&shell.Timer3, &shell.Timer11, &shell.Timer12, &shell.desk.TimerDebugDisplay})
        timer->stop();
    if (shell.on_unload)
        shell.on_unload();
}

void tie_timers_and_ports(Shell& shell)
{
    shell.platform.ports.on_list_changed = [&shell] { refresh_ports(shell); };
    shell.Timer3.on_tick = [&shell] {
        save_settings(shell);
        enable_pin_choices(shell);
    };
    shell.Timer12.on_tick = [&shell] { Timer12_Timer(shell); };
    shell.TimerUnload.on_tick = [&shell] { unload(shell); };
}

} // namespace

void start_up(Shell& shell)
{
    tie_timers_and_ports(shell);
    apply_captions(shell);
    set_up_tabs(shell);
    load_mcu_tables(shell.mcu_table, false);
    load_option_tables(shell.option_table, shell.language_is_english);
    build_device_tree(shell);
    fill_lists(shell);
    choose_defaults(shell);
    refresh_ports(shell);
    set_up_terminal(shell);
    set_up_tools(shell);
    start_verdict(shell);
    show_port_lamp(shell, false);
    show_main_window(shell);
    shell.form.ProgressBar1.set_visible(false);
    clear_buffer(shell, 0, shell.code_buffer);
    clear_buffer(shell, 0, shell.data_buffer);
    load_settings(shell);
    load_recent(shell);
    show_language_choice(shell);
    show_terminal_port(shell);
    load_increase_settings(shell);
    enable_line_controls(shell);
    cheAuto_Increase_Click(shell);
    cheData_Auto_Increase_Click(shell);
    keep_settings(shell); // nothing has changed yet, but a store that is refused says so before anybody relies on it
    shell.form.comStop_Download.set_enabled(false);
    shell.form.com_Demo_Stop.set_enabled(false);
    shell.Timer12.start();
}

void close_request(Shell& shell)
{
    shell.closing = true;
    comStop_Download_Click(shell);
    shell.TimerUnload.start();
}

} // namespace vrk
