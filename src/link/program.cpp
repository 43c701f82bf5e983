#include "link/program.h"

#include "link/shared_texts.h"
#include "link/write_range.h"

#include "catalog/attributes.h"
#include "options/status_frame.h"
#include "platform/text_number.h"

#include <algorithm>
#include <array>

namespace vrk {

namespace {

constexpr std::int32_t least_code_last = 0x3FF;
constexpr std::uint8_t code_taken = 0x8D; // the newer chips' answer to the end-of-code command

constexpr Text stopped = {"操作被停止.", "Operation stopped. "};
constexpr Text failed = {"下载失败 (End: ", "Programing failed. (End: "};
constexpr Text failed_hint = {"请尝试用稍低的波特率下载。", "Try to use the lower baud. "};
constexpr Text options_left = {
    "程序已下载，但 Options 未修改。", "The code has already programed, but the Options haven't been modified."};

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

bool write_code_and_data(Session& session, const Job& job, Report& report, const McuRecord& record)
{
    Image merged = copy_of(job.code, record.ap_last);
    const std::int32_t length =
        std::clamp(job.data.high + 1, 0, static_cast<std::int32_t>(merged.size()) - record.eeprom_first);
    std::copy_n(job.data.bytes.begin(), length, merged.begin() + record.eeprom_first);
    return write_range(session, report, {true, 0, record.ap_last + 1}, merged, true) &&
        write_range(session, report, {true, record.eeprom_first, record.eeprom_first + length}, merged, true);
}

bool write_newer(Session& session, const Job& job, Report& report, const McuRecord& record)
{
    const JobImage& code = job.code;
    if (has_eeprom_buffer(record)) {
        if (job.data.loaded)
            return write_code_and_data(session, job, report, record);
        return write_range(session, report, {true, 0, code.high + 1}, copy_of(code, code.high), true);
    }
    const std::int32_t limit = code_limit(record, number_in(session.chip.fw_version));
    const std::int32_t first = std::min(std::max(code.low, 0), limit);
    const std::int32_t last = std::min(std::max(code.high, least_code_last), limit);
    return write_range(session, report, {true, first, last}, code.bytes, true);
}

bool write_images(Session& session, const Job& job, Report& report)
{
    const McuRecord& record = session.model();
    const JobImage& code = job.code;
    if (record.series == 18) {
        return write_range(
            session, report, {true, std::max(code.low, 0), std::min(code.high, record.isp_last)}, code.bytes, true);
    }
    if (is_newer_series(record.series))
        return write_newer(session, job, report, record);
    const bool as_chunks = block_bytes(record) > Job::write_chunk;
    return write_range(session, report, {as_chunks, code.low, code.high}, code.bytes, true);
}

Result failed_by(const Session& session, Report& report)
{
    if (session.stop_requested) {
        report.beep(2);
        report.say(stopped);
        return Result::stopped;
    }
    report.beep(3);
    report.say(with_end_time(failed, session.loop));
    report.say(failed_hint);
    return Result::programming_failed;
}

// The newer chips confirm the whole code. A silent one is left to the option stage to notice.
bool code_is_confirmed(Session& session, Report& report)
{
    if (!session.ask_model(command::end_of_code, 200, 0) || session.rx.code() == code_taken)
        return true;
    report.beep(2);
    report.say(options_left);
    return false;
}

void say_beginning(const Session& session, Report& report)
{
    constexpr Text programming = {"正在下载... ( 开始时间: ", "Programming... ( Begin: "};
    report.say(Line{programming} + clock_text(session.loop.wall_time()) + " )");
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

Result program_all(Session& session, const Job& job, Report& report)
{
    session.program_ok = false;
    session.programmed.clear();
    session.program_started = session.loop.wall_time();
    report.enter(Stage::writing);
    say_beginning(session, report);
    if (!write_images(session, job, report))
        return failed_by(session, report);
    const McuRecord& record = session.model();
    if (!record.cap_no_option_write && record.cap_new_protocol && !code_is_confirmed(session, report))
        return Result::options_refused;
    session.program_ok = true;
    return Result::good;
}

} // namespace vrk
