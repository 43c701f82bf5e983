// Bytes into the chip, in blocks: each goes out in one frame or in frames of at most 128 bytes, each answered with the
// sum of its bytes. There is no read-back: a block is good when its sums came back right, and is sent up to four times.
#pragma once

#include "session/session.h"

#include "report/report.h"

#include <cstdint>
#include <span>

namespace vrk {

constexpr std::int32_t write_chunk = 128; // bytes of one data frame, at most

// What is to be written, in blocks: `as_chunks` splits a block into frames of that size.
struct WriteRange {
    bool as_chunks = true;
    std::int32_t first = 0;
    std::int32_t last = 0; // the range goes on to the end of its block
    std::int32_t before = 0; // bytes of the same job that are written in front of it, for who waits
    std::int32_t behind = 0; // and after it
};
// False: a block failed, or the user stopped. Bytes past the end of the image go out as 00. `check_boot`: the boot
// block of older chips may end the range earlier.
bool write_range(
    Session& session, Report& report, const WriteRange& range, std::span<const std::uint8_t> image, bool check_boot);

// How long a data frame may stay unanswered, ms, by the chip's clock and the baud of the line.
int reply_timeout_ms(double clock_hz, std::int32_t baud);

// Bytes of the boot block by firmware version, for chips that do not report it. 0: no such version.
std::int16_t boot_size_by_version(int version_times_ten);

} // namespace vrk
