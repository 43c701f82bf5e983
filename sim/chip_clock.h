// What a chip does with its clock: it counts the sync bytes, sets its line from the reloads it is sent, and has an RC
// oscillator that can be trimmed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace sim {

// Counts over the long high part of a sync byte, in a loop of about 12 clocks. The loop is entered late by a little
// that depends on the speed; calibration has given, for each speed, the clocks that one count stands for over all.
//   (counts * round(baud / 1200) / 8, rounded, + 6) * factor = clock
// The eight counts differ by one at most, so that their sum is as near to the clock as whole numbers come.
std::array<std::uint16_t, 8> sync_counts(double clock_hz, std::int32_t baud);

// The same for a call by probe frames at a fixed 115200 baud: (sum + 145) * 500.5 = clock.
std::array<std::uint16_t, 8> probe_counts(double clock_hz);

// One count of the RC test: (count * round(baud / 1200) + 6) * factor = frequency.
std::uint16_t rc_count(double frequency_hz, std::int32_t baud);

// The standard speed within 4 % of the measured one; the measured one itself where there is none.
std::int32_t nearest_standard_baud(std::int32_t measured);

// The speed that a reload gives; 0 if the generator cannot do it.
//   newer  mode 0, 64, 128 or 192 for clock / 384, / 32, / 192, / 16; then over 256 - low
//   older  clock / 32 over 65536 - (high, low)
std::int32_t generated_baud(bool newer, double clock_hz, std::uint8_t mode_or_high, std::uint8_t low);

// The RC oscillator: frequency by band (bits 7 and 6 choose one of four) and trim. The bands overlap a little, and the
// curve is not quite a straight line.
double rc_frequency_hz(std::uint8_t band, std::uint8_t trim);

} // namespace sim
