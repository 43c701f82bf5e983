// The off-line programmer board that vrk-target offers, and the chips that go through its socket.
#pragma once

#include "catalog/mcu_table.h"
#include "sim/board_programs.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vrk {

struct BoardWords {
    std::string model; // that it is to program
    std::string firmware; // two hexadecimal digits; empty: 17
    std::string capacity; // in KB; empty: 62
    bool single_area = false;
    std::string serial; // a file for its 24C512
    std::string image; // a file for what it holds
};

std::string option_rows(const sim::Chip& chip); // "options: 00 12 ..."

class ProgrammerBoard {
public:
    ProgrammerBoard(const sim::BoardSetup& setup, const sim::ChipSetup& chip)
        : board_(setup)
        , chip_(chip)
    {
    }
    sim::Board& board() { return board_; }
    bool program_next(); // a new chip, and says what became of it. Always true: the command is known
    // Its 64 KB as the tool has left them: the board marks in them how many chips it has programmed since.
    const std::vector<std::uint8_t>& image() const { return image_.empty() ? board_.memory() : image_; }
    const std::vector<std::uint8_t>& last_flash() const { return last_flash_; }
    const std::string& last_options() const { return last_options_; }

private:
    sim::Board board_;
    sim::ChipSetup chip_;
    std::vector<std::uint8_t> image_;
    std::vector<std::uint8_t> last_flash_;
    std::string last_options_ = "options:";
};

// Nothing: `fault` tells what is wrong with the words, or with the file.
std::unique_ptr<ProgrammerBoard> make_programmer_board(
    const McuTable& table, const BoardWords& words, std::string& fault);

} // namespace vrk
