// The state of one download. Held by Shell as `job`.
#pragma once

#include "platform/event_loop.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vrk {

struct JobState {
    static constexpr std::int16_t write_chunk = 128; // bytes of one data frame

    bool sequence_running = false; // a click handler that waits is on the stack
    std::int16_t panel_state = 0; // 0 free, 1 free and running, 2 locked, 3 locked and running
    // The job may be changed: nobody is downloading it, and no project holds it.
    bool may_change() const { return panel_state == 0 && !sequence_running; }
    bool program_ok = false; // code and data are in the chip
    std::vector<std::int16_t> programmed; // by flash address: the byte that a good block has put there; -1: none has
    bool options_done = false; // the option commit ran and was good
    bool number_for_next = true; // the serial number of the next chip stands in the buffer, where one is wanted
    bool succeeded = false; // the one result of the last cycle: report, count and beep follow it
    std::string erase_time; // "mm:ss"; empty: not erased
    std::string program_time; // "mm:ss"
    WallTime program_started;
};

// Option bytes. Held by Shell as `options`.
struct OptionState {
    static constexpr int rows = 17;
    // Column 0: wanted in the chip. 1: the start value. 2: a second one, which cannot change the result. 3: not used.
    std::uint8_t option_bytes[rows][4] = {};
    std::uint8_t spare_row_16 = 0; // what row 16 held before the 16-byte families made it 255
    std::int16_t status_bytes[rows] = {}; // read from the chip
    std::string byte_text = "0,0,0"; // third field "1": block 1 must not program block 0
};

} // namespace vrk
