// Frame 65: the chip leaves its line, measures its RC oscillator at each band and trim in the list against the sync
// bytes that it hears meanwhile, and comes back with the counts.
#include "sim/chip.h"

#include "sim/chip_clock.h"
#include "sim/hex_text.h"

namespace sim {

namespace {

constexpr std::size_t rc_points_most = 21;

} // namespace

void Chip::take_rc_test(const CommandFrame& frame)
{
    const std::size_t points = frame.at(16);
    if (!has_rc_test(setup_.model.series) || points < 1 || points > rc_points_most ||
        frame.parameter_count() != 11 + 4 * points) {
        complain("frame 65: " + std::to_string(points) + " points in " + std::to_string(frame.parameter_count()) +
            " parameters, wanted 1 to 21 in 11 + 4 each");
        return;
    }
    bool good = true;
    for (std::size_t i = 0; i < 6; ++i)
        good &= want(frame, 6 + i, setup_.rc_saved[i], "saved trim");
    for (std::size_t i = 12; i < 16; ++i)
        good &= want(frame, i, 0xFF, "filler");
    rc_points_.clear();
    for (std::size_t i = 0; i < points; ++i) {
        good &= want(frame, 19 + 4 * i, 0, "filler") & want(frame, 20 + 4 * i, 0, "filler");
        rc_points_.push_back({frame.at(17 + 4 * i), frame.at(18 + 4 * i)});
    }
    if (!good)
        return;
    rc_syncs_wanted_ = points; // one to measure each
    enter(State::testing_rc);
}

void Chip::answer_rc_test()
{
    Bytes payload(10, 0xFF); // up to index 13
    payload.push_back(static_cast<std::uint8_t>(rc_points_.size()));
    for (const RcPoint& point : rc_points_) {
        const std::uint16_t count = rc_count(rc_frequency_hz(point.band, point.trim), handshake_baud_);
        payload.insert(payload.end(),
            {point.band, point.trim, static_cast<std::uint8_t>(count >> 8U), static_cast<std::uint8_t>(count)});
    }
    enter(State::named);
    answer(0x8E, payload, 0);
}

} // namespace sim
