// vrk-target: a simulated device on a pseudo terminal, in real time, for any program that opens serial devices: a chip
// with its boot loader or with user code, a user program for a terminal and a monitor to look at, an off-line board.
#include "rehearsal/chip_of_model.h"
#include "target/programmer_board.h"
#include "target/serve.h"
#include "target/user_programs.h"

#include "catalog/ranges.h"
#include "platform/text_number.h"
#include "sim/chip.h"
#include "sim/demo_program.h"
#include "sim/user_code.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace vrk;

constexpr const char* usage = R"(usage: vrk-target MODEL [OPTION]...
       vrk-target --demo [OPTION]...
       vrk-target --board MODEL [OPTION]...
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

A chip with a downloader of its own in its user code, a Birch-16 at 115200 baud:
  --flash FILE     at the end, writes the flash there
  --deaf-to HEX    hears no frame with one of these codes, as "B3 B4"

Both can have user code in front, which waits for a command and is then the boot loader or the downloader:
  --command HEX    the command, as "12 34 AB"
  --baud N         of its line: 115200 unless told

An off-line programmer board that is to program chips of MODEL. It has no power yet:
  --firmware XX    its version, two hexadecimal digits: 17 unless told
  --capacity KB    of code and data that it holds: 62 unless told
  --single-area    it shows its memory in two banks
  --serial FILE    what its 24C512 holds
  --image FILE     at the end, writes its 64 KB there, as they were before it programmed a chip
  --flash FILE     at the end, writes the flash of the chip that it programmed last there
One command more: program puts a new chip into its socket. At the end it tells what it complained of, how many chips it
may still program, and the option rows of the last one.

A user program on a line of 8 data bits without parity, for the terminal and the monitor. It has power at once:
  --terminal echo             repeats what it hears
  --terminal stream RATE      numbered lines, RATE bytes a second; 0: without a pause
  --terminal dump FILE        sends the bytes of FILE when it hears one, whichever
  --terminal monitor          stops, sends its registers and memory in frames, waits for the tool's word; what it says
                              before somebody listens is lost, so the first word is to let it run on
  --baud N                    of the line: 115200 unless told
  --damaged N, --cut-off N    of the monitor's first N frames: have a wrong sum, break off in their middle

With all of them:
  --link PATH      a symbolic link to the terminal, for programs that want a fixed name
Reads commands, one a line: on, off, cycle, quit; runs until quit or an interrupt.
)";

struct Options {
    bool help = false;
    std::string model;
    ProgramWords words; // their program is empty where a boot loader is wanted
    BoardWords board; // their model is empty where no board is wanted
    bool demo = false;
    std::string command; // of user code in front
    std::string deaf_to;
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
        {"--cut-off", options.words.cut_off}, {"--board", options.board.model}, {"--firmware", options.board.firmware},
        {"--capacity", options.board.capacity}, {"--serial", options.board.serial}, {"--image", options.board.image},
        {"--command", options.command}, {"--deaf-to", options.deaf_to}};
    for (const Row& row : rows) {
        if (word == row.word)
            return &row.text;
    }
    return nullptr;
}

bool* place_of_mark(Options& options, const std::string& word)
{
    struct Row {
        const char* word;
        bool& mark;
    };
    const Row rows[] = {{"--help", options.help}, {"--at-once", options.at_once}, {"--demo", options.demo},
        {"--single-area", options.board.single_area}};
    for (const Row& row : rows) {
        if (word == row.word)
            return &row.mark;
    }
    return nullptr;
}

std::optional<Options> parse_options(const std::vector<std::string>& words)
{
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string* value = place_of_value(options, words[i]);
        bool* mark = place_of_mark(options, words[i]);
        if (value != nullptr && i + 1 < words.size()) {
            *value = words[++i];
            if (value == &options.words.program && takes_argument(*value) && i + 1 < words.size())
                options.words.argument = words[++i];
        } else if (mark != nullptr) {
            *mark = true;
        } else if (!words[i].starts_with("-") && options.model.empty()) {
            options.model = words[i];
        } else {
            return std::nullopt;
        }
    }
    const int kinds = (options.model.empty() ? 0 : 1) + (options.words.program.empty() ? 0 : 1) +
        (options.board.model.empty() ? 0 : 1) + (options.demo ? 1 : 0);
    return options.help || kinds == 1 ? std::optional{options} : std::nullopt;
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

