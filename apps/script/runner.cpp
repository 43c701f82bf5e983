#include "script/runner.h"

#include "script/commands.h"

#include "platform/text_number.h"
#include "shell/start_up.h"

#include <memory>

namespace vrk::script {

bool Runner::turn()
{
    if (waiting_)
        return look_at_wait();
    if (ended_)
        return false;
    const auto line = setup_.next_line();
    if (!line)
        return false;
    return run_line(*line);
}

void Runner::end()
{
    if (ended_)
        return;
    ended_ = true;
    close_request(setup_.shell);
}

std::string Runner::break_off()
{
    const bool cut_off = setup_.shell.running && !ended_;
    failed_ = failed_ || cut_off;
    end();
    return cut_off ? "the script ended while a sequence ran: it is stopped" + hint_of_power() : "";
}

// A rehearsal that nobody has switched on calls for ever.
std::string Runner::hint_of_power() const
{
    const bool dark = setup_.target != nullptr && !setup_.target->has_power();
    return dark && setup_.shell.running ? "; the target has no power: 'power on' switches it on" : "";
}

bool Runner::run_line(const std::string& line)
{
    ++line_;
    const std::string_view text = trimmed(line);
    if (text.empty() || text.starts_with("#"))
        return true;
    Result result = run_command(*this, line);
    if (result.finished)
        waiting_ = std::move(result);
    else
        finish(result, result.error);
    return true;
}

bool Runner::look_at_wait()
{
    const bool finished = waiting_->finished();
    const bool late = waiting_->deadline_us && setup_.shell.platform.loop.now_us() >= *waiting_->deadline_us;
    if (!finished && !late)
        return false;
    const Result result = std::move(*waiting_);
    waiting_.reset();
    if (finished)
        finish(result, result.outcome ? result.outcome() : "");
    else
        finish(result, result.late_error.empty() ? "" : result.late_error + hint_of_power());
    return true;
}

void Runner::finish(const Result& result, const std::string& error)
{
    setup_.answer({line_, result.value, error, result.note});
    if (error.empty())
        return;
    failed_ = true;
    if (setup_.stop_at_failure)
        end();
}

Runner::Result Runner::run_soon(std::function<Touch()> event, std::function<std::string(Touch)> error_of)
{
    struct Course {
        bool begun = false;
        Touch touch = Touch::taken; // while it waits it has been taken
    };
    const auto course = std::make_shared<Course>();
    EventLoop& loop = setup_.shell.platform.loop;
    loop.call_at(loop.now_us(), [course, event = std::move(event)] {
        course->begun = true;
        course->touch = event();
    });
    Result result;
    result.finished = [course] { return course->begun; };
    result.outcome = [course, error_of = std::move(error_of)] { return error_of(course->touch); };
    return result;
}

Runner::Result Runner::wait_for(std::function<bool()> finished, std::int64_t ms, std::string late_error)
{
    EventLoop& loop = setup_.shell.platform.loop;
    Result result;
    result.finished = std::move(finished);
    result.deadline_us = loop.now_us() + ms * 1000;
    result.late_error = std::move(late_error);
    loop.call_at(*result.deadline_us, [] {}); // so that the loop comes round at that time
    return result;
}

} // namespace vrk::script
