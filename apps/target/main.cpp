// vrk-target: a simulated device on a pseudo terminal, in real time, for any program that opens serial devices: a chip
// with its boot loader or with user code, a user program for a terminal and a monitor to look at, an off-line board.
#include "command_line.h"
#include "rehearsal/chip_of_model.h"
#include "target/fixture.h"
#include "target/programmer_board.h"
#include "target/serve.h"
#include "target/user_programs.h"

#include "catalog/near_names.h"
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

constexpr const char* description = "a simulated device on a pseudo terminal, in real time";
constexpr const char* more =
    "One of these is served:\n"
    "  a chip with its boot loader, MODEL of the catalogue. It has no power until it is told so; at the end it tells\n"
    "  what it complained of and its option rows 0 to 16;\n"
    "  --demo, a chip with a downloader of its own in its user code, a Birch-16 at 115200 baud;\n"
    "  either with user code in front that waits for --command;\n"
    "  --board MODEL, an off-line programmer board for chips of that model. It has no power yet; the command program\n"
    "  puts a new chip into its socket, and at the end it tells how many chips it may still program;\n"
    "  --terminal, a user program on a line of 8 data bits without parity. It has power at once:\n"
    "    --terminal echo             repeats what it hears\n"
    "    --terminal stream RATE      numbered lines, RATE bytes a second; 0: without a pause\n"
    "    --terminal dump FILE        sends the bytes of FILE when it hears one, whichever\n"
    "    --terminal monitor          stops, sends its registers and memory in frames, waits for the tool's word; what "
    "it says\n"
    "                     before somebody listens is lost, so the first word is to let it run on\n"
    "\nReads commands, one a line: on, off, cycle, quit; runs until quit or an interrupt.";

struct Options {
    std::string model;
    std::vector<std::string> program; // and what it takes; empty where none is wanted
    ProgramWords words;
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
    std::string refused_block;
    FixtureWords fixture;
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
    add("--flash", options.flash, "FILE", "at the end, writes the chip's flash there");
    add("--data", options.data, "FILE", "at the end, writes the data flash there");
    app.add_flag("--at-once", options.at_once, "the chip takes no time of its own: only the wire does");
    add("--refuse-block", options.refused_block, "HEX", "the chip takes no block with this address in it");
    add("--fixture", options.fixture.pause_ms, "MS",
        "a fixture of a line: chips come by themselves, MS after one another");
    add("--chips", options.fixture.chips, "FILE",
        "a line is added there for each chip of the fixture that was written");
    add("--peek", options.fixture.peek, "HEX:N", "and in that line stand N bytes of its flash from this address on");
    app.add_flag("--demo", options.demo, "a chip with a downloader in its user code");
    add("--deaf-to", options.deaf_to, "HEX", "the downloader hears no frame with one of these codes, as 'B3 B4'");
    add("--command", options.command, "HEX", "user code in front waits for this command, as '12 34 AB'");
    add("--board", options.board.model, "MODEL", "an off-line programmer board for chips of that model");
    add("--firmware", options.board.firmware, "XX", "the board's version, two hexadecimal digits: 17 unless told");
    add("--capacity", options.board.capacity, "KB", "of code and data that the board holds: 62 unless told");
    app.add_flag("--single-area", options.board.single_area, "the board shows its memory in two banks");
    add("--serial", options.board.serial, "FILE", "what the board's 24C512 holds");
    add("--image", options.board.image, "FILE",
        "at the end, writes the board's 64 KB there, as they were before it programmed a chip");
    app.add_option("--terminal", options.program, "a user program in place of a chip")
        ->type_name("PROGRAM [ARGUMENT]")
        ->expected(1, 2);
    add("--baud", options.words.baud, "N", "of the line of user code: 115200 unless told");
    add("--damaged", options.words.damaged, "N", "of the monitor's first N frames: have a wrong sum");
    add("--cut-off", options.words.cut_off, "N", "of the monitor's first N frames: break off in their middle");
    add("--link", options.link, "PATH", "a symbolic link to the terminal, for programs that want a fixed name");
    app.footer(more);
}

// False: nothing to be served, or two things, or a word too many.
bool take_program(Options& options)
{
    if (!options.program.empty())
        options.words.program = options.program[0];
    if (options.program.size() == 2) {
        if (!takes_argument(options.words.program))
            return false;
        options.words.argument = options.program[1];
    }
    const bool wanted[] = {
        !options.model.empty(), !options.program.empty(), !options.board.model.empty(), options.demo};
    return std::ranges::count(wanted, true) == 1;
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
bool serve_behind_command(sim::PosixLoop& loop, sim::Target& target, const Options& options, const LineSettings& line)
{
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
    sim::PosixLoop loop;
    if (!serve_behind_command(loop, demo, options, *line))
        return 1;
    tell_complaints(demo.violations());
    std::cout << "runs the code: " << (demo.runs_code() ? "yes" : "no") << std::endl;
    return save(options.flash, demo.flash(0, sim::DemoSetup{}.flash_size - 1)) ? 0 : 1;
}

int serve_boot_loader(const Options& options, const McuTable& table)
{
    auto setup = chip_setup_of(table, options.model);
    if (!setup)
        return refuse(unknown_model_text(table, options.model));
    if (!set_up(options, *setup))
        return refuse("a letter from A to Z, a version from 0.0 to 9.9, a clock from 32000 to 100000000 Hz");
    std::string fault;
    const auto line = line_of_program(options.words.baud, fault);
    if (!line)
        return refuse(fault);
    sim::Chip chip(*setup);
    if (!options.refused_block.empty())
        chip.refuse_block(static_cast<std::uint32_t>(std::strtoul(options.refused_block.c_str(), nullptr, 16)));
    sim::PosixLoop loop;
    Fixture fixture(loop, chip);
    if (!options.fixture.pause_ms.empty() && !fixture.begin(options.fixture, fault))
        return refuse(fault);
    chip.on_state_change.push_back(
        [](sim::Chip::State state) { std::cout << "state: " << sim::state_name(state) << std::endl; });
    if (!serve_behind_command(loop, chip, options, *line))
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
    Options options;
    CLI::App app(description, "vrk-target");
    describe(app, options);
    if (const auto status = parse_command_line(app, argc, argv))
        return *status;
    if (app.count("--version") > 0 && options.version.empty()) {
        std::cout << version_line(app) << std::endl;
        return 0;
    }
    if (!take_program(options))
        return refuse("one of a MODEL, --demo, --board MODEL and --terminal PROGRAM is wanted; --help tells more");
    end_on_interrupts();
    if (!options.words.program.empty())
        return serve_user_program(options);
    if (options.demo)
        return serve_demo(options);
    static McuTable table;
    load_mcu_tables(table, false);
    return options.board.model.empty() ? serve_boot_loader(options, table) : serve_board(options, table);
}
