// The way from a running program into the chip's boot area without a hand at the power switch: the program hands in
// what it hears, and when the command has come whole it resets the chip into the boot loader, which finds the tool
// waiting. The first program that has this in it is downloaded the old way.
#ifndef USER_COMMAND_H
#define USER_COMMAND_H

// Each byte that comes in. 1: it was the last one of the command.
char command_heard(unsigned char byte);

// Waits for a second, in which the tool changes its line, and resets into the boot area. Does not come back.
void enter_boot_area(void);

#endif
