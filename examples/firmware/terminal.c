// A small monitor for the bench: type a command at 9600 baud, 8 data bits, no parity. 11.0592 MHz.
// It has pages of help, shows code memory, reads and writes the ports, draws a sine and blinks in Morse.
#include "serial.h"

#include "tables_terminal.h"

#include <8052.h>

#define LINE_SIZE 40
#define DOT_TICKS 8 // a dot of the Morse light lasts 80 ms

static char line[LINE_SIZE + 1];
static unsigned char cursor; // place in the line that is read next
static volatile unsigned char ticks; // hundredths of a second
static volatile unsigned int seconds;

static const char __code greeting[] =
    "\r\n"
    "Bench monitor. Type HELP and press Enter.\r\n";

static const char __code help_text[] =
    "Commands. Numbers are hexadecimal unless said otherwise.\r\n"
    "\r\n"
    "  HELP            this page\r\n"
    "  HELP command    one command in more words\r\n"
    "  ABOUT           what this program is for\r\n"
    "  BAUD            timer values for the serial line\r\n"
    "  COLOURS         the rings on a resistor\r\n"
    "  ASCII           the printable characters with their codes\r\n"
    "  DUMP addr       128 bytes of code memory\r\n"
    "  MORSE text      blinks a text on P1.0\r\n"
    "  PORT n          reads port n, 0 to 3\r\n"
    "  PORT n value    writes it\r\n"
    "  SINE            draws one turn of a sine\r\n"
    "  SUM addr size   adds up code memory\r\n"
    "  TIME            how long the chip has been running\r\n"
    "  WIRING          how to connect lamp, crystal and serial line\r\n";

static const char __code about_text[] =
    "This program is one of the examples that come with a programming tool.\r\n"
    "It is meant for the first hour with a new board: once it answers, the\r\n"
    "crystal swings, reset is released, the serial line is the right way\r\n"
    "round and the chip holds what was sent to it. Use SUM to compare code\r\n"
    "memory with the file: 0 and the length of the file give the same sum on\r\n"
    "every good chip. Use PORT to try what hangs on the pins, one at a time,\r\n"
    "and MORSE when no serial line is at hand to see a sign of life.\r\n";

static const char __code wiring_text[] =
    "Crystal   11.0592 MHz between the two crystal pins, and a capacitor of\r\n"
    "          22 pF to 33 pF from either pin to ground. With another crystal\r\n"
    "          the speed of the serial line changes in proportion.\r\n"
    "Reset     10 uF to the supply and 10 kOhm to ground, or nothing at all\r\n"
    "          where the chip has a reset circuit of its own.\r\n"
    "Lamp      from the supply through 1 kOhm to P1.0. The pin draws the\r\n"
    "          current: a zero lights the lamp.\r\n"
    "Serial    P3.0 receives and P3.1 sends. Cross the two lines with those\r\n"
    "          of the adapter and connect ground. The levels are those of the\r\n"
    "          supply; a real RS-232 line needs a converter in between.\r\n"
    "Supply    a capacitor of 100 nF close to the chip. If a chip is to be\r\n"
    "          programmed on the board, its supply must be switched, since\r\n"
    "          the boot loader listens only for a moment after power-up.\r\n";

static const char __code baud_text[] =
    "What to put into TH1 (timer 1, 8 bits with reload, SMOD clear). The value\r\n"
    "is 100 hexadecimal less the crystal divided by 384 and by the speed.\r\n"
    "\r\n"
    "  speed     11.0592 MHz   18.432 MHz   22.1184 MHz\r\n"
    "   1200     E8            D8           D0\r\n"
    "   2400     F4            EC           E8\r\n"
    "   4800     FA            F6           F4\r\n"
    "   9600     FD            FB           FA\r\n"
    "  19200     none          none         FD\r\n"
    "\r\n"
    "With SMOD set the same values give twice the speed. A round crystal such\r\n"
    "as 12 MHz meets 9600 only with an error of 8 percent, which is too much.\r\n";

static const char __code colours_text[] =
    "  0 black   1 brown   2 red      3 orange   4 yellow\r\n"
    "  5 green   6 blue    7 violet   8 grey     9 white\r\n"
    "Four rings: two digits, the number of zeros, the tolerance (gold 5,\r\n"
    "silver 10 percent). Five rings: three digits, zeros, tolerance (brown 1,\r\n"
    "red 2 percent). Gold in place of the zeros divides by 10.\r\n";

