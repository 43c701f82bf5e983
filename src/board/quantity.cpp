#include "board/quantity.h"

#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr double most_chips = 1000000;
constexpr int chips_a_thousand = 2048;

constexpr Text too_small = {"脱机下载板下载数量上限应大于 0。", "The number of MCU is too small."};
constexpr Text too_large = {"脱机下载板下载数量上限应小于、等于 1000000。",
    "The number of MCU should be less than or equal to 1000000 on an off-line progam board."};

std::vector<std::uint8_t> bit_row(int bits)
{
    std::vector<std::uint8_t> row(static_cast<std::size_t>(bits / 8), 0xFF);
    if (bits % 8 != 0)
        row.push_back(static_cast<std::uint8_t>((1 << bits % 8) - 1));
    return row;
}

} // namespace

double board_quantity(const BoardJob& job) { return round_half_even(job.quantity); }

QuantityFault quantity_fault(const BoardJob& job)
{
    const double quantity = board_quantity(job);
    if (!(quantity > 0))
        return QuantityFault::too_small;
    return quantity > most_chips ? QuantityFault::too_large : QuantityFault::none;
}

const Text& quantity_text(QuantityFault fault) { return fault == QuantityFault::too_small ? too_small : too_large; }

QuantityRows quantity_rows(const BoardJob& job)
{
    const int quantity = static_cast<int>(board_quantity(job));
    return {bit_row(quantity / chips_a_thousand), bit_row(quantity % chips_a_thousand)};
}

} // namespace vrk
