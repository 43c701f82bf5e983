#include "session/crc16.h"

namespace vrk {

namespace {

constexpr std::uint16_t polynomial = 0xA001;

// One byte further: entry i is what i leaves behind when it has been shifted out.
constexpr std::array<std::uint16_t, 256> table = [] {
    std::array<std::uint16_t, 256> entries{};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        unsigned entry = static_cast<unsigned>(i);
        for (int bit = 0; bit < 8; ++bit)
            entry = (entry >> 1) ^ ((entry & 1) != 0 ? polynomial : 0U);
        entries[i] = static_cast<std::uint16_t>(entry);
    }
    return entries;
}();
static_assert(table[1] == 0xC0C1);

} // namespace

std::uint16_t crc16_of(std::span<const std::uint8_t> bytes)
{
    unsigned crc = 0xFFFF;
    for (const std::uint8_t byte : bytes)
        crc = (crc >> 8) ^ table[(crc ^ byte) & 0xFF];
    return static_cast<std::uint16_t>(crc);
}

std::array<std::uint8_t, 2> crc16_by_bits(std::span<const std::uint8_t> bytes)
{
    unsigned high = 0xFF;
    unsigned low = 0xFF;
    for (const std::uint8_t byte : bytes) {
        low ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            const bool carry = (low & 1) != 0;
            low = (low >> 1) | ((high & 1) << 7);
            high >>= 1;
            if (carry) {
                high ^= polynomial >> 8;
                low ^= polynomial & 0xFF;
            }
        }
    }
    return {static_cast<std::uint8_t>(high), static_cast<std::uint8_t>(low)};
}

} // namespace vrk
