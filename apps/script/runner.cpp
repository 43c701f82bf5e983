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

void Runner::break_off()
{
    if (setup_.shell.running && !ended_)
        failed_ = true;
    end();
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
        finish(result.value, result.error);
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
    finish(result.value, finished ? "" : result.late_error);
    return true;
}

void Runner::finish(const Json& value, const std::string& error)
{
    setup_.answer({line_, value, error});
    if (error.empty())
        return;
    failed_ = true;
    if (setup_.stop_at_failure)
        end();
}

Runner::Result Runner::run_soon(std::function<void()> event)
{
    const auto started = std::make_shared<bool>(false);
    EventLoop& loop = setup_.shell.platform.loop;
    loop.call_at(loop.now_us(), [started, event = std::move(event)] {
        *started = true;
        event();
    });
    Result result;
    result.finished = [started] { return *started; };
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
