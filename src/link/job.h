// Everything that one chip needs, as values: made when the press comes and not changed from then on. What is not in the
// job does not reach a chip.
#pragma once

#include "options/option_bytes.h"
#include "session/image_job.h"
#include "session/session.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vrk {

struct Job : ImageJob {
    std::string model_name; // as the user reads it
    bool english = false; // the English edition refuses boot loaders that are too old for it
    LineChoice line;

    OptionImage options;
    bool double_speed = false; // the choice of it, which also goes by a baud reload of its own
    bool guards_block_1 = false; // block 1 must not program block 0
    std::optional<std::uint8_t> watchdog_pin; // fed by the boot loader while it works; nothing: none has to be

    bool calibrate_rc = false; // measure the oscillator during the connection
    double rc_target_mhz = 0;

    friend bool operator==(const Job&, const Job&) = default; // they put the same into a chip, in the same way
};

} // namespace vrk
