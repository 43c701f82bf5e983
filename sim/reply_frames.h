// The frames that a chip sends, byte by byte as they stand on the wire.
#pragma once

#include "sim/chip_model.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace sim {

using Bytes = std::vector<std::uint8_t>;

// 46 B9, then 68 00 L code, the payload, the check over all from 68 on (one byte, or two with long frames), 16.
Bytes reply_frame(std::uint8_t code, std::span<const std::uint8_t> payload, bool long_frame);

// What a status frame says beside the setup: facts of this power-up.
struct StatusFacts {
    std::array<std::uint16_t, 8> counts{}; // the measured sync bytes
    std::uint8_t id_high = 0;
    std::uint8_t id_low = 0;
    bool id_unreadable = false;
};

// The first long frame after power-up.
Bytes status_frame(const ChipSetup& setup, const StatusFacts& facts, StatusLayout layout);
// The answer to the command 0x50: the option window of the status frame moved down by 14, no counts, no id.
Bytes read_status_frame(const ChipSetup& setup, bool with_options = true);

} // namespace sim
