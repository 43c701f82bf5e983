// A tone generator with a good memory: wave forms, curves and notes stand in code memory, more than 32 KB of them. It
// plays a tune on a converter at P2 and, between two tunes, sends sums of its tables at 9600 baud, by which a programmed
// chip can be told from a half-programmed one. 11.0592 MHz.
#include "serial.h"

#include "tables_atlas.h"

#include <8052.h>

struct Note {
    unsigned char pitch; // semitones from the lowest C; 255: a rest
    unsigned char eighths;
};

// A round that everybody knows.
static const struct Note __code tune[] = {
    {60, 2}, {62, 2}, {64, 2}, {60, 2}, {60, 2}, {62, 2}, {64, 2}, {60, 2},
    {64, 2}, {65, 2}, {67, 4}, {64, 2}, {65, 2}, {67, 4},
    {67, 1}, {69, 1}, {67, 1}, {65, 1}, {64, 2}, {60, 2},
    {67, 1}, {69, 1}, {67, 1}, {65, 1}, {64, 2}, {60, 2},
    {60, 2}, {55, 2}, {60, 4}, {60, 2}, {55, 2}, {60, 4}, {255, 4},
};

#define TUNE_LENGTH (sizeof tune / sizeof tune[0])
#define SAMPLES_PER_EIGHTH 1600

static unsigned char volume(unsigned int elapsed)
{
    // Fades along the square root, so that the end is soft.
    return 255 - (square_root[elapsed > 4095 ? 4095 : elapsed] >> 9);
}

static void play_note(unsigned char form, const struct Note __code* note)
{
    const unsigned char __code* wave = waves + ((unsigned int)form << 10);
    unsigned int phase = 0;
    unsigned int step = 0;
    unsigned int left = SAMPLES_PER_EIGHTH * note->eighths;
    unsigned int elapsed = 0;

    if (note->pitch != 255)
        step = (unsigned int)(6000000UL / note_period[note->pitch]);
    while (left--) {
        P2 = (unsigned char)(((unsigned int)wave[phase >> 6] * volume(elapsed >> 2)) >> 8);
        phase += step;
        ++elapsed;
    }
}

static void play_tune(unsigned char form)
{
    unsigned char i;
    for (i = 0; i < TUNE_LENGTH; ++i)
        play_note(form, tune + i);
}

static unsigned int sum_of(const unsigned char __code* table, unsigned int size)
{
    unsigned int sum = 0;
    while (size--)
        sum = (sum << 1 | sum >> 15) ^ *table++;
    return sum;
}

static void report(const char __code* name, const void __code* table, unsigned int size)
{
    put_text(name);
    put_text(": ");
    put_number(size);
    put_text(" bytes, sum ");
    put_hex_word(sum_of((const unsigned char __code*)table, size));
    put_line("");
}

void main(void)
{
    unsigned char form = 0;
    serial_open();
    for (;;) {
        report("wave forms", waves, sizeof waves);
        report("square root", square_root, sizeof square_root);
        report("logarithm", logarithm, sizeof logarithm);
        report("sine", fine_sine, sizeof fine_sine);
        report("notes", note_period, sizeof note_period);
        play_tune(form);
        form = (form + 1) & 7;
    }
}
