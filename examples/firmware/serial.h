// The serial port at 9600 baud, 11.0592 MHz, without interrupts.
#ifndef SERIAL_H
#define SERIAL_H

void serial_open(void);
char serial_waits(void);
char serial_read(void);
void put_char(char c);
void put_text(const char __code* text);
void put_line(const char __code* text);
void put_number(unsigned int number);
void put_hex_byte(unsigned char byte);
void put_hex_word(unsigned int word);

#endif
