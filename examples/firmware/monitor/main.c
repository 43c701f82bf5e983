// A program to look at: values that one knows again, a counter, and a stop in each turn.
#include "monitor.h"

#include "../serial.h"

#include <8052.h>

#define MARK "core on the line"

static __xdata __at(0x0000) unsigned char table[1024]; // each byte is the sum of both halves of its address, and 7
static __idata __at(0xC0) unsigned char mark[16];
static __idata __at(0xD0) unsigned char turns;

// Stands for the data flash of a chip: the bytes from 2000H on.
static unsigned char read_data_flash(unsigned int address)
{
    return (unsigned char)(address - 0x2000) ^ 0xA5;
}

void main(void)
{
    static const char __code text[] = MARK;
    unsigned int i;
    serial_open();
    for (i = 0; i < sizeof table; ++i)
        table[i] = (unsigned char)((i >> 8) + i + 7);
    for (i = 0; i < sizeof mark; ++i)
        mark[i] = text[i];
    P1 = 0x5A;
    IE = 0x12;
    for (turns = 1;; ++turns) {
        Debug_SFR();
        Debug_xdata();
        Debug_eeprom(0x2000, read_data_flash);
    }
}
