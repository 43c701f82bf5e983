// Runs a script of commands on the main object: each does what a hand does in the window, or reads what stands there.
//
// A click can start a sequence that waits in the event loop; the commands behind it then run inside that wait. So the
// runner is no loop of its own: whenever nothing else is due, the event loop asks it for a turn, and a turn runs one
// command or looks whether the present wait is over.
#pragma once

#include "script/values.h"

#include "platform/scripted_dialogs.h"
#include "shell/gate.h"
#include "shell/shell.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace vrk::script {

// The simulated chip of a rehearsal, as far as a script can reach it.
class TargetAccess {
public:
    virtual ~TargetAccess() = default;
    virtual void power(bool on) = 0;
    virtual bool has_power() const = 0;
    virtual Json describe() const = 0;
};

struct Answer {
    int line = 0; // of the script, from 1
    Json value; // null: the command has none
    std::string error; // empty: it went well
    std::string note; // for the one who stands by; empty: none
};

class Runner {
public:
    struct Setup {
        Shell& shell;
        ScriptedDialogs& dialogs;
        TargetAccess* target = nullptr; // null: no rehearsal
        std::function<std::optional<std::string>()> next_line; // nothing: none now; the runner asks again next turn
        std::function<void(const Answer&)> answer;
        bool stop_at_failure = true;
    };

    explicit Runner(Setup setup)
        : setup_(std::move(setup))
    {
    }

    // True: something was done, and due tasks are to be looked at again.
    bool turn();
    // The script is over, or its first failure has ended it: the window is asked to close.
    void end();
    // No more lines will come, or nobody reads the answers. What still runs is stopped as by the stop button, and that
    // counts as a failure: half a job is none. Answers what there is to say of it; empty: nothing ran.
    std::string break_off();
    bool ended() const { return ended_; }
    bool failed() const { return failed_; }

    // For the commands.
    struct Result {
        Json value;
        std::string error;
        // A command that takes time: finished when this says so, with an error if it is past the deadline.
        std::function<bool()> finished;
        std::optional<std::int64_t> deadline_us;
        std::string late_error; // empty: reaching the deadline is what the command wanted
        std::function<std::string()> outcome; // asked when it has finished: its error. None: it cannot fail any more
        std::string note; // for the one who stands by
    };
    Shell& shell() { return setup_.shell; }
    ScriptedDialogs& dialogs() { return setup_.dialogs; }
    TargetAccess* target() { return setup_.target; }
    // A hand at a control: answers when the handler is done or begins to wait. What the gate says then is made an error
    // by `error_of`: it may have closed since the command was read.
    Result run_soon(std::function<Touch()> event, std::function<std::string(Touch)> error_of);
    Result wait_for(std::function<bool()> finished, std::int64_t ms, std::string late_error);
    std::size_t boxes_told = 0; // message boxes that `messages` has reported
    int beeps_told = 0;

private:
    bool run_line(const std::string& line);
    bool look_at_wait();
    void finish(const Result& result, const std::string& error);
    std::string hint_of_power() const; // empty: it has some, or nothing waits for it

    Setup setup_;
    int line_ = 0;
    std::optional<Result> waiting_;
    bool ended_ = false;
    bool failed_ = false;
};

} // namespace vrk::script
