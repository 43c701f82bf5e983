#include "terminal/line_times.h"

#include <utility>

namespace vrk {

std::string LineTimes::stamp(std::string_view text, std::string_view time)
{
    std::string stamped;
    for (const char c : text) {
        const bool ends_line = c == '\r' || c == '\n';
        const bool second_of_pair = std::exchange(after_carriage_return_, c == '\r') && c == '\n';
        if (at_line_start_ && !second_of_pair)
            stamped.append(time).append(" ");
        stamped += c;
        at_line_start_ = ends_line;
    }
    return stamped;
}

} // namespace vrk
