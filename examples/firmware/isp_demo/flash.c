// Here the code goes into external RAM, from 1000H on, so that any core can show how it is done. In a chip these
// routines work on its flash, by the registers of its data sheet, and run_code jumps to where the code begins.
#include "flash.h"

#include <8052.h>

#define FLASH_SIZE 0x1000

static __xdata __at(0x1000) unsigned char flash[FLASH_SIZE];

void erase_flash(void)
{
    unsigned int i;
    for (i = 0; i < FLASH_SIZE; ++i)
        flash[i] = 0xFF;
}

void write_flash(unsigned int address, unsigned char byte)
{
    if (address < FLASH_SIZE)
        flash[address] = byte;
}

unsigned char read_flash(unsigned int address)
{
    return address < FLASH_SIZE ? flash[address] : 0xFF;
}

void run_code(void)
{
    P2 = 0xA5;
    for (;;)
        ;
}
