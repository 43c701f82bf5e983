#include "shell/start_up.h"

#include "catalog/ranges.h"
#include "image/auto_increase.h"
#include "image/buffers.h"
#include "link/guidance.h"
#include "link/panel_state.h"
#include "link/port.h"
#include "link/receive.h"
#include "link/sequencer.h"
#include "options/option_tables.h"
#include "options/pins.h"
#include "shell/captions.h"
#include "shell/device.h"
#include "shell/events.h"
#include "shell/lists.h"
#include "shell/settings.h"
#include "shell/tabs.h"

#include <algorithm>

namespace vrk {

namespace {

// What a user finds at every start, or until the settings say otherwise.
void choose_defaults(MainForm& form)
{
    form.cobBaudMax.choose(0); // 115200
    form.comWDT_Prescalar[0].choose(7); // 256
    form.comb_WDT.choose(0);
    form.opt_ISP_DEMO_WDT[0].set_value(true);
    form.optHexSend[0].set_value(true);
    form.optFillbyte[0].set_value(true);
    form.txtAP_FileStart.set_text("0000");
    form.txtDataFileStart.set_text("0000");
    form.txt_Start_Address.set_text("0000");
    form.txt_length.set_text("10000");
    form.cheClearAP_Buffer.set_value(true);
    form.cheClearDataBuffer.set_value(true);
    for (const int head : {0, 2}) {
        form.txtBufferAddress[head].set_text("地 址");
        form.txtBufferAddress[head + 1].set_text(" 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F ");
    }
}

void unload(MainForm& form)
{
    form.unloaded = true;
    save_window(form);
    close_link(form);
    if (form.on_unload)
        form.on_unload();
}

void tie_timers_and_port(MainForm& form)
{
    form.MSComm1.on_comm = [&form] { on_comm(form); };
    form.platform.ports.on_list_changed = [&form] { refresh_ports(form); };
    form.Timer9.on_tick = [&form] { show_guidance(form); };
    form.Timer3.on_tick = [&form] {
        save_settings(form);
        opt_485_pin_Click(form);
        opt_External_WDT_Click(form);
    };
    form.Timer12.on_tick = [&form] { Timer12_Timer(form); };
    form.TimerUnload.on_tick = [&form] { unload(form); };
}

} // namespace

void start_up(MainForm& form)
{
    tie_timers_and_port(form);
    apply_captions(form);
    set_up_tabs(form);
    load_mcu_tables(form.mcu_table, false);
    load_option_tables(form.option_table, form.language_is_english);
    build_device_tree(form);
    fill_lists(form);
    choose_defaults(form);
    refresh_ports(form);
    show_port_open(form, false);
    form.ProgressBar1.set_visible(false);
    clear_buffer(form, 0, form.code_buffer);
    clear_buffer(form, 0, form.data_buffer);
    load_settings(form);
    load_increase_settings(form);
    cheAuto_Increase_Click(form);
    cheData_Auto_Increase_Click(form);
    enable_buttons(form);
    form.Timer12.start();
}

void close_request(MainForm& form)
{
    form.closing = true;
    comStop_Download_Click(form);
    form.TimerUnload.start();
}

void refresh_ports(MainForm& form)
{
    const std::vector<PortInfo> ports = form.platform.ports.list();
    std::vector<std::string> paths;
    std::vector<std::string> captions;
    for (const PortInfo& port : ports) {
        paths.push_back(port.path);
        captions.push_back(port.caption);
    }
    if (captions == form.combCommPort.items() && paths == form.MSComm1.port_paths)
        return;
    const std::string chosen = form.combCommPort.text();
    form.MSComm1.port_paths = std::move(paths);
    form.combCommPort.set_items(captions);
    const auto still_there = std::find(captions.begin(), captions.end(), chosen);
    form.combCommPort.choose(still_there == captions.end() ? 0 : static_cast<int>(still_there - captions.begin()));
}

} // namespace vrk
