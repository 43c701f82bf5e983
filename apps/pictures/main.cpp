// vrk-pictures: pictures of the real window, for the manual and to be looked at. The steps stand on the command line in
// their order:
//   vrk-pictures [dark] [zh|en] STEP...
//   model NAME | file PATH | page KEY | port simulated|PATH | power on|off | click NAME | tick NAME | set NAME=VALUE |
//   size WIDTHxHEIGHT | close box | wait MS | log LEDGER | shot FILE.png | screen FILE.png
// Once the log is open, size and shot are its own.
#include "isp/ports_with_target.h"
#include "isp/target_panel.h"

#include "form/named_controls.h"
#include "host/qt_dialogs.h"
#include "host/qt_loop.h"
#include "ledger/sql_books.h"
#include "shell/events.h"
#include "shell/open_path.h"
#include "shell/ports.h"
#include "shell/start_up.h"
#include "window/log_window.h"
#include "window/main_window.h"
#include "window/seen_choices.h"

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>

namespace {

using namespace vrk;

constexpr int between_steps_ms = 120; // two redraws
constexpr const char* model_at_start = "Juniper-60Q";

QPalette dark_palette()
{
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x2d, 0x2d, 0x2d));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::AlternateBase, QColor(0x2d, 0x2d, 0x2d));
    dark.setColor(QPalette::Button, QColor(0x3a, 0x3a, 0x3a));
    dark.setColor(QPalette::ToolTipBase, QColor(0x1e, 0x1e, 0x1e));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        dark.setColor(role, QColor(0xe6, 0xe6, 0xe6));
    dark.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9a, 0x9a));
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(0x6c, 0xb0, 0xff));
    return dark;
}

struct Studio {
    Studio(bool english, const char* model)
        : ports(loop, {}, in_language(english, simulated_target))
        , shell(Platform{loop, ports, dialogs, settings})
    {
        shell.language_is_english = english;
        shell.books = &books;
        start_up(shell);
        window = std::make_unique<MainWindow>(shell);
        dialogs.parent = window.get();
        new TargetPanel(*window, ports, model); // the window's own from then on
        window->show();
    }

    void show_page(const std::string& key)
    {
        for (TabStrip* strip : {&form.tabs("TabStrip1"), &form.tabs("TabStrip2")}) {
            if (const int tab = strip->find(key); tab >= 0)
                choose_tab(shell, *strip, tab);
        }
    }

    // Types into a text box, picks the item of a list, presses a choice.
    void set(Control& control, const std::string& value)
    {
        auto* list = dynamic_cast<ComboBox*>(&control);
        if (auto* option = dynamic_cast<OptionButton*>(&control)) {
            choose_option(shell, *option);
        } else if (list != nullptr && !list->editable) {
            const auto item = std::ranges::find(list->items(), value);
            choose_item(shell, *list, static_cast<int>(item - list->items().begin()));
        } else {
            type_text(shell, control, value);
        }
    }

    QWidget& in_front() const
    {
        QWidget* log = window->findChild<QDialog*>("LogWindow");
        return log != nullptr ? *log : *window;
    }

    void take(const std::string& step, const std::string& what)
    {
        const std::map<std::string, std::function<void()>> steps = {
            {"model", [&] { choose_node(shell, form.tree("TreeViewDevice"), what); }},
            {"file", [&] { open_path(shell, what); }},
            {"page", [&] { show_page(what); }},
            {"port",
                [&] {
                    ComboBox& port = form.list("combCommPort");
                    if (what == "simulated")
                        choose_item(shell, port, static_cast<int>(port.items().size()) - 1);
                    else
                        add_port(shell, what);
                }},
            {"power", [&] { ports.chip().power(what == "on"); }},
            {"click", [&] { click(shell, *shell.controls.find_full(what)); }},
            {"set",
                [&] {
                    const std::size_t sign = what.find('=');
                    set(*shell.controls.find_full(what.substr(0, sign)), what.substr(sign + 1));
                }},
            {"tick", [&] { set_checked(shell, static_cast<CheckBox&>(*shell.controls.find_full(what)), true); }},
            {"size",
                [&] {
                    const QStringList sides = to_qt(what).split('x');
                    in_front().resize(sides[0].toInt(), sides[1].toInt());
                }},
            {"close",
                [&] {
                    if (QWidget* box = QApplication::activeModalWidget())
                        box->close();
                }},
            {"log",
                [&] {
                    type_text(shell, form.text_box("texLedger"), what);
                    show_log(shell, window.get());
                }},
            {"wait", [] {}},
            {"screen", [&] { window->screen()->grabWindow(0).save(to_qt(what)); }}, // with what a window manager adds
            {"shot",
                [&] {
                    // With five bits a colour the few shades of a window fit a palette, and the file is a third.
                    constexpr int smallest = 0;
                    const QImage image = in_front()
                                             .grab()
                                             .toImage()
                                             .convertToFormat(QImage::Format_RGB555)
                                             .convertToFormat(QImage::Format_RGB32)
                                             .convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
                    image.save(to_qt(what), "PNG", smallest);
                }},
        };
        const auto found = steps.find(step);
        if (found == steps.end())
            std::fprintf(stderr, "no such step: %s\n", step.c_str());
        else
            found->second();
    }

    // A click may serve events until a chip is done, so the next step is in hand before this one is taken.
    void go_on(int argc, char** argv, int at)
    {
        if (at + 1 >= argc)
            return QApplication::quit();
        const std::string step = argv[at];
        const std::string what = argv[at + 1];
        const int pause_ms = step == "wait" ? std::atoi(what.c_str()) : between_steps_ms;
        QTimer::singleShot(pause_ms, window.get(), [this, argc, argv, at] { go_on(argc, argv, at + 2); });
        take(step, what);
    }

    QtLoop loop;
    PortsWithTarget ports;
    QtDialogs dialogs;
    MemoryStore settings;
    SqlBooks books;
    Shell shell;
    const NamedControls form{shell.controls};
    std::unique_ptr<MainWindow> window;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    int first = 1;
    if (first < argc && std::string_view{argv[first]} == "dark") {
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        QApplication::setPalette(dark_palette());
        ++first;
    }
    QApplication::setStyle(new SeenChoices(QApplication::style()->name()));
    bool english = false;
    if (first < argc && (std::string_view{argv[first]} == "en" || std::string_view{argv[first]} == "zh"))
        english = std::string_view{argv[first++]} == "en";
    Studio studio(english, model_at_start);
    QTimer::singleShot(between_steps_ms, studio.window.get(), [&] { studio.go_on(argc, argv, first); });
    return QApplication::exec();
}
