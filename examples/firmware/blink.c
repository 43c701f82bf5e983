// Blinks a light on P1.0 twice a second, 11.0592 MHz. The light hangs between the pin and the supply: 0 is on.
#include <8052.h>

#define TICKS_PER_SECOND 100
#define TICK_RELOAD (65536 - 9216) // 11059200 Hz / 12 / 100

static volatile unsigned char ticks;

void tick(void) __interrupt(1)
{
    TH0 = TICK_RELOAD >> 8;
    TL0 = TICK_RELOAD & 0xFF;
    ++ticks;
}

static void wait_ticks(unsigned char count)
{
    const unsigned char start = ticks;
    while ((unsigned char)(ticks - start) < count)
        ;
}

void main(void)
{
    TMOD = 0x01; // timer 0: 16 bits
    TR0 = 1;
    ET0 = 1;
    EA = 1;
    for (;;) {
        P1_0 = 0;
        wait_ticks(TICKS_PER_SECOND / 20);
        P1_0 = 1;
        wait_ticks(TICKS_PER_SECOND / 2 - TICKS_PER_SECOND / 20);
    }
}
