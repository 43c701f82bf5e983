// A talk on a hand-fed port, for both receive paths, and the common part of their inputs:
//   0     how the link stands: one bit each, told where the target reads it
//   1..   arrivals: a byte with the count of bytes less one (bits 0 to 5) and what the program does before they come
//         (bits 6 and 7, see Before), then the bytes. At a slow baud the receive event waits for more, and the arrivals
//         that follow come inside this wait.
#pragma once

#include "fuzz/target.h"

#include "tests/session/hand_port.h"

namespace fuzz {

enum class Before { nothing, flush, expect_reply, read_frame };

class ReceiveBench {
public:
    HandLink link;
    vrk::ReceiveState& state = link.session.rx;

    // Plays all arrivals. Answers the first complaint; `look` is asked after each of them.
    std::string play(Input input, bool slow, const std::function<std::string()>& look);
    // Forgets everything as a sender does, then hands in one frame, by one receive event.
    void arrive_after_flush(Input frame);

private:
    void arrive(Input bytes);
    std::string common_complaint() const;
};

} // namespace fuzz
