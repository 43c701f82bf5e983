#include "user_command.h"

#include <8052.h>

// What the tool sends: type the same bytes into its field.
static const unsigned char __code command[] = {0x12, 0x34, 0xAB};

// Where the options of the chip ask P1.0 and P1.1 to be low at a cold start: 1 lets the command ask for it too, 0 lets
// it do without. Where they do not ask for it, either will do.
#define COMMAND_ASKS_PINS 0

#define POF 0x10 // in PCON: the chip has had no power
#define TICK_RELOAD (65536 - 46080) // 50 ms: 11059200 Hz / 12 / 20
#define TICKS_PER_SECOND 20

__sfr __at(0xE7) ISP_CONTR;

char command_heard(unsigned char byte)
{
    static unsigned char heard;
    if (byte != command[heard])
        heard = 0; // and perhaps the first one of another try
    if (byte == command[heard])
        ++heard;
    if (heard < sizeof command)
        return 0;
    heard = 0;
    return 1;
}

static void wait_a_second(void)
{
    unsigned char left;
    EA = 0; // the program's own interrupts end here
    TMOD = (TMOD & 0xF0) | 0x01; // timer 0: 16 bits
    for (left = TICKS_PER_SECOND; left; --left) {
        TR0 = 0;
        TH0 = TICK_RELOAD >> 8;
        TL0 = TICK_RELOAD & 0xFF;
        TF0 = 0;
        TR0 = 1;
        while (!TF0)
            ;
    }
}

void enter_boot_area(void)
{
    wait_a_second();
#if !COMMAND_ASKS_PINS
    PCON &= (unsigned char)~POF;
#endif
    ISP_CONTR = 0x60;
    for (;;)
        ;
}
