// The option stage: the option bytes that the user chose go into the chip and are read back.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

#include <optional>
#include <span>

namespace vrk {

// Writes the options unless the chip has them already. Good: the chip holds them; session.options_done says the same.
// What went wrong has been said. The code stays in the chip either way.
Result commit_options(Session& session, const Job& job, Report& report);

// Rows in which the chip's answer tells whether it holds what was wanted.
std::span<const int> compared_rows(const McuRecord& record, const std::string& letter, const std::string& version);

// Frame 8D in its forms. `clock_hz` goes out as a 32-bit number. The form of series 18 has FF in its place where the
// chip has a clock of its own.
Bytes build_single_option_frame(std::uint8_t value, Check check); // series 0
Bytes build_older_option_frame(const OptionBytes& wanted, std::uint8_t reload_hi, std::uint8_t reload_lo, Check check);
Bytes build_newer_option_frame(
    const OptionBytes& wanted, std::int32_t series, std::uint32_t clock_hz, Check check); // series 3 to 17
Bytes build_last_option_frame(
    const OptionBytes& wanted, std::optional<std::uint32_t> clock_hz, Check check); // series 18

} // namespace vrk
