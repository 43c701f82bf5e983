// The second half of a connection: from the low baud of the handshake to the fastest one that the chip's clock allows.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

#include <string_view>

namespace vrk {

// Offers a baud (frame 8F): the chip answers at the new speed, then both go back. True: it answered. `again`: the same
// has been offered before.
bool test_new_baud(Session& session, std::int32_t baud, std::uint8_t p1, std::uint8_t p2, bool again);
// Sets it (frame 8E): both stay at the new speed.
bool set_new_baud(Session& session, std::int32_t baud, std::uint8_t p1, std::uint8_t p2, bool again);

// Names the pin that the boot loader toggles to feed an external watchdog. True where none is wanted.
bool send_extern_WDT_address(Session& session, const Job& job);
// "P1.3" gives 0x13; any text that has not four characters gives 0xFF.
std::uint8_t watchdog_pin_code(std::string_view pin);

// The whole negotiation. Good: connected, and `baud` then holds the speed of the line. Says itself what went wrong.
Result negotiate_baud(Session& session, const Job& job, Report& report, std::int32_t& baud);

Bytes build_test_baud_frame(
    std::uint8_t p1, std::uint8_t p2, std::uint8_t pause, std::uint8_t wait_states, Check check);
Bytes build_set_baud_frame(std::uint8_t p1, std::uint8_t p2, std::uint8_t pause, Check check);

} // namespace vrk
