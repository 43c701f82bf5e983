#include "board/source.h"

#include "catalog/attributes.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::int32_t least_last = 1023;
constexpr std::int32_t block = 128;

// How far the code of the newer families is copied. A series without a row has a limit of 0: one byte goes.
struct CopyLimit {
    int series;
    std::int32_t all_flash; // for models whose code may reach the top of the flash
    std::int32_t usual;
};
// clang-format off
constexpr CopyLimit copy_limits[] = {
//  series  all flash  usual
    {  3,   0x5DFF,    0x5DFF },
    {  5,   0x77FF,    0x6FFF },
    {  6,   0x17FF,    0x13FF },
    {  7,   0xF7FF,    0xF3FF },
    {  8,   0x37FF,    0x33FF },
    {  9,   0x17FF,    0x13FF },
    { 10,   0xF7FF,    0xF3FF },
    { 15,   0x37FF,    0x33FF },
    { 16,   0x37FF,    0x33FF },
    { 17,   0x37FF,    0x33FF },
};
// clang-format on

std::int32_t copy_limit(const McuRecord& model)
{
    if (model.series == 4) // by the size of its code
        return model.ap_last >= 15360 ? 0x6FFF : 0x5DFF;
    const auto row = std::ranges::find(copy_limits, model.series, &CopyLimit::series);
    if (row == std::end(copy_limits))
        return 0;
    return model.cap_all_flash_ap ? row->all_flash : row->usual;
}

// The first `count` bytes of an image to an address of the source; what does not fit is left out.
void copy(const JobImage& image, std::int32_t count, std::int32_t to, BoardSource& source)
{
    if (to < 0 || to > BoardSource::highest)
        return;
    const std::int32_t most = std::min(static_cast<std::int32_t>(image.bytes.size()), BoardSource::highest + 1 - to);
    std::copy_n(image.bytes.begin(), std::clamp(count, 0, most), source.bytes.begin() + to);
}

BoardSource code_up_to(const JobImage& code, std::int32_t last)
{
    BoardSource source;
    source.last = std::min(last, BoardSource::highest);
    copy(code, source.last + 1, 0, source);
    return source;
}

// Data that was loaded for another model has no place in one without a data flash.
bool has_data(const BoardJob& job)
{
    return is_newer_series(job.model.series) && job.data.loaded && has_eeprom_buffer(job.model);
}

BoardSource code_and_data(const BoardJob& job)
{
    const std::int32_t count = job.data.high + 1;
    if (count <= 0)
        return code_up_to(job.code, job.code.high);
    BoardSource source = code_up_to(job.code, job.model.ap_last);
    copy(job.data, count, job.model.eeprom_first, source);
    source.last = std::min(job.model.ap_last + count, BoardSource::highest);
    return source;
}

void open_field(const BoardNumber& number, const NumberField& field, BoardSource& source)
{
    if (!number.in_use)
        return;
    for (std::int32_t at = std::max(field.first, 0); at <= std::min(field.last(), BoardSource::highest); ++at)
        source.bytes[static_cast<std::size_t>(at)] = 0xFF;
}

bool lies_below(const BoardNumber& number, const NumberField& field, std::int32_t last)
{
    return !number.in_use || (field.first >= 0 && field.last() <= last);
}

} // namespace

BoardSource build_board_source(const BoardJob& job)
{
    const std::int32_t last = std::max(job.code.high, least_last);
    if (!is_newer_series(job.model.series))
        return code_up_to(job.code, last);
    return has_data(job) ? code_and_data(job) : code_up_to(job.code, std::min(last, copy_limit(job.model)));
}

bool data_ends_behind(const BoardJob& job, const BoardSource& source)
{
    return has_data(job) && job.data.high >= 0 && job.model.eeprom_first + job.data.high > source.last;
}

NumberField number_field(const BoardNumber& number, std::int32_t base)
{
    const std::int32_t first = number.address - number.bytes + 1;
    const std::int32_t boundary = (first - (first % block + block) % block) + block; // the next one above it
    if (number.address < boundary)
        return {base + first, number.bytes, base + number.address, 0};
    const std::int32_t second = number.address - boundary + 1;
    return {base + first, number.bytes - second, base + boundary, second};
}

NumberField code_number_field(const BoardJob& job) { return number_field(job.code_number, 0); }

NumberField data_number_field(const BoardJob& job) { return number_field(job.data_number, job.model.eeprom_first); }

void leave_numbers_open(const BoardJob& job, BoardSource& source)
{
    open_field(job.code_number, code_number_field(job), source);
    open_field(job.data_number, data_number_field(job), source);
}

bool numbers_lie_below(const BoardJob& job, std::int32_t last)
{
    return lies_below(job.code_number, code_number_field(job), last) &&
        lies_below(job.data_number, data_number_field(job), last);
}

} // namespace vrk
