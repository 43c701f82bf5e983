#include "terminal/byte_ring.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::size_t free_places(std::size_t write, std::size_t read)
{
    return (read + ByteRing::size - write - 1) % ByteRing::size;
}

// Copies as many bytes as fit before the end of the array, and moves on. The rest comes back.
std::span<const std::uint8_t> copy_to_end(
    std::vector<std::uint8_t>& ring, std::size_t& write, std::span<const std::uint8_t> bytes)
{
    const std::size_t count = std::min(bytes.size(), ring.size() - write);
    std::copy_n(bytes.begin(), count, ring.begin() + static_cast<std::ptrdiff_t>(write));
    write = (write + count) % ring.size();
    return bytes.subspan(count);
}

} // namespace

void ByteRing::push(std::span<const std::uint8_t> bytes)
{
    bytes = bytes.first(std::min(bytes.size(), free_places(write_, read_)));
    while (!bytes.empty())
        bytes = copy_to_end(bytes_, write_, bytes);
}

std::vector<std::uint8_t> ByteRing::take()
{
    std::vector<std::uint8_t> taken;
    taken.reserve(pending());
    while (read_ != write_) {
        const std::size_t end = read_ < write_ ? write_ : size;
        taken.insert(taken.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(read_),
            bytes_.begin() + static_cast<std::ptrdiff_t>(end));
        read_ = end % size;
    }
    return taken;
}

void CompareRing::push(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        if (free_places(write_, read_) == 0)
            read_ = (read_ + thrown_away) % size;
        const std::size_t count = std::min(bytes.size(), free_places(write_, read_));
        written_ = std::max(written_, std::min(write_ + count, size));
        copy_to_end(bytes_, write_, copy_to_end(bytes_, write_, bytes.first(count)));
        bytes = bytes.subspan(count);
    }
}

void CompareRing::clear() { *this = CompareRing{}; }

} // namespace vrk
