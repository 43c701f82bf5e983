#include "serial.h"

#include <8052.h>

void serial_open(void)
{
    TMOD = (TMOD & 0x0F) | 0x20; // timer 1: 8 bits with reload
    TH1 = 0xFD; // 11059200 Hz / 384 / 3 = 9600
    TR1 = 1;
    SCON = 0x52; // 8 bits, receiver on, transmitter free
}

char serial_waits(void)
{
    return RI;
}

char serial_read(void)
{
    while (!RI)
        ;
    RI = 0;
    return SBUF;
}

void put_char(char c)
{
    while (!TI)
        ;
    TI = 0;
    SBUF = c;
}

void put_text(const char __code* text)
{
    while (*text)
        put_char(*text++);
}

void put_line(const char __code* text)
{
    put_text(text);
    put_char('\r');
    put_char('\n');
}

void put_number(unsigned int number)
{
    char digits[5];
    unsigned char count = 0;
    do {
        digits[count++] = '0' + number % 10;
        number /= 10;
    } while (number);
    while (count)
        put_char(digits[--count]);
}

static void put_hex_digit(unsigned char digit)
{
    put_char(digit < 10 ? '0' + digit : 'A' - 10 + digit);
}

void put_hex_byte(unsigned char byte)
{
    put_hex_digit(byte >> 4);
    put_hex_digit(byte & 15);
}

void put_hex_word(unsigned int word)
{
    put_hex_byte(word >> 8);
    put_hex_byte(word & 0xFF);
}