static const char __code dump_help[] =
    "DUMP addr shows eight lines of sixteen bytes from addr on, which is\r\n"
    "rounded down to a multiple of ten hexadecimal. Beside the bytes stand their\r\n"
    "characters, with a point for those that cannot be printed. DUMP alone\r\n"
    "goes on where the last one ended.\r\n";
static const char __code morse_help[] =
    "MORSE text blinks letters and digits; other characters make a pause\r\n"
    "between words. A dash is three dots long, the pause between two signs is\r\n"
    "one dot, between two letters three, between two words seven. A key typed\r\n"
    "meanwhile ends it.\r\n";
static const char __code port_help[] =
    "PORT n shows the level of the eight pins of a port, the highest first.\r\n"
    "PORT n value writes a byte to it; a pin must hold a one to be read.\r\n"
    "Port 3 carries the serial line on its two lowest pins: whoever writes a\r\n"
    "zero there has to reset the chip. Ports 0 and 2 are free as long as no\r\n"
    "external memory is connected.\r\n";
static const char __code sum_help[] =
    "SUM addr size adds size bytes of code memory from addr on and shows the\r\n"
    "sum modulo 10000. The sum of a file is shown by most programming tools,\r\n"
    "so that the two can be compared without reading out the chip.\r\n";
static const char __code time_help[] =
    "TIME shows hours, minutes and seconds since reset, in decimal. The clock\r\n"
    "is as good as the crystal; it starts again from zero after 18 hours.\r\n";
static const char __code no_more_help[] = "There is no more to say about that.\r\n";

void tick(void) __interrupt(1)
{
    TH0 = (65536 - 9216) >> 8; // 11059200 Hz / 12 / 100
    TL0 = (65536 - 9216) & 0xFF;
    if (++ticks == 100) {
        ticks = 0;
        ++seconds;
    }
}

static unsigned int running_seconds(void)
{
    unsigned int now;
    ET0 = 0;
    now = seconds;
    ET0 = 1;
    return now;
}

static void wait_ticks(unsigned char count)
{
    unsigned char last = ticks;
    while (count) {
        const unsigned char now = ticks;
        if (now != last) {
            last = now;
            --count;
        }
    }
}

static char upper(char c)
{
    return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c;
}

static void read_line(void)
{
    unsigned char count = 0;
    put_text("> ");
    for (;;) {
        const char c = serial_read();
        if (c == '\r')
            break;
        if ((c == 8 || c == 127) && count) {
            --count;
            put_text("\b \b");
        } else if (c >= ' ' && c < 127 && count < LINE_SIZE) {
            line[count++] = upper(c);
            put_char(c);
        }
    }
    line[count] = 0;
    cursor = 0;
    put_line("");
}

static void skip_blanks(void)
{
    while (line[cursor] == ' ')
        ++cursor;
}

// Takes the word off the line if it is the next one.
static char take_word(const char __code* word)
{
    unsigned char at = cursor;
    while (*word && line[at] == *word) {
        ++word;
        ++at;
    }
    if (*word || (line[at] && line[at] != ' '))
        return 0;
    cursor = at;
    skip_blanks();
    return 1;
}

static char at_end(void)
{
    return line[cursor] == 0;
}

static unsigned int take_hex(void)
{
    unsigned int value = 0;
    for (;; ++cursor) {
        const char c = line[cursor];
        if (c >= '0' && c <= '9')
            value = value << 4 | (unsigned char)(c - '0');
        else if (c >= 'A' && c <= 'F')
            value = value << 4 | (unsigned char)(c - 'A' + 10);
        else
            break;
    }
    skip_blanks();
    return value;
}

static void help(void)
{
    if (at_end())
        put_text(help_text);
    else if (take_word("DUMP"))
        put_text(dump_help);
    else if (take_word("MORSE"))
        put_text(morse_help);
    else if (take_word("PORT"))
        put_text(port_help);
    else if (take_word("SUM"))
        put_text(sum_help);
    else if (take_word("TIME"))
        put_text(time_help);
    else
        put_text(no_more_help);
}

static void ascii(void)
{
    unsigned char c;
    for (c = ' '; c < 127; ++c) {
        put_hex_byte(c);
        put_char(' ');
        put_char(c);
        put_text((c & 7) == 7 ? "\r\n" : "   ");
    }
    put_line("");
}

