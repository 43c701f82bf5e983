// The flash of the chip, as the downloader needs it: the one file to adapt to a chip is flash.c.
#ifndef FLASH_H
#define FLASH_H

#define MODEL_CODE 0x4004 // by which the tool knows the model: this is the 16 KB one for 5 V
#define OPTION_BYTE 0xFF // that the tool shows

void erase_flash(void); // all that a download may write
void write_flash(unsigned int address, unsigned char byte);
unsigned char read_flash(unsigned int address);
void run_code(void); // does not come back

#endif
