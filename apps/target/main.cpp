// vrk-target: a simulated chip on a pseudo terminal, in real time, for any program that opens serial devices.
#include "rehearsal/chip_of_model.h"

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
  --letter L       stepping letter of the boot loader, A to Z
  --version V      its version, as 6.3
  --clock HZ       crystal or RC clock
  --link PATH      a symbolic link to the terminal, for programs that want a fixed name
  --flash FILE     at the end, writes the flash there
  --data FILE      at the end, writes the data flash there
  --at-once        the chip takes no time of its own: only the wire does
At the end it tells what it complained of and its option rows 0 to 16.
The chip has no power yet. Reads commands, one a line: on, off, cycle, quit; runs until quit or an interrupt.
)";

struct Options {
    std::string model;
    std::string letter;
    std::string version;
    std::string clock;
    std::string link;
    std::string flash;
    std::string data;
    bool at_once = false;
};

std::optional<Options> parse_options(const std::vector<std::string>& words)
{
    Options options;
    struct Row {
        const char* word;
        std::string Options::*text;
    };
    constexpr Row rows[] = {{"--letter", &Options::letter}, {"--version", &Options::version},
        {"--clock", &Options::clock}, {"--link", &Options::link}, {"--flash", &Options::flash},
        {"--data", &Options::data}};
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Row* found = nullptr;
        for (const Row& row : rows) {
            if (words[i] == row.word)
                found = &row;
        }
        if (found != nullptr && i + 1 < words.size())
            options.*found->text = words[++i];
        else if (words[i] == "--at-once")
            options.at_once = true;
        else if (!words[i].starts_with("-") && options.model.empty())
            options.model = words[i];
        else
            return std::nullopt;
    }
    return options.model.empty() ? std::nullopt : std::optional{options};
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

// The chip's supply, switched by the commands that come in.
class Supply {
public:
    Supply(sim::PosixLoop& loop, sim::Chip& chip)
        : loop_(loop)
        , chip_(chip)
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
            chip_.power_up();
        } else if (command == "off") {
            chip_.power_off();
        } else if (command == "cycle") {
            chip_.power_off();
            loop_.call_at(loop_.now_us() + 100'000, [this] { chip_.power_up(); });
        } else if (command == "quit") {
            quit = true;
        } else if (!command.empty()) {
            std::cerr << "vrk-target: on, off, cycle or quit, not '" << command << "'" << std::endl;
        }
    }

    sim::PosixLoop& loop_;
    sim::Chip& chip_;
    std::string pending_;
};

} // namespace

int main(int argc, char** argv)
{
    const auto options = parse_options({argv + 1, argv + argc});
    if (!options) {
        std::cerr << usage;
        return 2;
    }
    McuTable table;
    load_mcu_tables(table, false);
    auto setup = chip_setup_of(table, options->model);
    if (!setup) {
        std::cerr << "vrk-target: no model '" << options->model << "' in the catalogue" << std::endl;
        return 2;
    }
    if (!set_up(*options, *setup)) {
        std::cerr << "vrk-target: a letter from A to Z, a version from 0.0 to 9.9, a clock from 32000 to 100000000 Hz"
                  << std::endl;
        return 2;
    }
    std::signal(SIGINT, [](int) { interrupted = 1; });
    std::signal(SIGTERM, [](int) { interrupted = 1; });

    sim::PosixLoop loop;
    sim::Chip chip(*setup);
    sim::PtyTarget terminal(loop, chip);
    if (!terminal.open(options->link)) {
        std::cerr << "vrk-target: " << terminal.fault() << std::endl;
        return 1;
    }
    chip.on_state_change.push_back(
        [](sim::Chip::State state) { std::cout << "state: " << sim::state_name(state) << std::endl; });
    Supply supply(loop, chip);
    std::cout << "terminal: " << terminal.path() << std::endl;
    while (!supply.quit && interrupted == 0)
        loop.yield();

    const std::string violations = chip.violations();
    std::cout << "violations: " << (violations.empty() ? "none" : "\n" + violations) << std::endl;
    std::cout << "options:";
    for (const std::uint8_t row : chip.options())
        std::cout << ' ' << hex_text(row, 2);
    std::cout << std::endl;
    const bool saved = save(options->flash, chip.flash()) && save(options->data, chip.data_flash());
    return saved ? 0 : 1;
}