static void dump(void)
{
    static unsigned int address;
    unsigned char row;
    unsigned char column;
    if (!at_end())
        address = take_hex() & 0xFFF0;
    for (row = 0; row < 8; ++row) {
        const unsigned char __code* bytes = (const unsigned char __code*)address;
        put_hex_word(address);
        put_text("  ");
        for (column = 0; column < 16; ++column) {
            put_hex_byte(bytes[column]);
            put_char(' ');
        }
        put_char(' ');
        for (column = 0; column < 16; ++column)
            put_char(bytes[column] >= ' ' && bytes[column] < 127 ? bytes[column] : '.');
        put_line("");
        address += 16;
    }
}

static void sum(void)
{
    const unsigned char __code* byte = (const unsigned char __code*)take_hex();
    unsigned int size = take_hex();
    unsigned int total = 0;
    while (size--)
        total += *byte++;
    put_hex_word(total);
    put_line("");
}

static unsigned char read_port(unsigned char port)
{
    switch (port) {
    case 0: return P0;
    case 1: return P1;
    case 2: return P2;
    default: return P3;
    }
}

static void write_port(unsigned char port, unsigned char value)
{
    switch (port) {
    case 0: P0 = value; break;
    case 1: P1 = value; break;
    case 2: P2 = value; break;
    default: P3 = value; break;
    }
}

static void port(void)
{
    const unsigned char number = (unsigned char)take_hex() & 3;
    unsigned char pins;
    unsigned char i;
    if (!at_end())
        write_port(number, (unsigned char)take_hex());
    pins = read_port(number);
    for (i = 0; i < 8; ++i) {
        put_char(pins & 0x80 ? '1' : '0');
        pins <<= 1;
    }
    put_line("");
}

static void draw_sine(void)
{
    unsigned char step;
    for (step = 0; step < 32; ++step) {
        unsigned char blanks = sine[step << 3] >> 2;
        while (blanks--)
            put_char(' ');
        put_line("*");
    }
}

static void put_two_digits(unsigned char number)
{
    put_char('0' + number / 10);
    put_char('0' + number % 10);
}

static void show_time(void)
{
    const unsigned int now = running_seconds();
    put_number(now / 3600);
    put_char(':');
    put_two_digits(now / 60 % 60);
    put_char(':');
    put_two_digits(now % 60);
    put_line("");
}

static void blink_letter(unsigned char code)
{
    unsigned char bit = 0x80;
    while (!(code & bit)) // the leading one says where the signs begin
        bit >>= 1;
    while (bit >>= 1) {
        P1_0 = 0;
        wait_ticks(code & bit ? 3 * DOT_TICKS : DOT_TICKS);
        P1_0 = 1;
        wait_ticks(DOT_TICKS);
    }
    wait_ticks(2 * DOT_TICKS);
}

static void blink_text(void)
{
    for (; line[cursor] && !serial_waits(); ++cursor) {
        const char c = line[cursor];
        if (c >= 'A' && c <= 'Z')
            blink_letter(morse[c - 'A']);
        else if (c >= '0' && c <= '9')
            blink_letter(morse[26 + c - '0']);
        else
            wait_ticks(4 * DOT_TICKS);
    }
}

static void obey(void)
{
    skip_blanks();
    if (at_end())
        return;
    if (take_word("HELP"))
        help();
    else if (take_word("ABOUT"))
        put_text(about_text);
    else if (take_word("WIRING"))
        put_text(wiring_text);
    else if (take_word("BAUD"))
        put_text(baud_text);
    else if (take_word("COLOURS"))
        put_text(colours_text);
    else if (take_word("ASCII"))
        ascii();
    else if (take_word("DUMP"))
        dump();
    else if (take_word("MORSE"))
        blink_text();
    else if (take_word("PORT"))
        port();
    else if (take_word("SINE"))
        draw_sine();
    else if (take_word("SUM"))
        sum();
    else if (take_word("TIME"))
        show_time();
    else
        put_line("What? HELP shows what can be said.");
}

void main(void)
{
    TMOD = 0x01; // timer 0: 16 bits
    TR0 = 1;
    ET0 = 1;
    EA = 1;
    serial_open();
    put_text(greeting);
    for (;;) {
        read_line();
        obey();
    }
}
