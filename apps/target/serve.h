// A target on its terminal until it is told to end, its supply switched by the commands that come in.
#pragma once

#include "sim/posix_loop.h"
#include "sim/target.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vrk {

struct Serving {
    std::string link; // a fixed name for the terminal; empty: none
    bool power_at_once = false;
    std::function<bool(const std::string& command)> own_command; // beside on, off, cycle, quit. False: unknown
};

void end_on_interrupts(); // they end the serving as `quit` does
// Until quit or an interrupt. False: there is no terminal, and it has been said why.
bool serve(sim::PosixLoop& loop, sim::Target& target, const Serving& serving);

// An empty path wants nothing. False: it cannot be written, and has been said.
bool save(const std::string& path, const std::vector<std::uint8_t>& bytes);

} // namespace vrk
