// The calls that can fail, counted over a run, so that a further run can let any one of them fail.
#pragma once

#include <string>

namespace vrk {

class FailingCalls {
public:
    explicit FailingCalls(int its_turn)
        : turn_(its_turn)
    {
    }

    // Counts. True: this is the one.
    bool fails(const std::string& call)
    {
        if (!counting || ++made_ != turn_)
            return false;
        failed_ = call;
        return true;
    }
    int made() const { return made_; }
    const std::string& failed() const { return failed_; } // its name; empty: none has

    bool counting = false; // else all goes well, and does not count

private:
    int turn_; // from 1; 0: none
    int made_ = 0;
    std::string failed_;
};

} // namespace vrk
