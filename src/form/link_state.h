// What the wire knows. Held by Shell as `link`.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace vrk {

struct LinkState {
    static constexpr std::size_t rx_size = 2101;

    std::array<std::uint8_t, rx_size> rx_buffer{}; // from the direction byte 0x68 on; the header is never stored
    std::int16_t rx_count = 0; // bytes in rx_buffer; keeps the length of a good frame for its readers
    std::array<std::uint8_t, rx_size> reply_frame{}; // the copy that read_frame makes

    bool accept_frames = false; // false: bytes are read from the port and thrown away
    bool header_required = false; // 46 B9 must be seen before a frame is collected
    bool hdr_46_seen = false;
    bool hdr_b9_seen = false;

    bool reply_ok = false; // a whole frame with a good check stands in rx_buffer
    bool reply_timeout = false; // Timer1 fired
    bool reply_bad = false; // Timer2 fired, or the check of a whole frame failed
    bool demo_reply_ok = false; // a good 5A A5 frame stands in rx_buffer
    bool stop_requested = false; // the user pressed stop; every wait ends on it

    bool demo_mode = false; // the port carries 5A A5 frames
    bool terminal_mode = false; // the terminal owns the port
    bool board_mode = false; // frames to the off-line board: a CRC in place of the sum

    bool link_parity_on = false; // what setMSCommSettings will use
    bool link_parity_even = false;
    std::string handshake_baud = "2400"; // baud at which the present connection began

    std::uint16_t data_sum = 0; // sum of the bytes of the last data frame
    bool in_receive_event = false; // the receive event waits: an inner one leaves the bytes to it
};

} // namespace vrk
