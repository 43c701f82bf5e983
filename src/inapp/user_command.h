// The bytes that user code in a chip waits for, before it goes to the boot area or into its own downloader. Nothing
// comes back: whether they were understood the connection behind them tells.
#pragma once

#include "report/report.h"
#include "session/result.h"
#include "session/session.h"

#include <optional>
#include <string_view>
#include <vector>

namespace vrk {

// The line that user code listens on. One and a half stop bits go with five data bits alone: there the two that a
// driver is asked for come out as such. Nothing: no driver knows such a line.
std::optional<LineSettings> user_line(
    std::string_view baud, std::string_view parity, std::string_view data_bits, std::string_view stop_bits);

struct UserCommand {
    std::optional<LineSettings> line; // of user_line
    std::vector<std::uint8_t> bytes; // of parse_hex_pairs; none is no mistake
};

// Opens the port with a line of the user's and says why where it cannot. True: it is open.
bool open_user_line(Session& session, const std::optional<LineSettings>& line, Report& report);

// Sends the command. Good: all of it has left, and 20 ms have passed; the port is open.
Result send_user_command(Session& session, const UserCommand& command, Report& report);

} // namespace vrk
