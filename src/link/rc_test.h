// The RC test: the chip measures its own oscillator at a list of bands and trims, and the tool finds the trim that
// comes closest to the frequency wanted.
#pragma once

#include "report/report.h"
#include "session/session.h"

namespace vrk {

constexpr int rc_test_steps = 11; // trims tried around the best guess

struct BandTrim {
    std::uint8_t band = 0;
    std::uint8_t trim = 0;
};

// The oscillator's band byte for a band code 0 to 3.
std::uint8_t get_FRQS(std::uint8_t code);

// Frame 65 for up to 21 points. Its check has 16 bits in every family.
Bytes build_rc_frame(std::span<const std::uint8_t, 6> saved, std::span<const BandTrim> points);
// The points of the reply; `frame` begins at 68. Points that the frame is too short for are left out.
std::vector<RcPoint> parse_rc_reply(std::span<const std::uint8_t> frame, std::int32_t contact_baud);

// Looks for the trim of target_mhz around `count` points; fills session.rc. False: no answer, stopped, or points that
// no line goes through.
bool rc_test(Session& session, double target_mhz, int count);

bool is_near_target(const RcTest& rc); // no further than 0.25 % off the frequency wanted
// The result, said after the download.
void rc_report(const RcTest& rc, Report& report);

} // namespace vrk
