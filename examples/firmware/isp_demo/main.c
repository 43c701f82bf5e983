// A program that blinks a light, and goes into its downloader when it hears the command.
#include "demo.h"

#include "../serial.h"
#include "../user_command/user_command.h"

#include <8052.h>

void main(void)
{
    unsigned int turns = 0;
    serial_open();
    for (;;) {
        if (++turns == 0)
            P1_0 = !P1_0;
        if (serial_waits() && command_heard((unsigned char)serial_read()))
            demo();
    }
}
