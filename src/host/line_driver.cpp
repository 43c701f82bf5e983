#include "host/line_driver.h"

#include <asm/termbits.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

namespace vrk {

void ask_for_low_latency(int descriptor)
{
    serial_struct settings{};
    if (ioctl(descriptor, TIOCGSERIAL, &settings) != 0)
        return;
    settings.flags = static_cast<int>(static_cast<unsigned>(settings.flags) | ASYNC_LOW_LATENCY);
    ioctl(descriptor, TIOCSSERIAL, &settings);
}

void wait_until_sent(int descriptor)
{
    ioctl(descriptor, TCSBRK, 1); // what tcdrain() does; its header and this one do not go together
}

std::size_t write_now(int descriptor, std::span<const std::uint8_t> bytes)
{
    const ssize_t taken = write(descriptor, bytes.data(), bytes.size());
    return taken > 0 ? static_cast<std::size_t>(taken) : 0;
}

std::optional<std::size_t> read_now(int descriptor, std::span<std::uint8_t> into)
{
    const ssize_t count = read(descriptor, into.data(), into.size());
    if (count >= 0) // none too where the queue was emptied after the wake-up
        return static_cast<std::size_t>(count);
    if (errno == EAGAIN || errno == EINTR)
        return 0;
    return std::nullopt;
}

int line_speed(int descriptor)
{
    termios2 settings{};
    if (ioctl(descriptor, TCGETS2, &settings) != 0)
        return 0;
    return static_cast<int>(settings.c_ospeed);
}

} // namespace vrk
