// One fixture of a line, as its worker and the program beside it see it. It follows what the lane's own process tells,
// line by line (docs/json.md), and what becomes of that process. Good is only what has been told as good.
#pragma once

#include "shell/verdict.h"

#include <string>
#include <string_view>

namespace vrk::lanes {

struct Lane {
    VerdictState state = VerdictState::ready;
    std::string advice; // what to do next; empty: nothing to be done
    std::string number; // of the last chip; empty: it has none
    VerdictState last = VerdictState::ready; // the last chip's verdict while the next one is awaited; ready: none
    int percent = 0;
    int seconds_left = -1; // of writing; -1: not known yet
    int good = 0;
    int bad = 0;
    std::string job_sha256; // what the lane puts into its chips; empty: it has not said
    bool runs = false; // its process does

    friend bool operator==(const Lane&, const Lane&) = default;

    int all() const { return good + bad; }
    double yield_percent() const { return all() == 0 ? 0 : 100.0 * good / all(); }
};

void lane_started(Lane& lane); // its counts go on
// A line of its process; one that is none of ours ends nothing and says nothing. False: the lane cannot be understood,
// and its process is to be ended.
bool lane_told(Lane& lane, std::string_view json_line, bool english);

// How a process has ended: by itself, with its status and what it said of it, or it was killed or fell.
struct Ending {
    bool by_itself = true;
    int status = 0;
    std::string words; // its last line to standard error
};
// A chip that was in its hands then is not good.
void lane_ended(Lane& lane, const Ending& ending, bool english);

} // namespace vrk::lanes
