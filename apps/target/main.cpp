// vrk-target: a simulated chip on a pseudo terminal, in real time, for any program that opens serial devices: with its
// boot loader, or with a user program for a terminal and a monitor to look at.
#include "command_line.h"
#include "rehearsal/chip_of_model.h"
#include "target/user_programs.h"

#include "catalog/near_names.h"
#include "catalog/ranges.h"
#include "platform/text_number.h"
#include "sim/chip.h"
#include "sim/posix_loop.h"
#include "sim/pty_target.h"

#include <csignal>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace vrk;

constexpr const char* description = "a chip with its boot loader, or a user program, on a pseudo terminal in real time";
constexpr const char* more =
    "A chip has no power until it is told so. At the end it tells what it complained of and its option rows 0 to 16.\n"
    "A user program, for the terminal and the monitor, has power at once, on a line of 8 data bits without parity:\n"
    "  --terminal echo             repeats what it hears\n"
    "  --terminal stream RATE      numbered lines, RATE bytes a second; 0: without a pause\n"
    "  --terminal dump FILE        sends the bytes of FILE when it hears one, whichever\n"
    "  --terminal monitor          stops, sends its registers and memory in frames, waits for the tool's word; what "
    "it\n"
    "                              says before somebody listens is lost, so the first word is to let it run on\n"
    "\nReads commands, one a line: on, off, cycle, quit; runs until quit or an interrupt.";

struct Options {
    std::string model;
    std::vector<std::string> program; // and what it takes; empty where a boot loader is wanted
    ProgramWords words;
    std::string letter;
    std::string version;
    std::string clock;
    std::string link;
    std::string flash;
    std::string data;
    bool at_once = false;
};

void describe(CLI::App& app, Options& options)
{
    const auto add = [&app](const char* name, std::string& value, const char* type, const char* what) {
        app.add_option(name, value, what)->type_name(type);
    };
    app.add_option("MODEL", options.model, "of the catalogue");
    add("--letter", options.letter, "L", "stepping letter of the boot loader, A to Z");
    app.add_option("--version", options.version, "version of the boot loader, as 6.3; without V, that of this program")
        ->type_name("V")
        ->expected(0, 1);
    add("--clock", options.clock, "HZ", "crystal or RC clock");
    add("--flash", options.flash, "FILE", "at the end, writes the flash there");
    add("--data", options.data, "FILE", "at the end, writes the data flash there");
    app.add_flag("--at-once", options.at_once, "the chip takes no time of its own: only the wire does");
    app.add_option("--terminal", options.program, "a user program in place of a chip")
        ->type_name("PROGRAM [ARGUMENT]")
        ->expected(1, 2);
    add("--baud", options.words.baud, "N", "of the user program's line: 115200 unless told");
    add("--damaged", options.words.damaged, "N", "of the monitor's first N frames: have a wrong sum");
    add("--cut-off", options.words.cut_off, "N", "of the monitor's first N frames: break off in their middle");
    add("--link", options.link, "PATH", "a symbolic link to the terminal, for programs that want a fixed name");
    app.footer(more);
}

// False: neither a chip nor a program, or both, or a word too many.
bool take_program(Options& options)
{
    if (!options.program.empty())
        options.words.program = options.program[0];
    if (options.program.size() == 2) {
        if (!takes_argument(options.words.program))
            return false;
        options.words.argument = options.program[1];
    }
    return options.model.empty() != options.program.empty();
}

// False: one of the values cannot be.
bool set_up(const Options& options, sim::ChipSetup& setup)
{
    if (!options.letter.empty()) {
        if (options.letter.size() != 1 || options.letter[0] < 'A' || options.letter[0] > 'Z')
            return false;
        setup.letter = options.letter[0];
    }
    if (!options.version.empty()) {
        const int value = static_cast<int>(number_in(options.version) * 10 + 0.5);
        if (value < 0 || value > 99)
            return false;
        setup.version = static_cast<std::uint8_t>(value / 10 * 16 + value % 10);
    }
    if (!options.clock.empty()) {
        setup.crystal_hz = number_in(options.clock);
        if (setup.crystal_hz < 32000 || setup.crystal_hz > 100000000)
            return false;
    }
    if (options.at_once)
        setup.answers_at_once();
    return true;
}

volatile std::sig_atomic_t interrupted = 0;

