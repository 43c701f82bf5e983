# Makes the constant tables of an example. awk -v table=terminal|atlas -f tables.awk
#
#   sine      256 bytes: one turn, 1 to 255 around 128
#   morse     letters A to Z and digits, as bits behind a leading 1: dot 0, dash 1, first sign first
#   waves     8 wave forms of 1024 samples each, one byte a sample
#   curves    square root, binary logarithm, sine: 4096 words each
#   notes     periods of the notes of ten octaves, in units of 1.085 us

function round(x) { return int(x + 0.5) }
function byte(x) { x = round(x); return x < 0 ? 0 : x > 255 ? 255 : x }
function open_table(type, name, size) { printf "const %s __code %s[%d] = {", type, name, size; column = 0 }
function item(value, per_line) { printf "%s%d,", column++ % per_line ? " " : "\n    ", value }
function close_table() { print "\n};\n" }

function sine_table(    i) {
    open_table("unsigned char", "sine", 256)
    for (i = 0; i < 256; ++i) item(round(128 + 127 * sin(2 * pi * i / 256)), 16)
    close_table()
}

function morse_table(    signs, count, i, j, code) {
    count = split(".- -... -.-. -.. . ..-. --. .... .. .--- -.- .-.. -- -. --- .--. --.- .-. ... - ..- ...- .-- -..- " \
                  "-.-- --.. ----- .---- ..--- ...-- ....- ..... -.... --... ---.. ----.", signs, " ")
    open_table("unsigned char", "morse", count)
    for (i = 1; i <= count; ++i) {
        code = 1
        for (j = 1; j <= length(signs[i]); ++j) code = code * 2 + (substr(signs[i], j, 1) == "-")
        item(code, 16)
    }
    close_table()
}

# Harmonics of a wave form up to the 15th, so that steep edges do not alias.
function wave_sample(form, x,    k, sum) {
    sum = 0
    for (k = 1; k <= 15; ++k) {
        if (form == 0) sum += k == 1 ? sin(x) : 0                                  # sine
        if (form == 1) sum += k % 2 ? sin(k * x) / k : 0                           # square
        if (form == 2) sum += (k % 2 ? 1 : -1) * sin(k * x) / k * 0.6              # saw tooth
        if (form == 3) sum += k % 2 ? (k % 4 == 1 ? 1 : -1) * sin(k * x) / k / k * 0.8 : 0 # triangle
        if (form == 4) sum += (k < 4) * sin(k * x) * 0.4                             # organ
        if (form == 5) sum += k % 2 ? sin(k * x) / k / k + (k > 1) * sin(k * x) / 8 / k : 0 # reed
        if (form == 6) sum += (k == 1 || k == 3 || k == 7) * sin(k * x) / k        # bell
        if (form == 7) sum += cos(k * x) / 16                                      # pulse
    }
    return sum
}

function wave_tables(    form, i) {
    open_table("unsigned char", "waves", 8 * 1024)
    for (form = 0; form < 8; ++form)
        for (i = 0; i < 1024; ++i) item(byte(128 + 120 * wave_sample(form, 2 * pi * i / 1024)), 16)
    close_table()
}

function curve_tables(    i) {
    open_table("unsigned int", "square_root", 4096) # of i / 4096, 16 bits
    for (i = 0; i < 4096; ++i) item(round(65535 * sqrt(i / 4096)), 12)
    close_table()
    open_table("unsigned int", "logarithm", 4096) # of 1 + i / 4096 to the base 2, 16 bits
    for (i = 0; i < 4096; ++i) item(round(65535 * log(1 + i / 4096) / log(2)), 12)
    close_table()
    open_table("unsigned int", "fine_sine", 4096) # a quarter turn, 16 bits
    for (i = 0; i < 4096; ++i) item(round(65535 * sin(pi / 2 * i / 4096)), 12)
    close_table()
}

function note_table(    i) {
    open_table("unsigned int", "note_period", 120)
    for (i = 0; i < 120; ++i) item(round(11059200 / 12 / (16.3516 * 2 ^ (i / 12))), 12)
    close_table()
}

BEGIN {
    pi = atan2(0, -1)
    print "// Made by tables.awk.\n"
    if (table == "terminal") { sine_table(); morse_table() }
    if (table == "atlas") { wave_tables(); curve_tables(); note_table() }
}
