#include "bench/reply_meter.h"

#include "bench/figures.h"
#include "bench/times.h"

#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>

#include <cstdint>

namespace {

constexpr std::size_t least_data_frame = 100;

// Of this thread: the window has one more that polls, for the screen.
thread_local bool metering = false;
thread_local double woken_us = 0; // when poll() came back last, before bytes were read
thread_local double replied_us =
    0; // when it came back for the last bytes of the reply; 0: none has come since the last frame
std::vector<double> shares_us;

double now_us() { return static_cast<double>(bench::now_ns()) / 1000; }

template <typename Call> Call* next_of(const char* name) { return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name)); }

void note_poll()
{
    if (metering)
        woken_us = now_us();
}

// The last byte of each frame is 16. The wake-up calls that an event loop writes to itself are 8 bytes of a counter.
void note_read(const std::uint8_t* bytes, ssize_t count)
{
    if (metering && count > 0 && bytes[count - 1] == 0x16)
        replied_us = woken_us;
}

void note_write(const std::uint8_t* bytes, std::size_t count)
{
    if (!metering || count < least_data_frame || bytes[0] != 0x46 || bytes[1] != 0xB9)
        return;
    if (replied_us != 0)
        shares_us.push_back(now_us() - replied_us);
    replied_us = 0;
}

} // namespace

// These stand before the system's own in every library of the process.
extern "C" {

int poll(pollfd* waiting, nfds_t count, int timeout)
{
    static auto* const system_poll = next_of<int(pollfd*, nfds_t, int)>("poll");
    const int ready = system_poll(waiting, count, timeout);
    note_poll();
    return ready;
}

int ppoll(pollfd* waiting, nfds_t count, const timespec* timeout, const sigset_t* mask)
{
    static auto* const system_ppoll = next_of<int(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");
    const int ready = system_ppoll(waiting, count, timeout, mask);
    note_poll();
    return ready;
}

ssize_t read(int descriptor, void* bytes, size_t count)
{
    static auto* const system_read = next_of<ssize_t(int, void*, size_t)>("read");
    const ssize_t taken = system_read(descriptor, bytes, count);
    note_read(static_cast<const std::uint8_t*>(bytes), taken);
    return taken;
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    static auto* const system_write = next_of<ssize_t(int, const void*, size_t)>("write");
    note_write(static_cast<const std::uint8_t*>(bytes), count);
    return system_write(descriptor, bytes, count);
}
}

namespace bench {

void begin_metering()
{
    shares_us.clear();
    replied_us = 0;
    metering = true;
}

double end_metering_us()
{
    metering = false;
    require(!shares_us.empty(), "no reply was followed by a frame");
    return median(std::move(shares_us));
}

} // namespace bench
