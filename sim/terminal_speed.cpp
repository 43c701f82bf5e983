#include "sim/terminal_speed.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace sim {

bool make_terminal_raw(int descriptor, std::int32_t baud)
{
    struct termios2 settings { };
    if (ioctl(descriptor, TCGETS2, &settings) != 0)
        return false;
    settings.c_iflag = 0;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag = CS8 | CREAD | CLOCAL | BOTHER;
    settings.c_ispeed = static_cast<speed_t>(baud);
    settings.c_ospeed = static_cast<speed_t>(baud);
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    return ioctl(descriptor, TCSETS2, &settings) == 0;
}

std::int32_t terminal_speed(int descriptor)
{
    struct termios2 settings { };
    if (ioctl(descriptor, TCGETS2, &settings) != 0)
        return 0;
    return static_cast<std::int32_t>(settings.c_ospeed);
}

} // namespace sim
