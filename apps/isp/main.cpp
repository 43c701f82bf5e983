// vrk-isp: the window.
#include "isp/ports_with_target.h"
#include "isp/target_panel.h"

#include "form/named_controls.h"
#include "host/qt_dialogs.h"
#include "host/qt_loop.h"
#include "host/qt_settings.h"
#include "host/qt_words.h"
#include "shell/events.h"
#include "shell/language.h"
#include "shell/open_file.h"
#include "shell/start_up.h"
#include "window/main_window.h"

#include <QApplication>
#include <QStandardPaths>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

using namespace vrk;

// Set by `run` only: a first look at the program has a simulated chip chosen and this file loaded.
constexpr const char* trial_file_variable = "VRK_ISP_TRIAL_FILE";
constexpr const char* trial_model = "Juniper-60Q";

void begin_trial(Shell& shell, const std::string& file)
{
    choose_node(shell, NamedControls{shell.controls}.tree("TreeViewDevice"), trial_model);
    take_path(shell, BufferKind::code, file);
    load_file(shell, file, shell.code_buffer);
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

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string_view{argv[1]} == "--try-display")
        return try_display(argc, argv);
    QApplication application(argc, argv);
    QtLoop loop;
    const std::string trial_file = qEnvironmentVariable(trial_file_variable).toStdString();
    std::unique_ptr<SettingsStore> settings;
    if (trial_file.empty())
        settings = std::make_unique<QtSettings>();
    else
        settings = std::make_unique<MemoryStore>(); // a first look leaves nothing behind
    const bool english = starts_in_english(*settings, qEnvironmentVariable(language_variable).toStdString());
    const QtWords words(english);
    PortsWithTarget ports(loop, {}, in_language(english, simulated_target));
    QtDialogs dialogs;
    Shell shell(Platform{loop, ports, dialogs, *settings});
    shell.language_is_english = english;
    shell.loader.application_dir = QApplication::applicationDirPath().toStdString();
    shell.loader.documents_dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    start_up(shell);

    if (!trial_file.empty()) {
        ComboBox& ports_offered = NamedControls{shell.controls}.list("combCommPort");
        choose_item(shell, ports_offered, static_cast<int>(ports_offered.items().size()) - 1);
        begin_trial(shell, trial_file);
    }
    MainWindow window(shell);
    dialogs.parent = &window;
    new TargetPanel(window, ports, trial_model); // the window's own from then on
    window.show();
    return QApplication::exec();
}
