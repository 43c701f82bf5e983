// Runs a script of commands on the main object: each does what a hand does in the window, or reads what stands there.
//
// A click can start a sequence that waits in the event loop; the commands behind it then run inside that wait. So the
// runner is no loop of its own: whenever nothing else is due, the event loop asks it for a turn, and a turn runs one
// command or looks whether the present wait is over.
#pragma once

#include "script/values.h"

#include "platform/scripted_dialogs.h"
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
    virtual Json describe() const = 0;
};

struct Answer {
    int line = 0; // of the script, from 1
    Json value; // null: the command has none
    std::string error; // empty: it went well
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
    // counts as a failure: half a job is none.
    void break_off();
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
    };
    Shell& shell() { return setup_.shell; }
    ScriptedDialogs& dialogs() { return setup_.dialogs; }
    TargetAccess* target() { return setup_.target; }
    Result run_soon(std::function<void()> event); // a click: answers when its handler is done or begins to wait
    Result wait_for(std::function<bool()> finished, std::int64_t ms, std::string late_error);
    std::size_t boxes_told = 0; // message boxes that `messages` has reported
    int beeps_told = 0;

private:
    bool run_line(const std::string& line);
    bool look_at_wait();
    void finish(const Json& value, const std::string& error);

    Setup setup_;
    int line_ = 0;
    std::optional<Result> waiting_;
    bool ended_ = false;
    bool failed_ = false;
};

} // namespace vrk::script
