// Bytes into the board: blocks of 512 bytes in frames of 128, each of which the board confirms.
#pragma once

#include "report/report.h"
#include "session/session.h"

#include <cstdint>
#include <span>

namespace vrk {

// The bytes first..last of an image, whose index is the address on the board. False: a block failed in all its tries,
// or the talk is over.
bool write_board_range(
    Session& session, Report& report, std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last);

} // namespace vrk
