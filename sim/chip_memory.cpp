// Frame 84 erases, frames 00 and 30 write: a block of at most 128 bytes each, the latter marked as a repeat.
#include "sim/chip.h"

#include "sim/hex_text.h"

#include <algorithm>
#include <numeric>

namespace sim {

namespace {

constexpr std::uint8_t refusal = 0xFF; // answer code to a block that did not take
constexpr std::size_t most_data = 128;

std::uint32_t address_24(const CommandFrame& frame, std::size_t index)
{
    return static_cast<std::uint32_t>(frame.at(index) << 16U | frame.at(index + 1) << 8U | frame.at(index + 2));
}

std::uint32_t address_32(const CommandFrame& frame, std::size_t index)
{
    return static_cast<std::uint32_t>(frame.at(index)) << 24U | address_24(frame, index + 1);
}

} // namespace

bool Chip::sector_count_fits(int count) const
{
    if (count == 255)
        return true;
    const ChipModel& model = setup_.model;
    if (setup_.letter == 'C')
        return count == model.ap_last / 512 + 1 || count == 30 || count == 126;
    // The largest of series 1 counts 62 KB: the last one goes with the loader.
    return model.series == 1 && count == std::min(model.ap_last / 512 + 1, 124);
}

bool Chip::check_erase(const CommandFrame& frame)
{
    const bool long_form = wants_long_erase(setup_);
    const std::size_t wanted = long_form ? 133 : 7;
    if (frame.parameter_count() != wanted)
        return complain("frame 84: " + std::to_string(frame.parameter_count()) + " parameters, firmware " +
            hex(setup_.version, 2) + setup_.letter + " wants " + std::to_string(wanted));
    bool good = true;
    if (!sector_count_fits(frame.at(6)))
        good = complain("frame 84: " + std::to_string(frame.at(6)) + " sectors do not fit this model");
    if (setup_.letter < 'D') {
        for (std::size_t index = 7; index <= 12; ++index)
            good &= want(frame, index, 0x33, "filler");
    } else {
        const std::uint32_t first = address_24(frame, 7);
        const std::uint32_t last = address_24(frame, 10);
        if (first > last || last > flash_.size())
            good = complain("frame 84: range " + hex(first, 4) + " to " + hex(last, 4) + ", the flash ends before " +
                hex(flash_.size(), 4));
    }
    for (std::size_t index = 13; long_form && index <= 138; ++index)
        good &= want(frame, index, static_cast<std::uint8_t>(index < 24 ? 0 : 0x80 - (index - 24)), "filler");
    return good;
}

// The code area always goes. The data flash goes by the range, in whole sectors; a range of one address means none.
void Chip::take_erase(const CommandFrame& frame)
{
    if (!check_erase(frame))
        return;
    const ChipModel& model = setup_.model;
    std::size_t erased = flash_.size();
    if (model.eeprom_last <= model.eeprom_first || setup_.letter < 'D') {
        flash_.erase(0, flash_.size());
    } else {
        const auto data_first = static_cast<std::size_t>(model.eeprom_first);
        const auto data_end = static_cast<std::size_t>(model.eeprom_last) + 1;
        flash_.erase(0, data_first);
        flash_.erase(data_end, flash_.size());
        erased -= data_end - data_first;
        const std::size_t first = address_24(frame, 7);
        const std::size_t last = address_24(frame, 10);
        if (last > first) {
            const std::size_t begin = first / Flash::sector * Flash::sector;
            const std::size_t end = (last / Flash::sector + 1) * Flash::sector;
            flash_.erase(begin, end);
            erased += end - begin;
        }
    }
    tried_blocks_.clear();
    enter(State::erased);
    const std::int64_t work_us = setup_.times.erase_us_per_kb * static_cast<std::int64_t>(erased) / 1024;
    if (!model.new_protocol)
        answer(0x84, {}, work_us);
    else if (setup_.version >= 0x63)
        answer(0x00, setup_.serial, work_us);
    else
        answer(0x00, {}, work_us);
}

bool Chip::check_block(const CommandFrame& frame, std::uint32_t address, std::size_t count)
{
    const std::string what = "frame " + hex(frame.code(), 2) + " at " + hex(address, 4) + ": ";
    if (count < 1 || count > most_data || count + 6 != frame.parameter_count())
        return complain(what + "count " + std::to_string(count) + ", the frame has room for " +
            std::to_string(frame.parameter_count() - 6) + ", wanted 1 to 128");
    // A range that ends with the flash is sent with one block more, from the boot area.
    if (address + count > flash_.size() + Flash::sector)
        return complain(what + "behind the flash, which ends before " + hex(flash_.size(), 4));
    const std::uint32_t block = address / (setup_.model.series == 0 ? 128 : 512);
    const bool again = !tried_blocks_.insert(block).second;
    // The frame that it repeats may have been lost on its way here.
    const bool may_have_missed_it = missed_a_frame_ || !line_faults_.empty();
    if (frame.code() == 0x30 && !again && !may_have_missed_it)
        return complain(what + "marked as a repeat, but nothing of its block came before");
    return true;
}

void Chip::take_block(const CommandFrame& frame)
{
    const std::uint32_t address = address_32(frame, 6);
    const std::size_t count = frame.at(10) * 256U + frame.at(11);
    if (!check_block(frame, address, count))
        return;
    enter(State::writing);
    const std::int64_t work_us = setup_.times.write_us_per_byte * static_cast<std::int64_t>(count);
    for (auto& [refused, times] : faults.refused_blocks) {
        if (times <= 0 || refused < address || refused >= address + count)
            continue;
        --times;
        answer(refusal, {}, work_us);
        return;
    }
    const auto data = frame.from(12, count);
    if (address + count > flash_.size())
        ignored_bytes_ += std::min<std::uint64_t>(count, address + count - flash_.size());
    if (!flash_.write(address, data)) {
        complain("frame " + hex(frame.code(), 2) + " at " + hex(address, 4) + ": written to cells that are not erased");
        answer(refusal, {}, work_us);
        return;
    }
    auto sum = static_cast<std::uint8_t>(std::accumulate(data.begin(), data.end(), 0U));
    if (faults.wrong_sums > 0) {
        --faults.wrong_sums;
        sum = static_cast<std::uint8_t>(sum + 1);
    }
    const std::uint8_t code = setup_.model.new_protocol ? 0x00 : 0x80;
    if (setup_.short_block_answers)
        answer(code, {}, work_us);
    else
        answer(code, std::array{sum}, work_us);
}

// Power goes while the block is on its way into the cells.
void Chip::write_half_of(const CommandFrame& frame)
{
    flash_.write(address_32(frame, 6), frame.from(12, (frame.parameter_count() - 6) / 2));
}

} // namespace sim
