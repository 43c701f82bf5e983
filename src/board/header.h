// The 256 bytes by which a board knows what it holds and how a chip of the model is programmed. What goes in is worked
// out in header_values; where it goes stands in one table, header_fields.
#pragma once

#include "board/board_job.h"
#include "board/source.h"

#include <array>
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

namespace vrk {

// How much of a job a board takes.
struct BoardFit {
    std::int32_t limit = 0; // that the model can use of any board
    std::int32_t capacity = 0; // of this board, not above the limit
    std::int32_t code_end = 0; // last address that will be programmed: that of the source, or the last that fits
    bool cut = false; // the source is longer
};
BoardFit board_fit(const McuRecord& model, std::int32_t board_capacity, std::int32_t source_last); // capacity in bytes
Line cut_text(const BoardFit& fit);

// An area of the chip as the board erases it, in pages.
struct BoardArea {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::uint32_t pages = 0;
};

struct HeaderValues {
    using Bytes = std::vector<std::uint8_t>;

    Bytes name; // of the model, at most 31 characters
    std::uint32_t id = 0;
    std::uint32_t alt_id = 0;
    // Flags are 00 or FF.
    std::uint32_t new_protocol = 0;
    std::uint32_t parity = 0;
    std::uint32_t parity_even = 0;
    std::uint32_t long_frame = 0;
    std::uint32_t no_option_write = 0;
    std::uint32_t all_flash_ap = 0;
    std::uint32_t pins = 0;
    std::uint32_t no_eeprom = 0;
    std::uint32_t checks = 0; // a bit each
    Bytes options; // 16, FF where the model has none

    std::uint32_t code_on_board_first = 0;
    std::uint32_t code_on_board_last = 0;
    std::uint32_t code_last = 0; // the same in the target
    std::uint32_t code_most = 0; // last address that the first area can hold
    std::uint32_t second_on_board_first = 0;
    std::uint32_t second_on_board_last = 0;
    std::uint32_t second_first = 0; // the same in the target
    std::uint32_t second_last = 0;
    std::uint32_t code_end = 0;
    std::uint32_t mark = 0; // that a header stands here

    Bytes code_number; // 11: the place of a number and how it counts
    std::uint32_t code_next = 0;
    Bytes data_number;
    std::uint32_t data_next = 0;

    std::uint32_t page_size = 0;
    BoardArea code_area;
    BoardArea gap_area; // between code and data flash
    BoardArea data_area;
    BoardArea boot_area;
    // Last addresses of code and of data flash; then the same where the source reaches further.
    std::uint32_t flash_code_last = 0;
    std::uint32_t flash_data_last = 0;
    std::uint32_t behind_source = 0;
    std::uint32_t rest_code_last = 0;
    std::uint32_t rest_data_last = 0;
    std::uint32_t older_last = 0; // of a model with an older id; three times
};
HeaderValues header_values(const BoardJob& job, const BoardSource& source, const BoardFit& fit);

struct HeaderField {
    using Number = std::uint32_t HeaderValues::*; // high byte first
    struct AreaPart {
        BoardArea HeaderValues::*area;
        std::uint32_t BoardArea::*part;
    };
    using Bytes = HeaderValues::Bytes HeaderValues::*; // shorter ones are followed by 00

    std::size_t offset;
    std::size_t size;
    std::variant<Number, AreaPart, Bytes> what;
};
std::span<const HeaderField> header_fields();

constexpr std::size_t header_size = 0x100;
std::array<std::uint8_t, header_size> build_board_header(const HeaderValues& values); // with its CRC

} // namespace vrk
