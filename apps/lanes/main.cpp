// vrk-line: one window of tiles, a lane for each port, one job for all.
#include "command_line.h"
#include "lanes/line_options.h"
#include "lanes/line_window.h"

#include "host/end_signals.h"
#include "host/qt_settings.h"
#include "host/qt_words.h"
#include "shell/language.h"

#include <QApplication>
#include <QStandardPaths>

#include <cstdlib>

namespace {

using namespace vrk;

constexpr int most_lanes = 32;
constexpr int lanes_at_first = 4;

std::string settings_file()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return (folder + "/VRK-ISP/vrk-line.ini").toStdString();
}

int how_many(int wanted, const QStringList& ports, SettingsStore& settings)
{
    if (wanted > 0)
        return wanted;
    if (!ports.isEmpty())
        return static_cast<int>(ports.size());
    const int stored = std::atoi(settings.get("Line", "Lanes", "0").c_str());
    return stored > 0 && stored <= most_lanes ? stored : lanes_at_first;
}

} // namespace

int main(int argc, char** argv)
{
    lanes::LineOptions options;
    int wanted = 0;
    CLI::App app("programs one job into the chips of several fixtures at once", "vrk-line");
    lanes::describe_line(app, options);
    app.add_option("--lanes", wanted, "how many; without it as many as ports, or as last time")
        ->type_name("N")
        ->check(CLI::Range(1, most_lanes));
    if (const auto status = parse_command_line(app, argc, argv))
        return *status;
    QApplication application(argc, argv);
    QtSettings settings(settings_file());
    const std::string language =
        options.language.empty() ? qEnvironmentVariable(language_variable).toStdString() : options.language;
    const bool english = starts_in_english(settings, language);
    const auto terms = lanes::terms_of(options, english, QApplication::applicationDirPath());
    if (!terms)
        return 2;
    const QtWords words(english);
    const QStringList ports = lanes::ports_of(options);
    lanes::LineWindow window(*terms, settings, how_many(wanted, ports, settings), ports);
    const EndSignals ended_from_outside([&window] {
        window.stop_all();
        QApplication::quit();
    });
    window.showMaximized(); // read from three metres
    return QApplication::exec();
}
