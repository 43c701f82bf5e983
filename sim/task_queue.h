// Tasks in the order of their times; ties in the order of posting. The time unit is the owner's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

namespace sim {

class TaskQueue {
public:
    using Task = std::function<void()>;
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    std::uint64_t add(std::int64_t at, Task task); // ids count up from 1
    void cancel(std::uint64_t id); // an unknown id is ignored

    bool empty() const { return entries_.empty(); }
    std::size_t size() const { return entries_.size(); }
    std::int64_t next_at() const { return entries_.empty() ? never : entries_.back().at; }

    // Runs what is due and was posted before this call: a task that posts itself anew for "now" waits for the next
    // one, so that a loop over flags gets to look in between. Returns how many ran.
    std::size_t run_due(std::int64_t now);
    // Runs the soonest task, whenever it is due. The queue must not be empty.
    void run_next();

private:
    struct Entry {
        std::int64_t at;
        std::uint64_t id;
        Task task;
    };
    std::vector<Entry> entries_; // soonest last; a handful at any time, so a sorted array beats every heap
    std::uint64_t last_id_ = 0;
};

} // namespace sim
