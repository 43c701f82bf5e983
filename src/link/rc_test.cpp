#include "link/rc_test.h"

#include "link/clock.h"

#include "platform/text_number.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace vrk {

namespace {

constexpr std::size_t max_points = 21; // of one reply
constexpr int exchange_ms = 3000;
constexpr int sync_spacing_ms = 10;
constexpr std::int32_t tolerable_error = 25; // hundredths of a percent

struct Bands {
    std::int32_t up_to_khz;
    std::uint8_t low;
    std::uint8_t high;
};

// clang-format off
constexpr Bands band_table[] = {
//     kHz    codes
    {  7500,  0, 0 },
    { 10000,  0, 1 },
    { 15000,  1, 1 },
    { 21000,  1, 2 },
    { 31000,  2, 2 },
};
// clang-format on
constexpr Bands top_bands = {0, 3, 3};

const Bands& bands_for(std::int32_t khz)
{
    for (const Bands& bands : band_table) {
        if (khz <= bands.up_to_khz)
            return bands;
    }
    return top_bands;
}

std::array<BandTrim, 4> first_points(std::uint8_t band_low, std::uint8_t band_high)
{
    if (band_low == band_high)
        return {{{band_low, 0}, {band_low, 128}, {band_high, 128}, {band_high, 200}}};
    return {{{band_low, 128}, {band_low, 255}, {band_high, 0}, {band_high, 128}}};
}

// The chip leaves to measure itself and must hear sync bytes to come back.
bool measure_points(Session& session, std::span<const BandTrim> points)
{
    const Bytes frame = build_rc_frame(session.rc.rc_saved, points);
    if (!session.make_way(frame.size(), false))
        return false;
    session.send(frame);
    session.rx.count = 0;
    session.rx.reply_ok = false;
    const Deadline end(session.loop, exchange_ms);
    while (!session.rx.reply_ok && !session.is_over() && !end.passed()) {
        session.port.send(sync_pair);
        session.wait_reply(sync_spacing_ms);
    }
    if (session.rx.reply_ok)
        session.rc.points = parse_rc_reply(session.frame(), session.line.contact_baud);
    return session.rx.reply_ok;
}

// The first among equally near points wins.
void pick_best(RcTest& rc, double target_mhz)
{
    const double target_hz = round_half_even(target_mhz * 1000000);
    double nearest = 19999999;
    rc.rc_error = 10000;
    rc.best = 255;
    for (std::size_t i = 0; i < rc.points.size(); ++i) {
        const RcPoint& point = rc.points[i];
        const double distance = std::abs(point.hz - target_hz);
        if (distance >= nearest || target_hz <= 0)
            continue;
        nearest = distance;
        rc.best = static_cast<int>(i);
        rc.rc_trim = point.trim;
        rc.rc_error = static_cast<std::int32_t>(round_half_even((point.hz - target_hz) / (target_hz / 10000)));
    }
}

struct TrimLine {
    double slope = 0; // Hz per step of trim
    double offset = 0; // Hz at trim 0
};

TrimLine line_through(const RcPoint& a, const RcPoint& b)
{
    if (a.trim == b.trim)
        return {};
    const double slope = round_half_even((b.hz - a.hz) / (b.trim - a.trim));
    return {slope, a.hz - slope * a.trim};
}

// The guess of the trim, on the line of the band that the best point lies in.
bool rc_fit(RcTest& rc)
{
    if (rc.points.size() < 4)
        return false;
    const bool two_bands = rc.rc_band_low != rc.rc_band_high;
    rc.rc_gap_low = two_bands ? rc.points[1].hz : 0;
    rc.rc_gap_high = two_bands ? rc.points[2].hz : 0;
    const bool upper = rc.best >= 2;
    const TrimLine line = upper ? line_through(rc.points[2], rc.points[3]) : line_through(rc.points[0], rc.points[1]);
    if (line.slope == 0)
        return false;
    rc.rc_trim = static_cast<std::int32_t>(std::floor((rc.rc_target - line.offset) / line.slope));
    return true;
}

std::vector<BandTrim> points_around(const RcTest& rc, int count)
{
    int start = std::max(static_cast<int>(round_half_even(rc.rc_trim - count / 2.0)), 0);
    if (start + count >= 255)
        start = 256 - count;
    const std::uint8_t band = rc.best >= 2 ? rc.rc_band_high : rc.rc_band_low;
    std::vector<BandTrim> points;
    for (int i = 0; i < count; ++i)
        points.push_back({band, static_cast<std::uint8_t>(start + i)});
    return points;
}

} // namespace

std::uint8_t get_FRQS(std::uint8_t code)
{
    return static_cast<std::uint8_t>((code * 64) | (code == 2 || code == 3 ? 32 : 24));
}

Bytes build_rc_frame(std::span<const std::uint8_t, 6> saved, std::span<const BandTrim> points)
{
    Bytes parameters(saved.begin(), saved.end());
    parameters.insert(parameters.end(), {0xFF, 0xFF, 0xFF, 0xFF, static_cast<std::uint8_t>(points.size())});
    for (const BandTrim& point : points)
        parameters.insert(parameters.end(), {point.band, point.trim, 0, 0});
    return build_command_frame(command::rc_test, parameters, Check::sum16);
}

std::vector<RcPoint> parse_rc_reply(std::span<const std::uint8_t> frame, std::int32_t contact_baud)
{
    std::vector<RcPoint> points;
    if (frame.size() < 15)
        return points;
    const double multiple = round_half_even(contact_baud / 1200.0);
    const std::size_t count = std::min<std::size_t>(frame[14], max_points);
    for (std::size_t i = 0; i < count && 19 + 4 * i <= frame.size(); ++i) {
        const auto at = frame.subspan(15 + 4 * i, 4);
        points.push_back({at[0], at[1], set_test_RC_pa((at[2] * 256 + at[3]) * multiple, contact_baud)});
    }
    return points;
}

bool rc_test(Session& session, double target_mhz, int count)
{
    RcTest& rc = session.rc;
    const auto khz = static_cast<std::int32_t>(round_half_even(target_mhz * 1000));
    rc.rc_target = khz * 1000;
    rc.rc_band_low = get_FRQS(bands_for(khz).low);
    rc.rc_band_high = get_FRQS(bands_for(khz).high);

    if (!measure_points(session, first_points(rc.rc_band_low, rc.rc_band_high)))
        return false;
    pick_best(rc, target_mhz);
    if (!rc_fit(rc))
        return false;

    if (!measure_points(session, points_around(rc, count)))
        return false;
    pick_best(rc, target_mhz);
    return true;
}

bool is_near_target(const RcTest& rc) { return std::abs(rc.rc_error) <= tolerable_error; }

void rc_report(const RcTest& rc, Report& report)
{
    const auto best = static_cast<std::size_t>(rc.best);
    const double best_hz = best < rc.points.size() ? rc.points[best].hz : 0;
    const auto mhz = [](double hz) { return number_text(round_half_even(hz / 1000) / 1000); };
    report.say("");
    report.say("下次下载 RC 振荡器频率频率: " + mhz(best_hz) + "MHz (仅供参考)");
    report.say("                  频率误差: " + number_text(rc.rc_error / 100.0) + "%      (仅供参考)");
    if (is_near_target(rc))
        return;
    report.beep(3);
    report.say(Line::only_chinese("您设置的 RC 振荡器的频率可能在此片 MCU 的频率盲区内，"));
    report.say(Line::only_chinese("频率盲区：" + mhz(rc.rc_gap_low) + " -- " + mhz(rc.rc_gap_high) + "MHz"));
}

} // namespace vrk
