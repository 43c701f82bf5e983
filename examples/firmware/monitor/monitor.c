/* A frame: A5 5A, then a byte without meaning, the length from that byte through the check (two bytes, high first), the
   kind, another byte without meaning, the address, nine registers, the bytes themselves, and the sum of all behind the
   header. The PC answers FE AA, a word, and the sum of the last two. */
#include "monitor.h"

#include <8052.h>

enum { registers, direct_memory, external_memory, data_flash };
enum { received = 0x50, again = 0x52, run = 0x54 };

static __data unsigned char saved_psw, saved_acc, saved_b, saved_dpl, saved_dph, saved_ie, saved_sp;
static __data unsigned char bank[8]; // R0 to R7 of bank 0, in which these routines work
static __bit transmitter_was_free;
static __data unsigned char sum;
static __data unsigned int flash_first;
static unsigned char (*__data flash_read)(unsigned int address);

// Direct addresses stand in the instruction, so each register needs one of its own: mov dpl,ADDRESS and ret. A routine
// in C has its result in dpl.
#define READ(a) 0x85, (unsigned char)(a), 0x82, 0x22
#define READ_4(a) READ(a), READ((a) + 1), READ((a) + 2), READ((a) + 3)
#define READ_16(a) READ_4(a), READ_4((a) + 4), READ_4((a) + 8), READ_4((a) + 12)
static const unsigned char __code readers[] = {READ_16(0x80), READ_16(0x90), READ_16(0xA0), READ_16(0xB0), READ_16(0xC0),
    READ_16(0xD0), READ_16(0xE0), READ_16(0xF0)};

static unsigned char special(unsigned char address)
{
    switch (address) { // what these routines have changed themselves
    case 0x81: return saved_sp;
    case 0x82: return saved_dpl;
    case 0x83: return saved_dph;
    case 0xA8: return saved_ie;
    case 0xD0: return saved_psw;
    case 0xE0: return saved_acc;
    case 0xF0: return saved_b;
    }
    return ((unsigned char (*)(void))(unsigned int)(readers + (address - 0x80) * 4))();
}

static void send(unsigned char byte)
{
    sum += byte;
    TI = 0;
    SBUF = byte;
    while (!TI)
        ;
}

static unsigned char receive(void)
{
    while (!RI)
        ;
    RI = 0;
    return SBUF;
}

// The next word that comes in whole.
static unsigned char word(void)
{
    for (;;) {
        unsigned char byte = receive();
        while (byte == 0xFE) {
            byte = receive();
            if (byte == 0xAA) {
                const unsigned char told = receive();
                byte = receive();
                if (byte == (unsigned char)(0xAA + told))
                    return told;
            }
        }
    }
}

static unsigned char byte_of(unsigned char kind, unsigned int at)
{
    switch (kind) {
    case registers:
        return special((unsigned char)at);
    case direct_memory:
        return at < 8 ? bank[at] : *(__idata unsigned char*)at;
    case external_memory:
        return *(__xdata unsigned char*)at;
    }
    return flash_read(at);
}

static void send_frame(unsigned char kind, unsigned int first, unsigned int count)
{
    static const unsigned char __code told[] = {0xD0, 0xE0, 0x88, 0xC8, 0xD8, 0xA8, 0x81};
    const unsigned int length = 16 + count + 1;
    unsigned int i;
    send(0xA5);
    send(0x5A);
    sum = 0;
    send(0);
    send(length >> 8);
    send(length & 0xFF);
    send(kind);
    send(0);
    send(first >> 8);
    send(first & 0xFF);
    for (i = 0; i < sizeof told; ++i)
        send(special(told[i]));
    send(bank[1]);
    send(bank[0]);
    for (i = 0; i < count; ++i)
        send(byte_of(kind, first + i));
    send(sum);
}

// Until the PC has it. Returns what it said: received, or run where nothing more is wanted.
static unsigned char tell(unsigned char kind, unsigned int first, unsigned int count)
{
    unsigned char said;
    do {
        send_frame(kind, first, count);
        do
            said = word();
        while (said != received && said != again && said != run);
    } while (said == again);
    return said;
}

static void stand_still(void)
{
    while (word() != run)
        ;
}

// A byte that the program has sent may still be on its way. A transmitter that was never used stays silent for good.
static void finish_sending(void)
{
    unsigned int patience = 10000;
    transmitter_was_free = TI;
    while (!TI && --patience)
        ;
}

static void tell_registers(void)
{
    finish_sending();
    if (tell(registers, 0x80, 128) != run && tell(direct_memory, 0, 256) != run)
        stand_still();
    TI = transmitter_was_free;
}

static void tell_external_memory(void)
{
    finish_sending();
    if (tell(external_memory, 0, 1024) != run)
        stand_still();
    TI = transmitter_was_free;
}

static void tell_data_flash(void)
{
    finish_sending();
    if (tell(data_flash, flash_first, 512) != run)
        stand_still();
    TI = transmitter_was_free;
}

// The registers as the program had them. Called as the first thing: two return addresses lie on the stack.
static void keep(void) __naked
{
    __asm
        mov _saved_psw,psw
        mov _saved_acc,a
        mov _saved_b,b
        mov _saved_dpl,dpl
        mov _saved_dph,dph
        mov _saved_ie,_IE
        clr _EA
        mov psw,#0
        mov _bank+0,0x00
        mov _bank+1,0x01
        mov _bank+2,0x02
        mov _bank+3,0x03
        mov _bank+4,0x04
        mov _bank+5,0x05
        mov _bank+6,0x06
        mov _bank+7,0x07
        mov a,sp
        add a,#0xFC
        mov _saved_sp,a
        ret
    __endasm;
}

// And back. Ends the routine that jumps here. The flag that lets interrupts in comes last.
static void give_back(void) __naked
{
    __asm
        mov 0x00,_bank+0
        mov 0x01,_bank+1
        mov 0x02,_bank+2
        mov 0x03,_bank+3
        mov 0x04,_bank+4
        mov 0x05,_bank+5
        mov 0x06,_bank+6
        mov 0x07,_bank+7
        mov dph,_saved_dph
        mov dpl,_saved_dpl
        mov b,_saved_b
        mov a,_saved_acc
        mov psw,_saved_psw
        mov _IE,_saved_ie
        ret
    __endasm;
}

void Debug_SFR(void) __naked
{
    __asm
        lcall _keep
        lcall _tell_registers
        ljmp _give_back
    __endasm;
}

void Debug_xdata(void) __naked
{
    __asm
        lcall _keep
        lcall _tell_external_memory
        ljmp _give_back
    __endasm;
}

static void stop_at_data_flash(void) __naked
{
    __asm
        lcall _keep
        lcall _tell_data_flash
        ljmp _give_back
    __endasm;
}

void Debug_eeprom(unsigned int first, unsigned char (*read)(unsigned int address))
{
    flash_first = first;
    flash_read = read;
    stop_at_data_flash();
}
