// Intel HEX into a buffer. The reader is lenient where files in the field are: it goes by the length of a line and not
// by its count field, stores every record that is not an end record, and drops no data for a wrong checksum unless the
// user says so.
#pragma once

#include "image/hex_lines.h"
#include "report/report.h"

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace vrk {

// One line, read as pairs of hexadecimal digits.
struct HexRecord {
    static constexpr int max_bytes = 261; // of a line; what stands behind them is not looked at
    static constexpr int header_bytes = 4; // count, address, type
    static constexpr std::uint8_t end_of_file = 1;

    std::uint16_t address = 0;
    std::uint8_t type = 0;
    bool checksum_ok = false; // the last byte of the line fits all bytes before it
    int data_count = 0; // 0..256
    std::uint32_t data_sum = 0;
    std::array<std::uint8_t, max_bytes> bytes; // as on the line; nothing behind the last byte read

    std::span<const std::uint8_t> data() const
    {
        return {bytes.data() + header_bytes, static_cast<std::size_t>(data_count)};
    }
};

// Any line that begins with ':'. Blanks, tabs and NULs behind the digits are no part of it. An odd digit at the end
// counts as a pair of its own where the number of pairs, halves rounded to the even neighbour, includes it. In a pair
// the digits end at the first other character; header bytes that the line does not have read as 0.
HexRecord parse_hex_line(std::string_view line);

// Where records go: to the buffer's bytes below `limit`, and into the figures of the load.
struct HexTarget {
    std::span<std::uint8_t> image;
    std::int32_t base = 0; // added to the address of each record
    std::int32_t limit = 0; // first address that is not stored
    std::uint32_t checksum = 0; // of all data bytes, stored or not
    std::int64_t highest = -1; // address seen, stored or not
};
void store_record(const HexRecord& record, HexTarget& target);

// Asked once a line and behind every box: time to serve events. False: while they were served, or a box was open, the
// user has done another thing to the buffer, and nobody waits for this file any more.
using StillWanted = std::function<bool()>;

enum class LoadEnd {
    done,
    refused, // the user gave up on wrong checksums
    no_data, // not one record has brought a byte
    no_end_record, // and one was wanted
    unreadable, // the disk did not give all of it
    changed, // somebody has written the file while it was read
    overtaken, // the file is not wanted any more
};

struct HexFigures {
    LoadEnd end = LoadEnd::done;
    // From here on only of a file that is done.
    std::int32_t high = 0; // highest address seen, 511 at least
    std::uint32_t checksum = 0;
};

// What a look through the lines, up to the first end record, finds.
struct HexContents {
    bool data = false; // a record that brings a byte
    bool end_record = false; // a good one: whoever writes the file is done
};
HexContents look_through(HexLines& lines);

// The whole file. Of the first wrong checksums each is shown in a box; `title` stands over it.
HexFigures parse_hex(
    HexLines& lines, const std::string& title, HexTarget target, Boxes& boxes, const StillWanted& still_wanted);

} // namespace vrk
