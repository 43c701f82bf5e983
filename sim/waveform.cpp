#include "sim/waveform.h"

#include <algorithm>
#include <bit>

namespace sim {

bool parity_bit(std::uint8_t data, vrk::Parity parity)
{
    const bool odd_ones = std::popcount(data) % 2 == 1;
    switch (parity) {
    case vrk::Parity::even:
        return odd_ones;
    case vrk::Parity::odd:
        return !odd_ones;
    case vrk::Parity::space:
        return false;
    case vrk::Parity::mark:
    case vrk::Parity::none:
        break;
    }
    return true;
}

Symbol make_symbol(std::uint8_t byte, const vrk::LineSettings& line, std::int64_t start_ns)
{
    const auto data_bits = static_cast<std::uint32_t>(line.data_bits);
    const std::uint32_t data = byte & ((1U << data_bits) - 1U);
    std::uint32_t levels = ~0U << (data_bits + 1U); // stop bits, and idle behind them
    levels |= data << 1U; // the start bit is the zero below
    if (!parity_bit(static_cast<std::uint8_t>(data), line.parity))
        levels &= ~(1U << (data_bits + 1U));
    Symbol symbol{start_ns, bit_time_ns(line.baud), 0, levels, line};
    symbol.cut_ns = symbol.end_ns();
    return symbol;
}

void Waveform::cut(std::int64_t now_ns)
{
    for (Symbol& symbol : symbols_)
        symbol.cut_ns = std::min(symbol.cut_ns, std::max(now_ns, symbol.start_ns));
}

void Waveform::forget_before(std::int64_t time_ns)
{
    while (!symbols_.empty() && symbols_.front().end_ns() <= time_ns)
        symbols_.pop_front();
}

const Symbol* Waveform::symbol_at(std::int64_t time_ns) const
{
    for (const Symbol& symbol : symbols_)
        if (time_ns >= symbol.start_ns && time_ns < symbol.end_ns())
            return &symbol;
    return nullptr;
}

bool Waveform::level(std::int64_t time_ns) const
{
    const Symbol* symbol = symbol_at(time_ns);
    if (symbol == nullptr || time_ns >= symbol->cut_ns)
        return true;
    return (symbol->levels >> ((time_ns - symbol->start_ns) / symbol->bit_ns) & 1U) != 0;
}

std::optional<std::int64_t> Waveform::falling_edge(std::int64_t from_ns) const
{
    for (const Symbol& symbol : symbols_) {
        if (symbol.cut_ns <= from_ns)
            continue;
        bool was_high = true;
        for (int bit = 0; bit < symbol.bits(); ++bit) {
            const bool high = (symbol.levels >> bit & 1U) != 0;
            const std::int64_t edge = symbol.start_ns + bit * symbol.bit_ns;
            if (was_high && !high && edge >= from_ns && edge < symbol.cut_ns)
                return edge;
            was_high = high;
        }
    }
    return std::nullopt;
}

} // namespace sim
