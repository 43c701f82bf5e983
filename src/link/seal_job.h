// From what has been chosen to a job, sealed: the one place where it is said what of a choice goes into a chip.
#pragma once

#include "image/auto_increase.h"
#include "image/file_buffer.h"
#include "link/job.h"
#include "options/codec.h"

#include <optional>
#include <string>

namespace vrk {

// A buffer, and the record of the number that has been stamped into it where one is in use.
struct NumberInImage {
    const FileBuffer& buffer;
    const AutoIncrease& number;
};

// What a window or a command line has gathered.
struct JobChoices {
    const McuRecord& model;
    std::string model_name;
    bool english = false;
    LineChoice line;
    NumberInImage code;
    NumberInImage data;
    OptionChoices options;
    bool guards_block_1 = false;
    std::optional<std::string> watchdog_pin; // "P1.0"
    double rc_target_mhz = 0;
};
Job seal_job(const JobChoices& choices);

// Parts of it that other jobs have, too.
JobImage image_of(const FileBuffer& buffer);
// What of the numbers in use stands in their buffers.
std::vector<StampedNumber> stamped_numbers(
    const McuRecord& model, const NumberInImage& code, const NumberInImage& data);

} // namespace vrk