bool save(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    if (path.empty())
        return true;
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file)
        return true;
    std::cerr << "vrk-target: cannot write '" << path << "'" << std::endl;
    return false;
}

// The target's supply, switched by the commands that come in.
class Supply {
public:
    Supply(sim::PosixLoop& loop, sim::Target& target)
        : loop_(loop)
        , target_(target)
    {
        loop_.watch(STDIN_FILENO, [this] { read_commands(); });
    }
    bool quit = false;

private:
    void read_commands()
    {
        char bytes[256];
        const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (count <= 0) {
            loop_.unwatch(STDIN_FILENO);
            return;
        }
        pending_.append(bytes, static_cast<std::size_t>(count));
        for (std::size_t end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
            obey(std::string{trimmed(pending_.substr(0, end))});
            pending_.erase(0, end + 1);
        }
    }
    void obey(const std::string& command)
    {
        if (command == "on") {
            target_.power(true);
        } else if (command == "off") {
            target_.power(false);
        } else if (command == "cycle") {
            target_.power(false);
            loop_.call_at(loop_.now_us() + 100'000, [this] { target_.power(true); });
        } else if (command == "quit") {
            quit = true;
        } else if (!command.empty()) {
            std::cerr << "vrk-target: on, off, cycle or quit, not '" << command << "'" << std::endl;
        }
    }

    sim::PosixLoop& loop_;
    sim::Target& target_;
    std::string pending_;
};

// Until quit or an interrupt. False: there is no terminal.
bool serve(sim::PosixLoop& loop, sim::Target& target, const std::string& link, bool power_at_once)
{
    sim::PtyTarget terminal(loop, target);
    if (!terminal.open(link)) {
        std::cerr << "vrk-target: " << terminal.fault() << std::endl;
        return false;
    }
    Supply supply(loop, target);
    std::cout << "terminal: " << terminal.path() << std::endl;
    if (power_at_once)
        target.power(true);
    while (!supply.quit && interrupted == 0)
        loop.yield();
    return true;
}

int serve_user_program(const Options& options)
{
    std::string fault;
    const auto program = make_user_program(options.words, fault);
    if (program == nullptr) {
        std::cerr << "vrk-target: " << fault << std::endl;
        return 2;
    }
    sim::PosixLoop loop;
    if (!serve(loop, *program, options.link, true))
        return 1;
    std::cout << "bytes heard: " << program->heard().size() << std::endl;
    return 0;
}

int serve_boot_loader(const Options& options)
{
    McuTable table;
    load_mcu_tables(table, false);
    auto setup = chip_setup_of(table, options.model);
    if (!setup) {
        std::cerr << "vrk-target: " << unknown_model_text(table, options.model) << std::endl;
        return 2;
    }
    if (!set_up(options, *setup)) {
        std::cerr << "vrk-target: a letter from A to Z, a version from 0.0 to 9.9, a clock from 32000 to 100000000 Hz"
                  << std::endl;
        return 2;
    }
    sim::PosixLoop loop;
    sim::Chip chip(*setup);
    chip.on_state_change.push_back(
        [](sim::Chip::State state) { std::cout << "state: " << sim::state_name(state) << std::endl; });
    if (!serve(loop, chip, options.link, false))
        return 1;
    const std::string violations = chip.violations();
    std::cout << "violations: " << (violations.empty() ? "none" : "\n" + violations) << std::endl;
    std::cout << "options:";
    for (const std::uint8_t row : chip.options())
        std::cout << ' ' << hex_text(row, 2);
    std::cout << std::endl;
    const bool saved = save(options.flash, chip.flash()) && save(options.data, chip.data_flash());
    return saved ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app(description, "vrk-target");
    describe(app, options);
    if (const auto status = parse_command_line(app, argc, argv))
        return *status;
    if (app.count("--version") > 0 && options.version.empty()) {
        std::cout << version_line(app) << std::endl;
        return 0;
    }
    if (!take_program(options)) {
        std::cerr << "vrk-target: one of a MODEL and a --terminal PROGRAM is wanted; --help tells more" << std::endl;
        return 2;
    }
    std::signal(SIGINT, [](int) { interrupted = 1; });
    std::signal(SIGTERM, [](int) { interrupted = 1; });
    return options.model.empty() ? serve_user_program(options) : serve_boot_loader(options);
}
