// The window on its real event loop, a simulated chip in the socket, and a job of a program with a serial number in it.
#pragma once

#include "form/named_controls.h"
#include "host/qt_dialogs.h"
#include "host/qt_settings.h"
#include "rehearsal/chip_of_model.h"
#include "shell/events.h"
#include "shell/open_file.h"
#include "shell/start_up.h"
#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/wire.h"
#include "window/main_window.h"

#include <QAbstractButton>

#include <initializer_list>
#include <string>

namespace vrk {

struct WindowAtSocket {
    WindowAtSocket(EventLoop& loop, const std::string& settings_file)
        : settings(settings_file)
        , ports(loop)
        , shell(Platform{loop, ports, dialogs, settings})
        , wire(loop, sim::Wire::Waking::each_run)
        , chip(started())
        , window(shell)
    {
        wire.attach(chip);
        dialogs.parent = &window;
        window.show();
    }

    // The number's box: address, bytes, next value, increment; those that are left out stand as they are stored.
    void set_up_job(const std::string& code_file, std::initializer_list<const char*> number)
    {
        choose_node(shell, form.tree("TreeViewDevice"), model);
        take_path(shell, BufferKind::code, code_file);
        load_file(shell, code_file, shell.code_buffer);
        int field = 0;
        for (const char* text : number)
            type_text(shell, form.text_box("texAuto_Increase", field++), text);
        choose_option(shell, form.option("optAuto_Increase", 0));
        ComboBox& delays = form.list("comDalay_ReDownLoad");
        choose_item(shell, delays, static_cast<int>(delays.items().size()) - 1); // the shortest
        set_checked(shell, form.check_box("cheAuto_Increase"), true);
    }
    void click_re_download() { window.findChild<QAbstractButton*>("comDownload(1)")->click(); }
    bool report_says(const char* text) const { return form.text_box("textMsg").text().find(text) != std::string::npos; }
    bool powered() const { return chip.state_name() != "off"; }

    static constexpr const char* model = "Juniper-8";
    QtDialogs dialogs;
    QtSettings settings;
    sim::SimPortDriver ports;
    Shell shell;
    const NamedControls form{shell.controls};
    sim::Wire wire;
    sim::Chip chip;
    MainWindow window;

private:
    // The catalogue, from which the chip is made, is there when the program has started.
    sim::ChipSetup started()
    {
        shell.language_is_english = true;
        ports.add("socket", wire);
        start_up(shell);
        sim::ChipSetup setup = chip_setup_of(shell.mcu_table, model).value();
        setup.answers_at_once();
        return setup;
    }
};

} // namespace vrk
