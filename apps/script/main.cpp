// vrk-script: the window's controls without the window.
#include "command_line.h"
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"
#include "script/commands.h"
#include "script/runner.h"

#include "catalog/near_names.h"
#include "catalog/ranges.h"
#include "host/line_source.h"
#include "host/qt_loop.h"
#include "host/qt_ports.h"
#include "host/qt_settings.h"
#include "ledger/sql_books.h"
#include "shell/language.h"
#include "shell/ports.h"
#include "shell/start_up.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <csignal>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace vrk;
using namespace vrk::script;

struct Options {
    bool json = false;
    bool english = false;
    std::optional<std::string> settings;
    std::vector<std::string> ports;
    std::optional<std::string> rehearse;
    std::string script = "-";
};

constexpr const char* statuses =
    "status: 0; 1 when a command failed, the input ended while a sequence ran, or the output cannot be written;\n"
    "        2 for a bad command line\n";

// Its name may be "-": standard input, as without it.
void describe(CLI::App& app, Options& options)
{
    app.add_option("SCRIPT", options.script, "a file of commands, one a line; - or nothing reads standard input");
    app.add_flag("--json", options.json, "each command answers with one line of JSON");
    app.add_option("--settings", options.settings, "the settings are this file's; without it a run forgets them")
        ->type_name("FILE");
    add_repeated(app, "--port", options.ports, "a serial device in front of the list; the first is chosen")
        ->type_name("PATH");
    app.add_option(
           "--rehearse", options.rehearse, "no port: a simulated chip in virtual time, without power until 'power on'")
        ->type_name("MODEL");
    app.add_flag("--english", options.english, "the English edition, whatever is stored");
    app.footer(std::string{statuses} + "\ncommands:\n" + command_help());
}

// Null: what is named is a device, a folder or a pipe. Whatever else keeps the settings from the disk is told in a box.
std::unique_ptr<SettingsStore> open_settings(const Options& options)
{
    if (!options.settings)
        return std::make_unique<MemoryStore>();
    auto settings = std::make_unique<QtSettings>(*options.settings);
    const auto fault = settings->write_through();
    return fault && fault->kind == SettingsFault::Kind::no_file ? nullptr : std::move(settings);
}

