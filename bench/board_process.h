// A board that talks without a pause, in a process of its own behind a pseudo terminal.
#pragma once

#include "bench/peer_process.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace bench {

// In what pieces its bytes reach the program.
enum class Handing {
    byte_by_byte, // each when its stop bit is through
    by_packet, // what has come in a millisecond, as a USB adapter hands it on
    at_once, // as fast as the terminal takes them
};

class BoardProcess {
public:
    // Numbered lines at the pace of a line of this baud, 8 data bits without parity. At once: `bytes` of them, at no
    // pace.
    BoardProcess(Handing handing, std::int32_t baud, std::uint64_t bytes = 0);
    ~BoardProcess();
    BoardProcess(const BoardProcess&) = delete;
    BoardProcess& operator=(const BoardProcess&) = delete;

    const std::string& path() const { return process_->path(); }
    void begin(); // from now on it talks

private:
    std::array<int, 2> begin_{}; // a pipe: its word
    std::optional<PeerProcess> process_;
};

} // namespace bench
