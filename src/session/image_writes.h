// Which bytes of a job a download puts where, as far as that is known before anything is sent.
#pragma once

#include "session/image_job.h"
#include "session/write_range.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vrk {

struct ImageWrite {
    WriteRange range;
    std::vector<std::uint8_t> image; // index is the address
};

// In the order of writing. `record` is the model whose rules the wire follows, `version` that of its boot loader.
std::vector<ImageWrite> image_writes(const ImageJob& job, const McuRecord& record, double version);
// Where a range really ends: with its block, and never below the least that is ever written.
std::int32_t range_end(const WriteRange& range, const McuRecord& record);

// By flash address the byte that has been, or will be, put there; -1: none.
using FlashBytes = std::vector<std::int16_t>;
void put_bytes(FlashBytes& flash, std::int32_t first, std::int32_t last, std::span<const std::uint8_t> image);
bool all_hold(const FlashBytes& flash, const std::vector<StampedNumber>& numbers);

// Last address that the newer families without an EEPROM buffer are written to.
std::int32_t code_limit(const McuRecord& record, double version);

// A chip of this model with this boot loader will get all the numbers of the job.
bool numbers_will_be_written(const ImageJob& job, const McuRecord& record, double version);
// At the press no chip has told its version yet: true if there is one with which all numbers will be written.
bool numbers_can_be_written(const ImageJob& job);

} // namespace vrk
