/* The monitor's routines, for a program of your own: each stops the program, shows it on the PC's screen, and lets it
   run on when the PC says so (the button "Continue" of the pages Debug_SFR and Debug_xdata).

   Call them wherever you want to look. What they need of the program: a serial port that is set up, with its receiver
   on (SCON, baud). They use no interrupt and hold all of them off while the program stands still; every register is
   afterwards as it was. 32 bytes and a bit of direct memory stay theirs; the stack needs 40 bytes of room. A watchdog
   has to be off.

   A frame that does not come through is sent again when the PC asks for it. Without a PC on the line the program stands
   still for good. */
#ifndef MONITOR_H
#define MONITOR_H

/* Special function registers 80H to FFH, then the 256 bytes of direct and indirect memory. */
void Debug_SFR(void);

/* External memory 0000H to 03FFH. */
void Debug_xdata(void);

/* 512 bytes of data flash from an address on. Chips differ in how a byte is read from it: the program lends its own
   routine for that. */
void Debug_eeprom(unsigned int first, unsigned char (*read)(unsigned int address));

#endif
