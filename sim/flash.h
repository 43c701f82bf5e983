// Flash memory as it is: erasing sets whole sectors to FF, writing can only clear bits.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace sim {

class Flash {
public:
    static constexpr std::size_t sector = 512;

    explicit Flash(std::size_t size)
        : cells_(size, 0xFF)
    {
    }

    std::size_t size() const { return cells_.size(); }
    std::span<const std::uint8_t> cells() const { return cells_; }
    std::vector<std::uint8_t> range(std::size_t first, std::size_t end) const
    {
        return {cells_.begin() + static_cast<std::ptrdiff_t>(first), cells_.begin() + static_cast<std::ptrdiff_t>(end)};
    }

    // The bytes [first, end), cut to what there is.
    void erase(std::size_t first, std::size_t end)
    {
        for (std::size_t i = first; i < std::min(end, cells_.size()); ++i)
            cells_[i] = 0xFF;
    }

    // True: all of it now reads as wanted. Bytes behind the end are not stored and do not count.
    bool write(std::size_t first, std::span<const std::uint8_t> data)
    {
        bool good = true;
        for (std::size_t i = 0; i < data.size() && first + i < cells_.size(); ++i) {
            std::uint8_t& cell = cells_[first + i];
            cell = cell & data[i];
            good = good && cell == data[i];
        }
        return good;
    }

    // For benches that want a chip with something in it.
    void preset(std::size_t first, std::span<const std::uint8_t> data)
    {
        for (std::size_t i = 0; i < data.size() && first + i < cells_.size(); ++i)
            cells_[first + i] = data[i];
    }

private:
    std::vector<std::uint8_t> cells_;
};

} // namespace sim
