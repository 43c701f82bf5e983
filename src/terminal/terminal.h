// The terminal: what has come in and gone out since the program began, what of it is to be shown, and in which way.
#pragma once

#include "terminal/byte_ring.h"
#include "terminal/code_page.h"
#include "terminal/line_times.h"
#include "terminal/receive_log.h"

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

struct Terminal {
    static constexpr int display_limit = 230000; // characters that the display may hold

    bool has_port = false; // what comes in belongs to the terminal
    ByteRing to_show;
    CompareRing to_compare;
    std::int32_t rx_count = 0; // bytes, lost ones too
    std::int32_t tx_count = 0;
    CodePage page = CodePage::utf8;
    TextDecoder decoder{CodePage::utf8};
    std::string broken_off; // stands for a character whose rest was read in another encoding; to be shown

    ReceiveLog log;
    LineTimes times; // of the display

    void receive(std::span<const std::uint8_t> bytes);
    void use(CodePage new_page); // of what comes from now on

    // What has come since the last call, as it is shown: hexadecimal pairs, or text.
    std::string take_text(bool as_hex);
    std::string take_timed_text(std::string_view time); // text with the time before each line
};

} // namespace vrk
