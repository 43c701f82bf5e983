#include "shell/written_range.h"

#include "link/seal_job.h"
#include "session/image_writes.h"
#include "shell/make_job.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::uint8_t of_code = 1;
constexpr std::uint8_t of_data = 2;
constexpr double versions[] = {0.0, 9.9}; // oldest and newest

// Where bytes of the buffer come out is asked of the writes themselves, by bytes that tell where they come from.
ImageJob marked_job(const Shell& shell)
{
    ImageJob job;
    job.model = shell.selected;
    job.code = image_of(shell.code_buffer);
    job.data = image_of(shell.data_buffer);
    std::ranges::fill(job.code.bytes, of_code);
    std::ranges::fill(job.data.bytes, of_data);
    return job;
}

AddressRange range_of(std::uint8_t mark, const FlashBytes& flash)
{
    const auto first = std::ranges::find(flash, mark);
    if (first == flash.end())
        return {};
    const auto behind_last = std::find(flash.rbegin(), flash.rend(), mark).base();
    return {
        static_cast<std::int32_t>(first - flash.begin()), static_cast<std::int32_t>(behind_last - flash.begin()) - 1};
}

AddressRange both(const AddressRange& one, const AddressRange& other)
{
    if (one.last < one.first)
        return other;
    if (other.last < other.first)
        return one;
    return {std::min(one.first, other.first), std::max(one.last, other.last)};
}

} // namespace

AddressRange written_range(const Shell& shell, BufferKind kind)
{
    const ImageJob job = marked_job(shell);
    AddressRange written;
    for (const double version : versions) {
        FlashBytes flash;
        for (const ImageWrite& write : image_writes(job, shell.selected, version))
            put_bytes(flash, write.range.first, range_end(write.range, shell.selected), write.image);
        written = both(written, range_of(kind == BufferKind::code ? of_code : of_data, flash));
    }
    if (kind == BufferKind::data && written.first <= written.last)
        return {written.first - shell.selected.eeprom_first, written.last - shell.selected.eeprom_first};
    return written;
}

} // namespace vrk
