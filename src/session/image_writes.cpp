#include "session/image_writes.h"

#include "catalog/attributes.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::int32_t least_end = 0x27F; // a range never ends below it
constexpr std::int32_t least_code_last = 0x3FF;

constexpr double oldest_version = 0.0;
constexpr double newest_version = 9.9; // two digits is all that a chip can tell

struct Limits {
    std::int32_t usual;
    std::int32_t all_flash; // of a model whose code may reach the top of the flash
};

Limits limits_above_5_0(const McuRecord& record)
{
    switch (record.series) {
    case 3:
        return {0x5DFF, 0x5DFF};
    case 4:
        return record.ap_last < 0x3C00 ? Limits{0x5DFF, 0x5DFF} : Limits{0x6FFF, 0x6FFF};
    case 5:
        return {0x6FFF, 0x77FF};
    case 6:
    case 9:
    case 15:
    case 16:
        return {0x13FF, 0x17FF};
    case 7:
    case 10:
        return {0xF3FF, 0xF7FF};
    case 8:
    case 17:
        return {0x33FF, 0x37FF};
    default:
        return {record.isp_last, record.isp_last};
    }
}

using Image = std::vector<std::uint8_t>;

// A working copy of the first bytes of an image; what no byte fills is 00.
Image copy_of(const JobImage& image, std::int32_t last)
{
    Image copy(image.bytes.size(), 0);
    const auto count = std::min(static_cast<std::size_t>(std::max(last + 1, 0)), image.bytes.size());
    std::copy_n(image.bytes.begin(), count, copy.begin());
    return copy;
}

std::vector<ImageWrite> code_and_data(const ImageJob& job, const McuRecord& record)
{
    Image merged = copy_of(job.code, record.ap_last);
    const std::int32_t length =
        std::clamp(job.data.high + 1, 0, static_cast<std::int32_t>(merged.size()) - record.eeprom_first);
    std::copy_n(job.data.bytes.begin(), length, merged.begin() + record.eeprom_first);
    return {
        {{true, 0, record.ap_last + 1}, merged}, {{true, record.eeprom_first, record.eeprom_first + length}, merged}};
}

std::vector<ImageWrite> writes_of_newer(const ImageJob& job, const McuRecord& record, double version)
{
    const JobImage& code = job.code;
    if (has_eeprom_buffer(record)) {
        if (job.data.loaded)
            return code_and_data(job, record);
        return {{{true, 0, code.high + 1}, copy_of(code, code.high)}};
    }
    const std::int32_t limit = code_limit(record, version);
    const std::int32_t first = std::min(std::max(code.low, 0), limit);
    const std::int32_t last = std::min(std::max(code.high, least_code_last), limit);
    return {{{true, first, last}, code.bytes}};
}

} // namespace

std::int32_t code_limit(const McuRecord& record, double version)
{
    if (version > 5.0) {
        const Limits limits = limits_above_5_0(record);
        return record.cap_all_flash_ap ? limits.all_flash : limits.usual;
    }
    return record.series == 3 ? 0x13FF : 0x2FFF;
}

std::vector<ImageWrite> image_writes(const ImageJob& job, const McuRecord& record, double version)
{
    const JobImage& code = job.code;
    if (record.series == 18)
        return {{{true, std::max(code.low, 0), std::min(code.high, record.isp_last)}, code.bytes}};
    if (is_newer_series(record.series))
        return writes_of_newer(job, record, version);
    const bool as_chunks = block_bytes(record) > write_chunk;
    return {{{as_chunks, code.low, code.high}, code.bytes}};
}

std::int32_t range_end(const WriteRange& range, const McuRecord& record)
{
    const std::int32_t block = block_bytes(record);
    return std::max((range.last / block + 1) * block - 1, least_end);
}

void put_bytes(FlashBytes& flash, std::int32_t first, std::int32_t last, std::span<const std::uint8_t> image)
{
    if (flash.size() <= static_cast<std::size_t>(last))
        flash.resize(static_cast<std::size_t>(last) + 1, -1);
    for (auto at = static_cast<std::size_t>(first); at <= static_cast<std::size_t>(last); ++at)
        flash[at] = at < image.size() ? image[at] : std::int16_t{0};
}

bool all_hold(const FlashBytes& flash, const std::vector<StampedNumber>& numbers)
{
    return std::ranges::all_of(numbers, [&flash](const StampedNumber& number) {
        const auto first = static_cast<std::size_t>(number.flash_address);
        return number.flash_address >= 0 && first + number.bytes.size() <= flash.size() &&
            std::equal(number.bytes.begin(), number.bytes.end(), flash.begin() + number.flash_address);
    });
}

bool numbers_will_be_written(const ImageJob& job, const McuRecord& record, double version)
{
    if (job.numbers.empty())
        return true;
    FlashBytes flash;
    for (const ImageWrite& write : image_writes(job, record, version))
        put_bytes(flash, write.range.first, range_end(write.range, record), write.image);
    return all_hold(flash, job.numbers);
}

bool numbers_can_be_written(const ImageJob& job)
{
    return numbers_will_be_written(job, job.model, oldest_version) ||
        numbers_will_be_written(job, job.model, newest_version);
}

} // namespace vrk
