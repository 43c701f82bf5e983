#include "image/file_buffer.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::int32_t empty_last = 1023; // an empty buffer counts as 1 KB

} // namespace

void fill_buffer(std::uint8_t fill, FileBuffer& buffer) { std::fill(buffer.data.begin(), buffer.data.end(), fill); }

void empty_buffer(std::uint8_t fill, FileBuffer& buffer)
{
    fill_buffer(fill, buffer);
    buffer.low = 0;
    buffer.high = empty_last;
    buffer.first = 0;
    buffer.view_low = 0;
    buffer.view_high = empty_last;
    buffer.checksum = 0;
    buffer.loaded = false;
}

} // namespace vrk
