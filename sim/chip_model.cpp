#include "sim/chip_model.h"

namespace sim {

namespace {

struct Firmware {
    int series;
    char letter;
    std::uint8_t version;
    StatusLayout layout;
};

// The last firmware of each series.
// clang-format off
constexpr Firmware firmwares[] = {
//  series letter version layout
    {  0,   'A',   0x42,   StatusLayout::flags    },
    {  1,   'B',   0x42,   StatusLayout::flags    },
    {  2,   'C',   0x42,   StatusLayout::flags    },
    {  3,   'D',   0x56,   StatusLayout::extended },
    {  4,   'E',   0x56,   StatusLayout::extended },
    {  5,   'G',   0x58,   StatusLayout::extended },
    {  6,   'H',   0x58,   StatusLayout::extended },
    {  7,   'I',   0x63,   StatusLayout::long_id  },
    {  8,   'J',   0x63,   StatusLayout::long_id  },
    {  9,   'K',   0x63,   StatusLayout::long_id  },
    { 10,   'L',   0x63,   StatusLayout::long_id  },
    { 11,   'M',   0x63,   StatusLayout::long_id  },
    { 12,   'N',   0x52,   StatusLayout::options  },
    { 13,   'O',   0x52,   StatusLayout::options  },
    { 15,   'Q',   0x63,   StatusLayout::pins     },
    { 16,   'R',   0x63,   StatusLayout::pins     },
    { 17,   'S',   0x63,   StatusLayout::long_id  },
    { 18,   'Z',   0x63,   StatusLayout::long_id  },
};

struct FactoryOption {
    int series;
    std::size_t row;
    std::uint8_t value;
};

// Option rows that do not leave the factory as FF.
constexpr FactoryOption factory_options[] = {
//  series row value
    {  0,   0, 0xF7 },   // 12 clocks
    {  2,   1, 0xFD },
    { 11,   1, 0xFD },
    { 12,   1, 0xFD },
    { 13,   1, 0xFD },
    {  3,   8, 0xF7 },
    {  4,   8, 0xF7 },
    {  5,   8, 0xF7 },
    {  6,   8, 0xF7 },
};

struct FixedBits {
    int series;
    std::size_t row;
    std::uint8_t bits;
};

// Cells that are laid out but have no transistor behind them: they read as they left the factory.
constexpr FixedBits fixed_bits[] = {
//  series row bits
    {  7,   1, 0x08 },
    {  8,   1, 0x08 },
    {  9,   1, 0x08 },
    { 10,   1, 0x08 },
};
// clang-format on

} // namespace

ChipSetup default_setup(const ChipModel& model)
{
    ChipSetup setup;
    setup.model = model;
    for (const Firmware& firmware : firmwares) {
        if (firmware.series != model.series)
            continue;
        setup.letter = firmware.letter;
        setup.version = firmware.version;
        setup.layout = firmware.layout;
    }
    setup.options.fill(0xFF);
    for (const FactoryOption& option : factory_options)
        if (option.series == model.series)
            setup.options[option.row] = option.value;
    for (const FixedBits& fixed : fixed_bits)
        if (fixed.series == model.series)
            setup.fixed_option_bits[fixed.row] = fixed.bits;
    return setup;
}

bool at_double_speed(const ChipSetup& setup)
{
    if (setup.letter == 'A')
        return (setup.options[0] & 8U) != 0;
    return (setup.letter == 'C' || setup.letter == 'N' || setup.letter == 'O') && (setup.options[1] & 1U) == 0;
}

double counting_clock_hz(const ChipSetup& setup)
{
    return at_double_speed(setup) ? 2 * setup.crystal_hz : setup.crystal_hz;
}

bool has_extended_options(const ChipSetup& setup)
{
    const int version = version_number(setup.version);
    switch (setup.letter) {
    case 'D':
    case 'E':
    case 'F':
        return version >= 55;
    case 'G':
    case 'H':
        return version >= 58;
    default:
        return false;
    }
}

bool wants_long_erase(const ChipSetup& setup) { return setup.letter == 'G' || version_number(setup.version) >= 57; }

} // namespace sim
