#include "host/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace vrk {

namespace {

constexpr int ends[] = {SIGTERM, SIGINT, SIGHUP};

// A signal may come at any instruction; writing a byte is one of the few things that its handler may do.
std::array<int, 2> pipe_ends = {-1, -1};

void pass_on(int /*signal*/)
{
    const int before = errno;
    const char byte = 0;
    if (write(pipe_ends[1], &byte, 1) < 0) { } // a full pipe holds a wish that nobody has heard yet
    errno = before;
}

} // namespace

EndSignals::EndSignals(std::function<void()> asked)
{
    if (pipe2(pipe_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // no descriptor is left: a signal then ends the program as ever
    heard_ = std::make_unique<QSocketNotifier>(pipe_ends[0], QSocketNotifier::Read);
    QObject::connect(heard_.get(), &QSocketNotifier::activated, heard_.get(), [asked = std::move(asked)] {
        char byte = 0;
        if (read(pipe_ends[0], &byte, 1) == 1)
            asked();
    });
    for (const int one : ends)
        std::signal(one, pass_on);
}

EndSignals::~EndSignals()
{
    if (heard_ == nullptr)
        return;
    for (const int one : ends)
        std::signal(one, SIG_DFL);
    heard_.reset();
    for (const int one : pipe_ends)
        close(one);
}

} // namespace vrk
