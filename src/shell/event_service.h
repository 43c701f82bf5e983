// Keeps the window alive while a long file is read: the events that have come due are served once the reader has kept
// the loop waiting for a moment that a user could notice. Most files are read before that.
#pragma once

#include "platform/event_loop.h"

#include <cstdint>

namespace vrk {

class EventService {
public:
    explicit EventService(EventLoop& loop)
        : loop_(loop)
        , served_us_(loop.now_us())
    {
    }

    // To be called once a line. True: events were served, and anything may have changed.
    bool serve_if_late()
    {
        if (++calls_ % calls_per_look != 0 || loop_.now_us() - served_us_ < longest_wait_us)
            return false;
        loop_.run_due();
        served_us_ = loop_.now_us();
        return true;
    }

private:
    static constexpr std::int64_t longest_wait_us = 10'000;
    static constexpr std::uint32_t calls_per_look = 256; // the clock costs more than a line

    EventLoop& loop_;
    std::int64_t served_us_;
    std::uint32_t calls_ = 0;
};

} // namespace vrk
