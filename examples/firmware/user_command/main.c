// A light that blinks while the line is quiet, and a way into the boot area.
#include "user_command.h"

#include "../serial.h"

#include <8052.h>

void main(void)
{
    unsigned int turns = 0;
    serial_open();
    for (;;) {
        if (++turns == 0)
            P1_0 = !P1_0;
        if (serial_waits() && command_heard((unsigned char)serial_read()))
            enter_boot_area();
    }
}
