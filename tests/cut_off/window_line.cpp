// window_line SETTINGS CODE-FILE: the window with a simulated chip in the socket, and a hand that sets the number's
// box, presses Re-Download and puts in chip after chip. Each chip that the report calls good is told on standard output
// with its true flash. Runs until it is cut off.
#include "form/named_controls.h"
#include "host/qt_dialogs.h"
#include "host/qt_loop.h"
#include "host/qt_settings.h"
#include "rehearsal/chip_of_model.h"
#include "script/values.h"
#include "shell/events.h"
#include "shell/open_file.h"
#include "shell/start_up.h"
#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/wire.h"
#include "window/main_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include <iostream>

using namespace vrk;

namespace {

constexpr const char* model = "Juniper-8";
constexpr int glance_ms = 5; // how often the hand looks at the report

void set_up_job(Shell& shell, const std::string& code_file)
{
    const NamedControls form{shell.controls};
    choose_node(shell, form.tree("TreeViewDevice"), model);
    take_path(shell, BufferKind::code, code_file);
    load_file(shell, code_file, shell.code_buffer);
    type_text(shell, form.text_box("texAuto_Increase", 0), "203");
    type_text(shell, form.text_box("texAuto_Increase", 1), "4");
    choose_option(shell, form.option("optAuto_Increase", 0));
    choose_item(shell, form.list("comDalay_ReDownLoad"), 8); // 1 s
    set_checked(shell, form.check_box("cheAuto_Increase"), true);
}

// The chip comes out when the tool counts down to the next one, and another goes in when it calls.
class Hand {
public:
    Hand(const Shell& shell, sim::Chip& chip)
        : shell_(shell)
        , chip_(chip)
    {
        QObject::connect(&glances_, &QTimer::timeout, &glances_, [this] { look(); });
        glances_.start(glance_ms);
    }

private:
    bool says(const char* text) const
    {
        return NamedControls{shell_.controls}.text_box("textMsg").text().find(text) != std::string::npos;
    }
    void look()
    {
        const bool good = says("Program OK");
        if (good && !told_)
            std::cout << "{\"flash\":\"" << script::hex_bytes(chip_.flash()) << "\"}" << std::endl;
        told_ = good;
        if (says("will continue"))
            chip_.power(false);
        else if (!good && shell_.running && shell_.port.is_open() && !powered())
            chip_.power(true);
    }
    bool powered() const { return chip_.state_name() != "off"; }

    const Shell& shell_;
    sim::Chip& chip_;
    QTimer glances_;
    bool told_ = false;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    QtLoop loop;
    QtDialogs dialogs;
    QtSettings settings(argv[1]);
    sim::SimPortDriver ports(loop);
    Shell shell(Platform{loop, ports, dialogs, settings});
    shell.language_is_english = true;
    sim::Wire wire(loop, sim::Wire::Waking::each_run);
    ports.add("socket", wire);
    start_up(shell);
    auto setup = chip_setup_of(shell.mcu_table, model).value();
    setup.answers_at_once();
    sim::Chip chip(setup);
    wire.attach(chip);

    MainWindow window(shell);
    dialogs.parent = &window;
    window.show();
    set_up_job(shell, argv[2]);
    const Hand hand(shell, chip);
    QTimer::singleShot(0, &window, [&window] { window.findChild<QAbstractButton*>("comDownload(1)")->click(); });
    return QApplication::exec();
}
