// What has come in, and what the waits of a sequence look at. Held by Session as `rx`.
#pragma once

#include <array>
#include <cstdint>

namespace vrk {

struct ReceiveState {
    static constexpr std::size_t buffer_size = 2101;

    std::array<std::uint8_t, buffer_size> buffer{}; // from the direction byte 0x68 on; the header is never stored
    std::int16_t count = 0; // bytes in buffer; keeps the length of a good frame for its readers

    bool accept_frames = false; // false: bytes are read from the port and thrown away
    bool header_required = false; // 46 B9 must be seen before a frame is collected
    bool hdr_46_seen = false;
    bool hdr_b9_seen = false;

    bool reply_ok = false; // a whole frame with a good check stands in buffer
    bool reply_timeout = false; // the answer to a model frame has not come in time
    bool reply_bad = false; // the check of a whole frame failed
    bool demo_reply_ok = false; // a good 5A A5 frame stands in buffer

    bool heard = false; // something has come in since this was cleared, whatever became of it
    bool in_event = false; // the receive event waits: an inner one leaves the bytes to it

    std::uint8_t length() const { return buffer[2]; } // of the frame, as it says itself
    std::uint8_t code() const { return buffer[3]; }
};

} // namespace vrk
