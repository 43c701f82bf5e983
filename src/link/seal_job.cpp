#include "link/seal_job.h"

#include "catalog/attributes.h"
#include "link/negotiate.h"

namespace vrk {

namespace {

// What of a number stands in its buffer; nothing where none was stamped.
void add_number(std::vector<StampedNumber>& numbers, const NumberInImage& image, std::int32_t flash_first)
{
    const AutoIncrease& record = image.number;
    const FileBuffer& buffer = image.buffer;
    const std::int32_t first = record.address + 1 - record.bytes;
    if (!record.valid || record.bytes <= 0 || first < 0 || record.address > buffer.last())
        return;
    const auto begin = buffer.data.begin() + first;
    numbers.push_back({flash_first + first, {begin, begin + record.bytes}});
}

} // namespace

JobImage image_of(const FileBuffer& buffer)
{
    return {buffer.data, buffer.low, buffer.high, buffer.view_high, buffer.loaded};
}

std::vector<StampedNumber> stamped_numbers(const McuRecord& model, const NumberInImage& code, const NumberInImage& data)
{
    std::vector<StampedNumber> numbers;
    add_number(numbers, code, 0);
    add_number(numbers, data, model.eeprom_first);
    return numbers;
}

Job seal_job(const JobChoices& choices)
{
    Job job;
    job.model = choices.model;
    job.model_name = choices.model_name;
    job.english = choices.english;
    job.line = choices.line;

    job.code = image_of(choices.code.buffer);
    job.data = image_of(choices.data.buffer);
    job.numbers = stamped_numbers(job.model, choices.code, choices.data);

    job.options = encode_options(job.model.series, choices.options);
    job.double_speed = choices.options.holds("Double_speed_YES");
    job.guards_block_1 = choices.guards_block_1;
    if (choices.watchdog_pin)
        job.watchdog_pin = watchdog_pin_code(*choices.watchdog_pin);

    job.calibrate_rc = series_is_15_16(job.model.series);
    job.rc_target_mhz = choices.rc_target_mhz;
    return job;
}

} // namespace vrk
