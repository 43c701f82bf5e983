// The two images that a download writes: code, and the data of the chip's EEPROM.
#pragma once

#include <cstdint>
#include <vector>

namespace vrk {

enum class BufferKind { code, data };
constexpr int index_of(BufferKind kind) { return static_cast<int>(kind); } // in a table with one entry a buffer

struct FileBuffer {
    static constexpr std::int32_t code_last = 0x12000; // highest address of the code buffer
    static constexpr std::int32_t data_last = 0x10000; // and of the EEPROM buffer

    explicit FileBuffer(BufferKind its_kind)
        : kind(its_kind)
        , data(static_cast<std::size_t>(its_kind == BufferKind::code ? code_last : data_last) + 1, std::uint8_t{0})
    {
    }

    BufferKind kind;
    std::int32_t low = 0; // first address that the last load wrote
    std::int32_t high = 1023; // effective last address; high + 1 is the effective length
    std::int32_t first = 0; // from which the board image and the programmer read
    std::int32_t view_low = 0; // lowest address of all merged loads
    std::int32_t view_high = 1023;
    std::vector<std::uint8_t> data; // the image; index is the address, 0 the first byte of code or EEPROM
    std::int32_t checksum = 0; // sum of the bytes of the last load
    std::int32_t start = 0; // taken from the control when a load begins
    bool clear_first = false; // state of the clear check box when a load begins
    bool loaded = false; // a load has finished

    std::int32_t last() const { return static_cast<std::int32_t>(data.size()) - 1; }
};

void fill_buffer(std::uint8_t fill, FileBuffer& buffer); // the bytes alone
// Back to an empty image of 1 KB: fills the buffer and forgets the load.
void empty_buffer(std::uint8_t fill, FileBuffer& buffer);

} // namespace vrk
