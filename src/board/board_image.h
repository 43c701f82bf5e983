// What a board is to hold: the target's memory, the header, the quantity and the block CRCs, each in its place of the
// board's 64 KB.
//
//   2000..3FFF  target AC00..CBFF, the second area
//   4000..EBFF  target 0000..ABFF
//   EC00..ECFF  header
//   ED00..ED3F  quantity, bit row of thousands     ED40..ED5F  FF where a number is in use: the board's own notes
//   EE00..EEFF  quantity, bit row of the rest
//   F000..F3FF  CRC of each 128 bytes of the target's memory, low byte first
//   F400..F5FF  FF where a number is in use
#pragma once

#include "board/board_job.h"
#include "board/header.h"
#include "board/source.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace vrk {

using BoardImage = std::vector<std::uint8_t>; // index is the address on the board

BoardImage begin_board_image(const BoardJob& job); // the quantity, and all else 00
// `source` has its numbers left open. `summed` is told of each block whose CRC has been computed, from 0 on.
constexpr int crc_blocks = 512;
BoardImage build_board_image(const BoardJob& job, const BoardSource& source, const BoardFit& fit,
    const std::function<void(int block)>& summed = nullptr);

// Boards that show one area at a time get what lies above the first one at the place of the first one.
constexpr std::int32_t second_bank_first = 0x4000;
constexpr std::int32_t second_bank_last = 0x8C00;
void put_second_bank(const BoardSource& source, BoardImage& image);

// What the 24C512's job writes: the source itself, with the id of the model and its option bytes at its top.
BoardImage stamped_source(const BoardJob& job, const BoardSource& source);

} // namespace vrk
