// vrk-line: one window of tiles, a lane for each port, one job for all.
#include "command_line.h"
#include "lanes/job_hash.h"
#include "lanes/line_window.h"

#include "host/qt_settings.h"
#include "host/qt_words.h"
#include "shell/language.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdlib>
#include <iostream>

namespace {

using namespace vrk;

struct Options {
    std::string job;
    std::vector<std::string> ports;
    std::string language;
    std::string station;
    int lanes = 0;
};

constexpr int most_lanes = 32;
constexpr int lanes_at_first = 4;

void describe(CLI::App& app, Options& options)
{
    app.add_option("JOB", options.job, "a project (.vrk): the same for all lanes")->required();
    add_repeated(app, "--port", options.ports, "the port of a lane; once for each lane, in their order")
        ->type_name("PORT");
    app.add_option("--lanes", options.lanes, "how many; without it as many as ports, or as last time")
        ->type_name("N")
        ->check(CLI::Range(1, most_lanes));
    app.add_option("--station", options.station, "its name in the record; without it the machine's")->type_name("NAME");
    app.add_option("--language", options.language, "zh or en")->type_name("WORD")->check(CLI::IsMember({"zh", "en"}));
    app.prefix_command();
    app.footer("What stands behind -- goes to each lane, as to `vrk flash`: --ledger, --order, --same-board.");
}

std::string settings_file()
{
    return (QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/VRK-ISP/vrk-line.ini")
        .toStdString();
}

int how_many(const Options& options, SettingsStore& settings)
{
    if (options.lanes > 0)
        return options.lanes;
    if (!options.ports.empty())
        return static_cast<int>(options.ports.size());
    const int stored = std::atoi(settings.get("Line", "Lanes", "0").c_str());
    return stored > 0 && stored <= most_lanes ? stored : lanes_at_first;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app("programs one job into the chips of several fixtures at once", "vrk-line");
    describe(app, options);
    if (const auto status = parse_command_line(app, argc, argv))
        return *status;
    lanes::LineTerms terms;
    terms.job = QFileInfo(QString::fromStdString(options.job)).absoluteFilePath();
    if (lanes::sha256_of_file(terms.job).isEmpty()) {
        std::cerr << "vrk-line: " << options.job << " cannot be read" << std::endl;
        return 2;
    }
    QApplication application(argc, argv);
    QtSettings settings(settings_file());
    const std::string language =
        options.language.empty() ? qEnvironmentVariable(language_variable).toStdString() : options.language;
    terms.english = starts_in_english(settings, language);
    const QtWords words(terms.english);
    terms.vrk = QApplication::applicationDirPath() + "/vrk";
    terms.station = QString::fromStdString(options.station);
    for (const std::string& more : app.remaining()) {
        if (more != "--")
            terms.more << QString::fromStdString(more);
    }
    QStringList ports;
    for (const std::string& port : options.ports)
        ports << QString::fromStdString(port);
    lanes::LineWindow window(terms, settings, how_many(options, settings), ports);
    window.showMaximized(); // read from three metres
    return QApplication::exec();
}
