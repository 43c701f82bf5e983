#include "target/programmer_board.h"

#include "platform/text_number.h"
#include "rehearsal/chip_of_model.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

namespace vrk {

namespace {

constexpr std::size_t serial_size = 0x10000;

const char* word_of(sim::BoardRun run)
{
    switch (run) {
    case sim::BoardRun::programmed:
        return "programmed";
    case sim::BoardRun::self_check_error:
        return "self-check error";
    case sim::BoardRun::wrong_model:
        return "wrong model";
    case sim::BoardRun::used_up:
        return "used up";
    }
    return "";
}

// Two digits are followed by FF, others have F in front up to four.
std::array<std::uint8_t, 2> id_bytes(std::string id)
{
    if (id.size() == 2)
        id += "FF";
    id.insert(0, 4 - std::min<std::size_t>(id.size(), 4), 'F');
    const auto number = std::strtoul(id.c_str(), nullptr, 16);
    return {static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)};
}

bool read_serial(const std::string& path, sim::Board& board)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file || bytes.empty())
        return false;
    bytes.resize(serial_size);
    board.serial_memory = std::move(bytes);
    return true;
}

bool is_number(const std::string& text, std::string_view digits, double least, double most, double value)
{
    return !text.empty() && text.find_first_not_of(digits) == std::string::npos && value >= least && value <= most;
}

} // namespace

std::string option_rows(const sim::Chip& chip)
{
    std::string text = "options:";
    for (const std::uint8_t row : chip.options())
        text += ' ' + hex_text(row, 2);
    return text;
}

bool ProgrammerBoard::program_next()
{
    if (image_.empty())
        image_ = board_.memory();
    sim::Chip chip(chip_);
    const sim::BoardRun run = sim::program_chip(board_, chip);
    std::cout << "chip: " << word_of(run) << std::endl;
    if (run == sim::BoardRun::programmed) {
        last_flash_ = chip.flash();
        last_options_ = option_rows(chip);
    }
    return true;
}

std::unique_ptr<ProgrammerBoard> make_programmer_board(
    const McuTable& table, const BoardWords& words, std::string& fault)
{
    const auto chip = chip_setup_of(table, words.model);
    if (!chip) {
        fault = "no model '" + words.model + "' in the catalogue";
        return nullptr;
    }
    const std::string firmware = words.firmware.empty() ? "17" : words.firmware;
    const std::string capacity = words.capacity.empty() ? "62" : words.capacity;
    const double version = static_cast<double>(hex_number(firmware));
    if (!is_number(firmware, "0123456789ABCDEFabcdef", 0, 0xFF, version) ||
        !is_number(capacity, "0123456789", 0, 255, number_in(capacity))) {
        fault = "a firmware of two hexadecimal digits, a capacity from 0 to 255 KB";
        return nullptr;
    }
    sim::BoardSetup setup;
    setup.series = static_cast<std::uint8_t>(chip->model.series);
    setup.id = id_bytes(chip->model.id);
    setup.version = static_cast<std::uint8_t>(version);
    setup.capacity_kb = static_cast<std::uint8_t>(number_in(capacity));
    setup.single_area = words.single_area;
    auto board = std::make_unique<ProgrammerBoard>(setup, *chip);
    if (!words.serial.empty() && !read_serial(words.serial, board->board())) {
        fault = "there is nothing to read in '" + words.serial + "'";
        return nullptr;
    }
    return board;
}

} // namespace vrk
