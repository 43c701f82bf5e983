// The programming stage: code and EEPROM data go out in frames of at most 128 bytes, each answered with its sum. There
// is no read-back: a block is good when its sum came back right, and is sent up to four times.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

#include <cstdint>
#include <span>

namespace vrk {

// Writes both images. Good: all blocks came back with their sums; session.program_ok says the same. What went wrong has
// been said.
Result program_all(Session& session, const Job& job, Report& report);

// What is to be written, in blocks: `as_chunks` splits a block into frames of 128 bytes.
struct WriteRange {
    bool as_chunks = true;
    std::int32_t first = 0;
    std::int32_t last = 0; // the range goes on to the end of its block
};
// False: a block failed, or the user stopped. `check_boot`: the boot block of older chips may end the range earlier.
bool write_range(
    Session& session, Report& report, const WriteRange& range, std::span<const std::uint8_t> image, bool check_boot);
// False: bad. `again` marks the frames of a block that is sent once more.
bool write_block(Session& session, bool as_chunks, std::int32_t first, std::int32_t last, bool again,
    std::span<const std::uint8_t> image);
// False: failed. Bytes past the end of the image go out as 00.
bool write_chunk_frame(
    Session& session, std::int32_t address, std::int32_t count, bool again, std::span<const std::uint8_t> image);

// How long a data frame may stay unanswered, ms, by the chip's clock and the baud of the line.
int reply_timeout_ms(double clock_hz, std::int32_t baud);

// Last address that the newer families without an EEPROM buffer are written to.
std::int32_t code_limit(const McuRecord& record, double version);

// Bytes of the boot block by firmware version, for chips that do not report it. 0: no such version.
std::int16_t boot_size_by_version(int version_times_ten);

} // namespace vrk
