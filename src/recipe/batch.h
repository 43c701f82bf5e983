// What chip after chip is programmed with: the images, the options and the numbers of a recipe, looked at and found
// good. Each chip gets a job of its own from it.
#pragma once

#include "image/auto_increase.h"
#include "image/file_buffer.h"
#include "link/job.h"
#include "options/codec.h"

#include <optional>
#include <string>

namespace vrk {

struct Batch {
    McuRecord model;
    bool english = false;
    LineChoice line;
    FileBuffer code{BufferKind::code}; // as it was read: numbers are put into the jobs alone
    FileBuffer data{BufferKind::data};
    AutoIncrease code_number{BufferKind::code}; // valid: in use
    AutoIncrease data_number{BufferKind::data};
    OptionChoices options;
    std::optional<std::string> watchdog_pin;
    double rc_target_mhz = 0;
};

Job next_job(const Batch& batch); // of the chip that is to come

// The number that the next chip gets; empty: none. Where both images have one, that of the code.
std::string next_number(const Batch& batch);
// After a good chip: the number behind it takes its place. False: it does not fit any more, and no chip may
// follow.
bool move_numbers(Batch& batch);

// Nothing: the number is in use. A Line: what is wrong with it.
std::optional<Line> put_number_in_use(const McuRecord& model, AutoIncrease& number);

} // namespace vrk
