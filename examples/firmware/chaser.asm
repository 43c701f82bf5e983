; A light runs along the eight pins of P1, forth and back, 11.0592 MHz. The pattern is a table in code memory; the lights
; hang between pins and supply, so that 0 is on.

        .module chaser

P1      = 0x90
steps   = 14
pause   = 80                    ; units of about 1 ms between two steps

        .area   CODE (ABS,CODE)
        .org    0x0000
        ljmp    start

        .org    0x0030          ; behind the interrupt vectors
start:
        mov     sp, #0x30
        mov     dptr, #pattern
restart:
        mov     r7, #0
step:
        mov     a, r7
        movc    a, @a+dptr
        mov     P1, a
        acall   wait
        inc     r7
        cjne    r7, #steps, step
        sjmp    restart

wait:
        mov     r6, #pause
wait_1:
        mov     r5, #2
wait_2:
        mov     r4, #230        ; 230 x 2 cycles x 1.085 us: half a millisecond
        djnz    r4, .
        djnz    r5, wait_2
        djnz    r6, wait_1
        ret

pattern:
        .db     0xFE, 0xFD, 0xFB, 0xF7, 0xEF, 0xDF, 0xBF, 0x7F
        .db     0xBF, 0xDF, 0xEF, 0xF7, 0xFB, 0xFD