std::string plain(const Json& value)
{
    if (value.is_null())
        return {};
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void print_answer(const Answer& answer, const std::string& script, bool json)
{
    if (!answer.note.empty())
        std::cerr << script << ":" << answer.line << ": " << answer.note << std::endl;
    if (json) {
        Json line = {{"ok", answer.error.empty()}};
        if (answer.error.empty())
            line["value"] = answer.value;
        else
            line["error"] = answer.error;
        std::cout << line.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
        return;
    }
    if (!answer.error.empty())
        std::cerr << script << ":" << answer.line << ": " << answer.error << std::endl;
    else if (!answer.value.is_null())
        std::cout << plain(answer.value) << std::endl;
}

void tell_places(LoaderState& loader)
{
    loader.application_dir = QCoreApplication::applicationDirPath().toStdString();
    loader.documents_dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
}

void break_off(Runner& runner)
{
    const std::string said = runner.break_off();
    if (!said.empty())
        std::cerr << "vrk-script: " << said << std::endl;
}

// Runs until the script has ended and all that it started has wound down.
int run_to_its_end(Runner& runner, EventLoop& loop, const Shell& shell)
{
    loop.before_sleep = [&runner] { return runner.turn(); };
    while (!shell.unloaded || shell.running) {
        loop.yield();
        if (!std::cout)
            break_off(runner);
    }
    loop.before_sleep = nullptr;
    return runner.failed() || !std::cout ? 1 : 0;
}

class ChipAccess final : public TargetAccess {
public:
    explicit ChipAccess(sim::Chip& chip)
        : chip_(chip)
    {
    }
    void power(bool on) override { chip_.power(on); }
    bool has_power() const override { return chip_.state() != sim::Chip::State::off; }
    Json describe() const override
    {
        Json frames = Json::object();
        for (int code = 0; code < 256; ++code) {
            const int count = chip_.frame_count(static_cast<std::uint8_t>(code));
            if (count > 0) {
                const auto byte = static_cast<std::uint8_t>(code);
                frames[hex_bytes(std::span{&byte, 1})] = count;
            }
        }
        return {{"model", chip_.setup().model.name}, {"state", chip_.state_name()}, {"flash", hex_bytes(chip_.flash())},
            {"data_flash", hex_bytes(chip_.data_flash())}, {"options", hex_bytes(chip_.options())}, {"frames", frames},
            {"power_ups", chip_.power_ups()}, {"violations", chip_.violations()}};
    }

private:
    sim::Chip& chip_;
};

using Answering = std::function<void(const Answer&)>;

// Everything in one process and in no time: lines are read when the script has nothing else to wait for.
int rehearse(const sim::ChipSetup& setup, const Options& options, SettingsStore& settings, std::istream& lines,
    const Answering& answering)
{
    Rehearsal bench(setup, &settings, options.english);
    tell_places(bench.shell.loader);
    ChipAccess target(bench.chip);
    std::unique_ptr<Runner> runner;
    const auto next_line = [&]() -> std::optional<std::string> {
        std::string line;
        if (std::getline(lines, line))
            return without_line_end(std::move(line));
        break_off(*runner);
        return std::nullopt;
    };
    runner = std::make_unique<Runner>(
        Runner::Setup{bench.shell, bench.dialogs, &target, next_line, answering, options.script != "-"});
    return run_to_its_end(*runner, bench.loop, bench.shell);
}

// On the ports of the machine, in real time: what the script has started goes on while it waits for its next line.
int run_for_real(const Options& options, SettingsStore& settings, LineSource& lines, const Answering& answering)
{
    QtLoop loop;
    QtPorts ports(options.ports);
    ScriptedDialogs dialogs;
    Shell shell(Platform{loop, ports, dialogs, settings});
    SqlBooks books; // simulated chips get none: they would use up the numbers of real ones
    shell.books = &books;
    shell.language_is_english = options.english;
    tell_places(shell.loader);
    start_up(shell);
    if (!options.ports.empty())
        choose_port(shell, options.ports.front());
    std::unique_ptr<Runner> runner;
    const auto next_line = [&]() -> std::optional<std::string> {
        auto line = lines.take();
        if (!line && lines.ended())
            break_off(*runner);
        return line;
    };
    runner =
        std::make_unique<Runner>(Runner::Setup{shell, dialogs, nullptr, next_line, answering, options.script != "-"});
    return run_to_its_end(*runner, loop, shell);
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // who does not read the answers any more is told by the status
    QCoreApplication application(argc, argv);
    Options options;
    CLI::App app("drives the controls of the window by a script, without the window", "vrk-script");
    describe(app, options);
    if (const auto status = parse_command_line(app, argc, argv))
        return *status;
    std::ifstream file;
    if (options.script != "-") {
        file.open(options.script);
        if (!file) {
            std::cerr << "vrk-script: cannot read '" << options.script << "'" << std::endl;
            return 2;
        }
    }
    std::istream& lines = options.script == "-" ? std::cin : file;
    const std::string name = options.script == "-" ? "script" : options.script;
    const auto settings = open_settings(options);
    if (settings == nullptr) {
        std::cerr << "vrk-script: '" << *options.settings << "' is no file" << std::endl;
        return 2;
    }
    if (!options.english)
        options.english = starts_in_english(*settings, qEnvironmentVariable(language_variable).toStdString());
    const Answering answering = [&](const Answer& answer) { print_answer(answer, name, options.json); };

    if (options.rehearse) {
        McuTable table;
        load_mcu_tables(table, false);
        const auto setup = chip_setup_of(table, *options.rehearse);
        if (!setup) {
            std::cerr << "vrk-script: " << unknown_model_text(table, *options.rehearse) << std::endl;
            return 2;
        }
        return rehearse(*setup, options, *settings, lines, answering);
    }
    if (options.script == "-") {
        StandardInput input;
        return run_for_real(options, *settings, input, answering);
    }
    FileLines input(file);
    return run_for_real(options, *settings, input, answering);
}
