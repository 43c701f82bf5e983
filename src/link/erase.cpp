#include "link/erase.h"

#include "catalog/attributes.h"
#include "options/status_frame.h"
#include "options/status_report.h"
#include "session/shared_texts.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr int new_protocol_ms = 10000;
constexpr int old_protocol_ms = 5000;
constexpr int tries = 3;
constexpr int sector_bytes = 512;
constexpr std::uint8_t all_sectors = 255;
constexpr std::uint8_t no_address = 0x33; // in place of a range
constexpr std::uint8_t baud_confirmed = 0x84; // the newer chips' answer to the last frame of the baud stage

constexpr Text erasing = {"正在擦除应用程序区...", "We are erasing MCU flash..."};

bool wants_long_form(const ChipFacts& chip)
{
    return chip.fw_letter == "G" || version_times_ten(chip.fw_version) >= 57;
}

// The chip's option to leave the data flash alone.
bool keeps_data(const Session& session)
{
    const StatusBytes& rows = session.status_bytes;
    return series_is_rc_group(session.model().series) ? (rows[1] & 0x08) != 0 : (rows[8] & 0x02) != 0;
}

Bytes erase_frame(const Session& session)
{
    const McuRecord& record = session.model();
    const ChipFacts& chip = session.chip;
    return build_erase_frame(erase_sector_count(record, chip.fw_letter, chip.fw_version),
        erase_range(session.plan, record, chip.fw_letter, keeps_data(session)), wants_long_form(chip), session.check());
}

void say_erase_time(Session& session, Report& report, std::int64_t began_us)
{
    session.erase_time = minutes_since(session.loop, began_us);
    report.say(Line{" ( " + session.erase_time + " )"});
}

bool erase_new_protocol(Session& session, Report& report, std::int64_t began_us)
{
    if (session.rx.code() != baud_confirmed)
        return false;
    const Bytes frame = erase_frame(session);
    if (!session.make_way(frame.size(), false))
        return false;
    session.flush();
    session.send(frame);
    if (!session.wait_reply(new_protocol_ms) || session.rx.code() != 0)
        return false;
    say_erase_time(session, report, began_us);
    if (enable_disp_RC_frequency(session.chip.fw_version, session.rx.length(), 1)) {
        session.chip.serial_number = serial_digits(session.rx.buffer);
        report.say(serial_line(session.chip.serial_number));
    }
    return true;
}

bool erase_old_protocol(Session& session, Report& report, std::int64_t began_us)
{
    session.open();
    session.flush();
    const Bytes frame = erase_frame(session);
    for (int attempt = 0; attempt < tries && !session.is_over(); ++attempt) {
        if (!session.expect_reply(frame.size(), attempt > 0))
            break;
        session.send(frame);
        if (session.wait_reply(old_protocol_ms))
            break;
    }
    say_erase_time(session, report, began_us);
    session.wait(100); // an answer that comes now still counts
    return session.rx.reply_ok;
}

} // namespace

bool erase_chip(Session& session, Report& report)
{
    const std::int64_t began_us = session.loop.now_us();
    session.erase_time.clear();
    report.say(erasing);
    return session.model().cap_new_protocol ? erase_new_protocol(session, report, began_us)
                                            : erase_old_protocol(session, report, began_us);
}

EraseRange erase_range(const DownloadPlan& plan, const McuRecord& record, const std::string& letter, bool keep_data)
{
    EraseRange range;
    if (letter < "D")
        return range;
    range = {plan.data_from, 0};
    if (plan.spill) {
        range.first = plan.spill_from;
        if (!keep_data)
            range.last = plan.data_to;
    } else if (plan.rest_from <= plan.rest_to) {
        range.first = plan.rest_from + 1;
        if (!keep_data)
            range.last = plan.data_to;
    }
    if (record.cap_all_flash_ap)
        range.last = record.ap_last;
    if (range.first > plan.data_to)
        range.first = plan.data_to + 1;
    range.last = std::max(range.last, range.first);
    return range;
}

std::uint8_t erase_sector_count(const McuRecord& record, const std::string& letter, const std::string& version)
{
    if (letter == "A" || letter == "B") {
        if (is_aspen_top(record))
            return 63488 / sector_bytes;
        if (record.mcu_id == "58")
            return 32768 / sector_bytes;
        if (record.mcu_id == "54")
            return 16384 / sector_bytes;
        if (record.mcu_id == "52")
            return 8192 / sector_bytes;
        return all_sectors;
    }
    if (letter != "C")
        return all_sectors;
    if (version_times_ten(version) >= 28)
        return static_cast<std::uint8_t>(std::min<std::int32_t>(record.ap_last / sector_bytes + 1, all_sectors));
    if (record.series == 2)
        return record.mcu_id.starts_with("F0") ? 15360 / sector_bytes : 64512 / sector_bytes;
    return all_sectors;
}

Bytes build_erase_frame(std::uint8_t sectors, const EraseRange& range, bool long_form, Check check)
{
    Bytes parameters = {sectors};
    const bool no_range = range.first == 0x10000 && range.last == 0x10000;
    for (const std::int32_t last_or_first : {range.first, range.last}) {
        const auto address = static_cast<std::uint32_t>(last_or_first);
        if (no_range)
            parameters.insert(parameters.end(), 3, no_address);
        else
            parameters.insert(parameters.end(), {low(address >> 16), high(address), low(address)});
    }
    if (long_form) {
        parameters.insert(parameters.end(), 11, 0); // bytes 13 to 23
        for (int byte = 0x80; byte >= 0x80 - (138 - 24); --byte) // bytes 24 to 138
            parameters.push_back(static_cast<std::uint8_t>(byte));
    }
    return build_command_frame(command::erase, parameters, check);
}

} // namespace vrk
