#include "image/bin_loader.h"

#include <algorithm>
#include <numeric>

namespace vrk {

namespace {

constexpr std::int64_t least_counter = 513; // of the bytes and the read that finds no more: 511 is the least high

} // namespace

BinFigures store_bin(std::span<const std::uint8_t> file, std::int32_t base, std::span<std::uint8_t> image)
{
    const std::size_t first = std::min(static_cast<std::size_t>(std::max(base, 0)), image.size());
    const std::size_t stored = std::min(file.size(), image.size() - first);
    std::copy_n(file.begin(), stored, image.begin() + static_cast<std::ptrdiff_t>(first));

    // The read that finds the end of the file moves the counter once more, and adds nothing. Where the image ends first
    // the counter stays, and the byte that did not fit has been added.
    const bool fits = stored == file.size();
    const std::int64_t counter = std::int64_t{std::max(base, 0)} + static_cast<std::int64_t>(stored) + (fits ? 1 : 0);
    const auto read = file.first(stored + (fits ? 0 : 1));
    const std::int64_t high = std::max(counter, least_counter) - 2;
    return {static_cast<std::int32_t>(high), std::accumulate(read.begin(), read.end(), std::uint32_t{0})};
}

} // namespace vrk
