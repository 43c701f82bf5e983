#include "demo.h"

#include "flash.h"

#include "../serial.h"

#define CONNECT 0xB0
#define RUN_CODE 0xB1
#define ERASE 0xB2
#define WRITE 0xB3
#define WRITE_AGAIN 0xB4
#define READ_IDENTITY 0xB5

#define SHORTEST 8
#define LONGEST 142 // a block of 128 bytes
#define PATIENCE 2000 // turns to wait for the next byte of a frame: some hundredths of a second

static __xdata unsigned char frame[LONGEST];
static unsigned char length;

// 0: the frame breaks off.
static char next_byte(unsigned char place)
{
    unsigned int left = PATIENCE;
    while (!serial_waits())
        if (--left == 0)
            return 0;
    frame[place] = (unsigned char)serial_read();
    return 1;
}

static unsigned int sum_of(unsigned char count)
{
    unsigned int sum = 0;
    unsigned char i;
    for (i = 0; i < count; ++i)
        sum += frame[i];
    return sum;
}

// 1: a whole good frame stands in `frame`.
static char receive_frame(void)
{
    unsigned char i;
    unsigned int sum;
    frame[0] = (unsigned char)serial_read();
    if (frame[0] != 0x5A)
        return 0;
    for (i = 1; i < 4; ++i)
        if (!next_byte(i))
            return 0;
    length = frame[3];
    if (frame[1] != 0xA5 || frame[2] != 0 || length < SHORTEST || length > LONGEST)
        return 0;
    for (; i < length; ++i)
        if (!next_byte(i))
            return 0;
    sum = sum_of(length - 3);
    return frame[length - 3] == (unsigned char)(sum >> 8) && frame[length - 2] == (unsigned char)sum &&
        frame[length - 1] == 0x16;
}

// Its code still stands in the frame; `count` bytes have been put behind it.
static void answer(unsigned char count)
{
    unsigned char i;
    unsigned int sum;
    length = SHORTEST + count;
    frame[3] = length;
    sum = sum_of(length - 3);
    frame[length - 3] = (unsigned char)(sum >> 8);
    frame[length - 2] = (unsigned char)sum;
    frame[length - 1] = 0x16;
    for (i = 0; i < length; ++i)
        put_char((char)frame[i]);
}

static void answer_identity(void)
{
    frame[5] = 0;
    frame[6] = MODEL_CODE >> 8;
    frame[7] = MODEL_CODE & 0xFF;
    frame[8] = OPTION_BYTE;
    answer(4);
}

// The sum that goes back is that of the flash, not of the frame: the tool then knows what was really written.
static void write_block(void)
{
    const unsigned int address = ((unsigned int)frame[7] << 8) | frame[8];
    const unsigned char count = frame[10];
    unsigned int sum = 0;
    unsigned char i;
    if (length != count + 14)
        return;
    for (i = 0; i < count; ++i)
        write_flash(address + i, frame[11 + i]);
    for (i = 0; i < count; ++i)
        sum += read_flash(address + i);
    frame[5] = (unsigned char)(sum >> 8);
    frame[6] = (unsigned char)sum;
    answer(2);
}

void demo(void)
{
    for (;;) {
        if (!receive_frame())
            continue;
        switch (frame[4]) {
        case CONNECT:
            answer(0);
            break;
        case READ_IDENTITY:
            answer_identity();
            break;
        case ERASE:
            erase_flash();
            answer(0);
            break;
        case WRITE:
        case WRITE_AGAIN:
            write_block();
            break;
        case RUN_CODE:
            run_code();
            break;
        }
    }
}