// "12 34 AB" as bytes, up to the first word that is no number.
std::vector<std::uint8_t> bytes_in(const std::string& text)
{
    std::vector<std::uint8_t> bytes;
    const char* at = text.c_str();
    for (char* end = nullptr;; at = end) {
        const unsigned long byte = std::strtoul(at, &end, 16);
        if (end == at)
            return bytes;
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
}

int refuse(const std::string& why)
{
    std::cerr << "vrk-target: " << why << std::endl;
    return 2;
}

// The target itself, or with user code in front of it where a command is wanted. False: it could not be served.
bool serve_behind_command(sim::Target& target, const Options& options, const LineSettings& line)
{
    sim::PosixLoop loop;
    if (options.command.empty())
        return serve(loop, target, {options.link, false, {}});
    sim::UserCode user_code(target, line, bytes_in(options.command));
    const bool served = serve(loop, user_code, {options.link, false, {}});
    std::cout << "commands heard: " << user_code.commands_heard() << std::endl;
    return served;
}

int serve_user_program(const Options& options)
{
    std::string fault;
    const auto program = make_user_program(options.words, fault);
    if (program == nullptr)
        return refuse(fault);
    sim::PosixLoop loop;
    if (!serve(loop, *program, {options.link, true, {}}))
        return 1;
    std::cout << "bytes heard: " << program->heard().size() << std::endl;
    return 0;
}

void tell_complaints(const std::string& violations)
{
    std::cout << "violations: " << (violations.empty() ? "none" : "\n" + violations) << std::endl;
}

int serve_demo(const Options& options)
{
    std::string fault;
    const auto line = line_of_program(options.words.baud, fault);
    if (!line)
        return refuse(fault);
    sim::DemoProgram demo({});
    constexpr int always = 1'000'000;
    for (const std::uint8_t code : bytes_in(options.deaf_to))
        demo.deaf_to[code] = always;
    if (!serve_behind_command(demo, options, *line))
        return 1;
    tell_complaints(demo.violations());
    std::cout << "runs the code: " << (demo.runs_code() ? "yes" : "no") << std::endl;
    return save(options.flash, demo.flash(0, sim::DemoSetup{}.flash_size - 1)) ? 0 : 1;
}

int serve_boot_loader(const Options& options, const McuTable& table)
{
    auto setup = chip_setup_of(table, options.model);
    if (!setup)
        return refuse("no model '" + options.model + "' in the catalogue");
    if (!set_up(options, *setup))
        return refuse("a letter from A to Z, a version from 0.0 to 9.9, a clock from 32000 to 100000000 Hz");
    std::string fault;
    const auto line = line_of_program(options.words.baud, fault);
    if (!line)
        return refuse(fault);
    sim::Chip chip(*setup);
    chip.on_state_change.push_back(
        [](sim::Chip::State state) { std::cout << "state: " << sim::state_name(state) << std::endl; });
    if (!serve_behind_command(chip, options, *line))
        return 1;
    tell_complaints(chip.violations());
    std::cout << option_rows(chip) << std::endl;
    const bool saved = save(options.flash, chip.flash()) && save(options.data, chip.data_flash());
    return saved ? 0 : 1;
}

int serve_board(const Options& options, const McuTable& table)
{
    std::string fault;
    auto board = make_programmer_board(table, options.board, fault);
    if (board == nullptr)
        return refuse(fault);
    sim::PosixLoop loop;
    const auto program = [&board](const std::string& command) { return command == "program" && board->program_next(); };
    if (!serve(loop, board->board(), {options.link, false, program}))
        return 1;
    tell_complaints(board->board().violations());
    std::cout << "chips left: " << sim::chips_left(board->board()) << std::endl;
    std::cout << board->last_options() << std::endl;
    const bool saved = save(options.board.image, board->image()) && save(options.flash, board->last_flash());
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
    end_on_interrupts();
    if (!options->words.program.empty())
        return serve_user_program(*options);
    if (options->demo)
        return serve_demo(*options);
    static McuTable table;
    load_mcu_tables(table, false);
    return options->board.model.empty() ? serve_boot_loader(*options, table) : serve_board(*options, table);
}
