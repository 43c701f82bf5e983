// vrk-isp: the window.
#include "command_line.h"
#include "isp/ports_with_target.h"
#include "isp/target_panel.h"

#include "form/named_controls.h"

#include "catalog/near_names.h"
#include "catalog/ranges.h"
#include "host/end_signals.h"
#include "host/qt_dialogs.h"
#include "host/qt_loop.h"
#include "host/qt_settings.h"
#include "host/qt_words.h"
#include "ledger/sql_books.h"
#include "shell/device.h"
#include "shell/events.h"
#include "shell/language.h"
#include "shell/messages.h"
#include "shell/open_path.h"
#include "shell/ports.h"
#include "shell/start_up.h"
#include "window/main_window.h"
#include "window/seen_choices.h"

#include <QApplication>
#include <QStandardPaths>
#include <QStyle>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vrk;

// Set by `run` only: a first look at the program has a simulated chip chosen and this file loaded.
constexpr const char* trial_file_variable = "VRK_ISP_TRIAL_FILE";
constexpr const char* trial_model = "Juniper-60Q";

struct Options {
    std::string language;
    std::string port;
    std::string model;
    std::string file;
};

void describe(CLI::App& app, Options& options)
{
    app.add_option("FILE", options.file, "a code file (.hex, .bin) or a project (.vrk) to begin with");
    app.add_option("--language", options.language, "zh or en, for this run; the menu chooses it for good")
        ->type_name("WORD")
        ->check(CLI::IsMember({"zh", "en"}));
    app.add_option("--port", options.port, "the serial port: a device, a link to one, a pseudo terminal")
        ->type_name("PATH");
    app.add_option("--model", options.model, "the model to begin with")->type_name("MODEL");
    app.footer("The environment variable VRK_ISP_LANGUAGE (zh, en) chooses the language of one run too.");
}

// What ends the program by itself must do without a display: the window's own words are not understood before that.
bool only_tells(int argc, char** argv)
{
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    return std::ranges::any_of(
        words, [](std::string_view word) { return word == "--help" || word == "-h" || word == "--version"; });
}

// False: there is no such model; it has been said which come near.
bool model_is_known(std::string& model)
{
    if (model.empty())
        return true;
    McuTable table;
    load_mcu_tables(table, false);
    const auto name = model_named(table, model);
    if (name)
        model = *name;
    else
        std::cerr << "vrk-isp: " << unknown_model_text(table, model) << std::endl;
    return name.has_value();
}

// What is stored is to be found from any folder.
void make_absolute(std::string& path)
{
    if (!path.empty())
        path = std::filesystem::absolute(path).lexically_normal().string();
}

// Behind the stored settings: a word on the command line goes before what was stored.
void take_options(Shell& shell, const Options& options)
{
    if (!options.port.empty())
        add_port(shell, options.port);
    if (!options.model.empty())
        TreeViewDevice_NodeClick(shell, options.model);
}

void begin_trial(Shell& shell, const std::string& file)
{
    ComboBox& port = NamedControls{shell.controls}.list("combCommPort");
    const auto& items = port.items();
    choose_item(shell, port, static_cast<int>(items.size()) - 1);
    choose_node(shell, NamedControls{shell.controls}.tree("TreeViewDevice"), trial_model);
    open_path(shell, file);
}

// Qt ends a program that finds no display with an abort; `run` asks beforehand, and is answered by the status.
int try_display(int argc, char** argv)
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString&) {
        if (type == QtFatalMsg)
            std::_Exit(1);
    });
    const QGuiApplication application(argc, argv);
    return 0;
}

int run_window(const Options& options)
{
    QtLoop loop;
    const std::string trial_file = qEnvironmentVariable(trial_file_variable).toStdString();
    std::unique_ptr<SettingsStore> settings;
    if (trial_file.empty())
        settings = std::make_unique<QtSettings>();
    else
        settings = std::make_unique<MemoryStore>(); // a first look leaves nothing behind
    const std::string language =
        options.language.empty() ? qEnvironmentVariable(language_variable).toStdString() : options.language;
    const bool english = starts_in_english(*settings, language);
    const QtWords words(english);
    PortsWithTarget ports(loop, {}, in_language(english, simulated_target));
    QtDialogs dialogs;
    Shell shell(Platform{loop, ports, dialogs, *settings});
    SqlBooks books;
    if (trial_file.empty()) // a first look leaves nothing behind
        shell.books = &books;
    shell.language_is_english = english;
    shell.loader.application_dir = QApplication::applicationDirPath().toStdString();
    shell.loader.documents_dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    start_up(shell);
    take_options(shell, options);
    if (!trial_file.empty())
        begin_trial(shell, trial_file);

    QApplication::setStyle(new SeenChoices(QApplication::style()->name()));
    MainWindow window(shell);
    dialogs.parent = &window;
    new TargetPanel(window, ports, trial_model); // the window's own from then on
    window.show();
    const EndSignals end_signals([&window] { window.leave(); });
    if (!options.file.empty()) // its boxes stand over the window
        loop.call_at(loop.now_us(), [&shell, &options] { open_path(shell, options.file); });
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string_view{argv[1]} == "--try-display")
        return try_display(argc, argv);
    std::unique_ptr<QApplication> application;
    if (!only_tells(argc, argv))
        application = std::make_unique<QApplication>(argc, argv); // takes the words that are Qt's own
    Options options;
    CLI::App app("programs 8051-compatible microcontrollers in the system, over a serial port", "vrk-isp");
    describe(app, options);
    if (const auto status = parse_command_line(app, argc, argv))
        return *status;
    make_absolute(options.file);
    make_absolute(options.port);
    return model_is_known(options.model) ? run_window(options) : 2;
}
