// What a bench can have go wrong inside a chip. Held by the chip; it acts on these as if they were its own nature, and
// its true flash knows nothing of them.
#pragma once

#include "sim/chip_model.h"
#include "sim/faults.h"

#include <cstdint>
#include <map>
#include <optional>

namespace sim {

struct ChipFaults {
    bool silent = false; // acts, but never sends
    ReplyFaults replies;
    std::map<std::uint8_t, int> deaf_to; // code: how many frames of it are overheard
    std::map<std::uint32_t, int> refused_blocks; // an address in the block: how many times it is refused
    int wrong_sums = 0; // answers to blocks with a wrong sum, though the block is written
    int busy_options = 0; // answers to an option write that say "not taken yet"
    int answers_without_options = 0; // to a read of the status: they end where the options begin
    int refused_options = 0; // option writes that are answered well and not carried out
    std::optional<int> cut_power_at_frame; // counts down
    std::optional<std::uint16_t> reported_id; // instead of the model's own
    bool id_unreadable = false;
    std::optional<StatusLayout> status_layout; // instead of the setup's
};

} // namespace sim
