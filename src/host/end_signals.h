// The wish from outside that the program may end: a session that closes, a shell that kills it, an interrupt at the
// terminal or a terminal that has gone.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace vrk {

// One at a time in a program. `asked` is called in the event loop, once for each signal.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> asked);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> heard_;
};

} // namespace vrk
