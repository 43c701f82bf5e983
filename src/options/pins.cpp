#include "options/pins.h"

#include <iterator>

namespace vrk {

namespace {

// P3.6 is not offered: the chips write to their outer memory with it.
constexpr const char* pins[] = {"P1.0", "P1.1", "P1.2", "P1.3", "P1.4", "P1.5", "P1.6", "P1.7", "P3.0", "P3.1", "P3.2",
    "P3.3", "P3.4", "P3.5", "P3.7"};

} // namespace

std::vector<std::string> option_pin_items() { return {std::begin(pins), std::end(pins)}; }

std::vector<std::string> all_pin_items()
{
    std::vector<std::string> all;
    for (char port = '0'; port <= '3'; ++port) {
        for (char bit = '0'; bit <= '7'; ++bit)
            all.push_back(std::string{"P"} + port + "." + bit);
    }
    return all;
}

} // namespace vrk
