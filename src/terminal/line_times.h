// A time in front of each line of a text that comes in pieces.
#pragma once

#include <string>
#include <string_view>

namespace vrk {

class LineTimes {
public:
    // `time` goes before each line that begins in this piece, with a blank behind it. A line begins with its first
    // character, so that one which nothing follows yet gets the time of what comes.
    std::string stamp(std::string_view text, std::string_view time);

private:
    bool at_line_start_ = true;
    bool after_carriage_return_ = false; // a line feed behind it belongs to it
};

} // namespace vrk
