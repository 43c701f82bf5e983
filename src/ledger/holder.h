// Who holds a reserved number, so that another can tell whether he is still there.
#pragma once

#include <cstdint>
#include <string>

namespace vrk {

struct Holder {
    std::string station;
    std::string host;
    std::string boot; // of the machine, another after each start
    std::int64_t pid = 0;
    std::string started; // of the process, in ticks since the machine's start: a number is used again, this is not
};

Holder this_process(const std::string& station);

enum class Alive { yes, no, unknown }; // unknown: on another machine
Alive is_alive(const Holder& holder);

} // namespace vrk
