// What a worker reads from two metres: whether the tool waits, works, or how the chip has turned out. One word at a
// time, with the last chip's word kept below it, a count of good and bad, and how far the writing has come.
#pragma once

#include "report/pace.h"
#include "session/result.h"

#include <string>

namespace vrk {

struct Shell;

enum class VerdictState {
    ready, // nothing has been asked for yet
    waiting, // for a target to answer: nothing has failed
    working,
    good,
    bad,
    stopped, // by the user
    done, // what was read or sent; no chip has been judged
    not_done, // it ended before a target was worked on: the chip is as it was
};

const Text& word_of(VerdictState state);
inline constexpr Text last_chip = {"上一片: ", "Last chip: "}; // and its word

// What the word is about.
enum class Judged {
    chip, // counted
    other_target, // a board, or user code that loads itself: judged, and counted by neither counter
    nothing, // only read or sent
};

struct Verdict {
    VerdictState now = VerdictState::ready;
    Pace pace;
};

void start_verdict(Shell& shell); // nothing has been asked for
void wait_for_target(Shell& shell); // a press, and each further chip
void work_on_target(Shell& shell); // it has answered
void tell_verdict(Shell& shell, Result result, Judged judged, const std::string& number = {});
void settle_verdict(Shell& shell); // a sequence is over: what nobody has judged was not done
void show_time_left(Shell& shell, const Progress& progress);

} // namespace vrk
