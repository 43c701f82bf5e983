#include "sim/task_queue.h"

#include <algorithm>
#include <utility>

namespace sim {

std::uint64_t TaskQueue::add(std::int64_t at, Task task)
{
    const auto place = std::upper_bound(
        entries_.begin(), entries_.end(), at, [](std::int64_t time, const Entry& entry) { return time >= entry.at; });
    entries_.insert(place, Entry{at, ++last_id_, std::move(task)});
    return last_id_;
}

void TaskQueue::cancel(std::uint64_t id)
{
    const auto found = std::find_if(entries_.begin(), entries_.end(), [id](const Entry& e) { return e.id == id; });
    if (found != entries_.end())
        entries_.erase(found);
}

std::size_t TaskQueue::run_due(std::int64_t now)
{
    const std::uint64_t posted_before = last_id_;
    std::size_t count = 0;
    for (;;) {
        const auto due = std::find_if(
            entries_.rbegin(), entries_.rend(), [&](const Entry& e) { return e.at > now || e.id <= posted_before; });
        if (due == entries_.rend() || due->at > now)
            return count;
        const Task task = std::move(due->task);
        entries_.erase(std::next(due).base());
        task(); // may post, cancel and run tasks itself
        ++count;
    }
}

void TaskQueue::run_next()
{
    const Task task = std::move(entries_.back().task);
    entries_.pop_back();
    task();
}

} // namespace sim
