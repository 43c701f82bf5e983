// By what images are known in what is told of a run: the same as in the record of each chip.
#pragma once

#include "bookkeeping/chip_in_books.h"
#include "link/seal_job.h"
#include "recipe/batch.h"

#include <string>

namespace vrk {

struct ImageSums {
    std::string code;
    std::string data; // empty: there is none
};

inline ImageSums sums_of(const Batch& batch)
{
    const auto numbers = stamped_numbers(batch.model, {batch.code, batch.code_number}, {batch.data, batch.data_number});
    return {image_sha256(image_of(batch.code), numbers, 0),
        image_sha256(image_of(batch.data), numbers, batch.model.eeprom_first)};
}

} // namespace vrk
