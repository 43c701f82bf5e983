// The user programs that vrk-target offers, made from the words of its command line.
#pragma once

#include "sim/user_program.h"

#include <memory>
#include <optional>
#include <string>

namespace vrk {

struct ProgramWords {
    std::string program; // echo, stream, dump, monitor
    std::string argument; // of stream: bytes a second; of dump: a file
    std::string baud; // empty: 115200
    std::string damaged; // of the monitor's first frames, how many; empty: none
    std::string cut_off;
};

// Of 8 data bits without parity. Nothing: `fault` tells why.
std::optional<LineSettings> line_of_program(const std::string& baud, std::string& fault);

bool takes_argument(std::string_view program);

// Nothing: `fault` tells what is wrong with the words, or with the file.
std::unique_ptr<sim::UserProgram> make_user_program(const ProgramWords& words, std::string& fault);

} // namespace vrk
