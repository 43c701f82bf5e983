// The clock of the chip, measured by the chip itself on the sync bytes, and what is said about it.
#pragma once

#include "report/text.h"
#include "session/chip_facts.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vrk {

// Hz per count of the boot loader's measuring loop, by the baud of the sync bytes.
std::int32_t set_fquency_CA(std::int32_t contact_baud);

// The eight 16-bit counts of the status frame, summed; rx begins at 68.
std::int32_t sum_of_counts(std::span<const std::uint8_t> rx);
// Hz from that sum: `fixed_115200` for a connection by probe frames, where the loop measures another span.
float measured_clock_hz(std::int32_t sum, std::int32_t contact_baud, bool fixed_115200);
// Hz from one count of an RC test, `count` already scaled to this baud.
double set_test_RC_pa(double count, std::int32_t contact_baud);

std::vector<Line> clock_lines(const ChipFacts& chip); // what the report says of it

} // namespace vrk
