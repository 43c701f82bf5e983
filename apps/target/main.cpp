// vrk-target: a simulated chip on a pseudo terminal, in real time, for any program that opens serial devices: with its
// boot loader, or with a user program for a terminal and a monitor to look at.
#include "rehearsal/chip_of_model.h"
#include "target/user_programs.h"

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

constexpr const char* usage = R"(usage: vrk-target MODEL [OPTION]...
       vrk-target --terminal PROGRAM [OPTION]...
       vrk-target --help

A chip with its boot loader, MODEL of the catalogue:
  --letter L       stepping letter of the boot loader, A to Z
  --version V      its version, as 6.3
  --clock HZ       crystal or RC clock
  --flash FILE     at the end, writes the flash there
  --data FILE      at the end, writes the data flash there
  --at-once        the chip takes no time of its own: only the wire does
At the end it tells what it complained of and its option rows 0 to 16. It has no power yet.

A user program on a line of 8 data bits without parity, for the terminal and the monitor. It has power at once:
  --terminal echo             repeats what it hears
  --terminal stream RATE      numbered lines, RATE bytes a second; 0: without a pause
  --terminal dump FILE        sends the bytes of FILE when it hears one, whichever
  --terminal monitor          stops, sends its registers and memory in frames, waits for the tool's word; what it says
                              before somebody listens is lost, so the first word is to let it run on
  --baud N                    of the line: 115200 unless told
  --damaged N, --cut-off N    of the monitor's first N frames: have a wrong sum, break off in their middle

With both:
  --link PATH      a symbolic link to the terminal, for programs that want a fixed name
Reads commands, one a line: on, off, cycle, quit; runs until quit or an interrupt.
)";

struct Options {
    bool help = false;
    std::string model;
    ProgramWords words; // their program is empty where a boot loader is wanted
    std::string letter;
    std::string version;
    std::string clock;
    std::string link;
    std::string flash;
    std::string data;
    bool at_once = false;
};

// Where the word behind this one goes; nullptr: it takes none.
std::string* place_of_value(Options& options, const std::string& word)
{
    struct Row {
        const char* word;
        std::string& text;
    };
    const Row rows[] = {{"--letter", options.letter}, {"--version", options.version}, {"--clock", options.clock},
        {"--link", options.link}, {"--flash", options.flash}, {"--data", options.data},
        {"--terminal", options.words.program}, {"--baud", options.words.baud}, {"--damaged", options.words.damaged},
        {"--cut-off", options.words.cut_off}};
    for (const Row& row : rows) {
        if (word == row.word)
            return &row.text;
    }
    return nullptr;
}

std::optional<Options> parse_options(const std::vector<std::string>& words)
{
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string* value = place_of_value(options, words[i]);
        if (value != nullptr && i + 1 < words.size()) {
            *value = words[++i];
            if (value == &options.words.program && takes_argument(*value) && i + 1 < words.size())
                options.words.argument = words[++i];
        } else if (words[i] == "--help") {
            options.help = true;
        } else if (words[i] == "--at-once") {
            options.at_once = true;
        } else if (!words[i].starts_with("-") && options.model.empty()) {
            options.model = words[i];
        } else {
            return std::nullopt;
        }
    }
    const bool one_of_both = options.model.empty() != options.words.program.empty();
    return options.help || one_of_both ? std::optional{options} : std::nullopt;
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
        std::cerr << "vrk-target: no model '" << options.model << "' in the catalogue" << std::endl;
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
    const auto options = parse_options({argv + 1, argv + argc});
    if (!options) {
        std::cerr << usage;
        return 2;
    }
    if (options->help) {
        std::cout << usage;
        return 0;
    }
    std::signal(SIGINT, [](int) { interrupted = 1; });
    std::signal(SIGTERM, [](int) { interrupted = 1; });
    return options->words.program.empty() ? serve_boot_loader(*options) : serve_user_program(*options);
}
