#include "link/program.h"

#include "link/shared_texts.h"

#include "catalog/attributes.h"
#include "options/status_frame.h"
#include "platform/text_number.h"

#include <algorithm>
#include <array>

namespace vrk {

namespace {

constexpr int block_tries = 4;
constexpr std::int32_t least_end = 0x27F; // a range never ends below it
constexpr std::int32_t least_code_last = 0x3FF;
constexpr std::uint8_t code_taken = 0x8D; // the newer chips' answer to the end-of-code command
constexpr std::uint8_t block_taken = 0x80;

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
    report_failed(session, report, 3, with_end_time(failed, session.loop));
    if (!session.port_gone())
        report.say(failed_hint);
    return Result::programming_failed;
}

// The newer chips confirm the whole code. A silent one is left to the option stage to notice; where the user has
// stopped or the port has gone nobody has noticed anything.
Result confirm_code(Session& session, Report& report)
{
    const bool answered = session.ask_model(command::end_of_code, 200, 0);
    if (answered && session.rx.code() != code_taken) {
        report.beep(2);
        report.say(options_left);
        return Result::options_refused;
    }
    return answered || !session.is_over() ? Result::good : failed_by(session, report);
}

void say_beginning(const Session& session, Report& report)
{
    constexpr Text programming = {"正在下载... ( 开始时间: ", "Programming... ( Begin: "};
    report.say(Line{programming} + clock_text(session.loop.wall_time()) + " )");
}

// The boot block of these chips can be larger than its smallest form, and code must not reach into it.
void cut_at_boot_block(Session& session, Report& report, WriteRange& range)
{
    const McuRecord& record = session.model();
    ChipFacts& chip = session.chip;
    if (record.series != 0 && !chip.boot_size_known) {
        const std::int16_t size = boot_size_by_version(version_times_ten(chip.fw_version));
        if (size != 0)
            chip.boot_size = size;
    }
    const std::int32_t most = record.isp_last + 0x400 - chip.boot_size;
    if (chip.boot_size <= 0x400 || session.demo_mode || range.last <= most)
        return;
    report.beep(2);
    range.last = most;
    const std::string kilobytes = std::to_string((range.last + 0x1FF) / 1024);
    Line cut;
    cut.zh = "Chinese:此版本固件最多可编程 " + kilobytes + "K, 您的文件已超长，\n        超长部分不下载。";
    cut.en = "Enable " + kilobytes + "K file size for this Version firmware.\n" + "Enable " + kilobytes +
        "K file size for this Version firmware(program " + kilobytes + "K only).";
    report.say(cut);
}

bool block_is_written(Session& session, const WriteRange& range, std::int32_t first, std::int32_t last,
    std::span<const std::uint8_t> image)
{
    for (int attempt = 0; attempt < block_tries; ++attempt) {
        const bool good = write_block(session, range.as_chunks, first, last, attempt > 0, image);
        if (session.is_over())
            return false;
        if (good)
            return true;
    }
    return false;
}

// The bytes of a chunk; what lies past the end of the image is 00.
std::span<const std::uint8_t> chunk_of(std::span<const std::uint8_t> image, std::int32_t address, std::int32_t count,
    std::array<std::uint8_t, 128>& filled)
{
    const auto at = static_cast<std::size_t>(address);
    const auto size = static_cast<std::size_t>(count);
    if (at + size <= image.size())
        return image.subspan(at, size);
    filled.fill(0);
    if (at < image.size())
        std::copy(image.begin() + static_cast<std::ptrdiff_t>(at), image.end(), filled.begin());
    return std::span<const std::uint8_t>{filled}.first(size);
}

void note_programmed(SessionFacts& session, std::int32_t first, std::int32_t last, std::span<const std::uint8_t> image)
{
    std::vector<std::int16_t>& programmed = session.programmed;
    if (programmed.size() <= static_cast<std::size_t>(last))
        programmed.resize(static_cast<std::size_t>(last) + 1, -1);
    for (auto at = static_cast<std::size_t>(first); at <= static_cast<std::size_t>(last); ++at)
        programmed[at] = at < image.size() ? image[at] : std::int16_t{0};
}

bool block_reply_good(std::span<const std::uint8_t> reply, bool new_protocol, std::uint16_t data_sum)
{
    if (reply.size() < 5)
        return false;
    const bool sum_good = reply[4] == low(data_sum);
    if (new_protocol)
        return reply[3] == 0 && sum_good;
    const bool short_answer = reply[1] == 0 && reply[2] == 6; // taken, and too old to send the sum
    return reply[3] == block_taken && (short_answer || sum_good);
}

bool write_demo_chunk(Session& session, std::int32_t address, bool again, std::span<const std::uint8_t> data)
{
    const DataFrame frame = build_demo_data_frame(
        again ? command::demo_write_again : command::demo_write, static_cast<std::uint32_t>(address), data);
    session.data_sum = frame.data_sum;
    if (!session.make_way(frame.bytes.size(), again))
        return false;
    session.flush();
    session.rx.demo_reply_ok = false;
    session.port.send(frame.bytes);
    const Deadline end(
        session.loop, reply_timeout_ms(static_cast<double>(session.chip.mcu_clock_hz), session.port.line().baud));
    while (!session.rx.demo_reply_ok && !session.is_over() && !end.passed())
        session.loop.yield();
    if (!session.rx.demo_reply_ok)
        return false;
    session.rx.reply_ok = true;
    const auto reply = session.frame();
    return reply.size() > 6 && reply[5] * 256 + reply[6] == session.data_sum;
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

std::int16_t boot_size_by_version(int version_times_ten)
{
    if (version_times_ten < 0 || version_times_ten > 39)
        return 0;
    const bool small = (version_times_ten >= 19 && version_times_ten <= 24) || version_times_ten == 26;
    return small ? 1024 : 2048;
}

int reply_timeout_ms(double clock_hz, std::int32_t baud)
{
    struct Row {
        double below;
        int ms;
    };
    constexpr Row by_clock[] = {{3000000, 4000}, {4000000, 3000}, {6000000, 2000}, {8000000, 1500}, {12000000, 1200}};
    constexpr Row by_baud[] = {{1200, 5000}, {2400, 3000}, {4800, 2000}, {9600, 1500}}; // up to this baud at least
    int ms = 1000;
    for (const Row& row : by_clock) {
        if (clock_hz < row.below) {
            ms = row.ms;
            break;
        }
    }
    for (const Row& row : by_baud) {
        if (baud <= row.below)
            return std::max(ms, row.ms);
    }
    return ms;
}

Result program_all(Session& session, const Job& job, Report& report)
{
    session.program_ok = false;
    session.programmed.clear();
    session.program_started_us = session.loop.now_us();
    report.enter(Stage::writing);
    say_beginning(session, report);
    if (!write_images(session, job, report))
        return failed_by(session, report);
    const McuRecord& record = session.model();
    if (!record.cap_no_option_write && record.cap_new_protocol) {
        if (const Result confirmed = confirm_code(session, report); confirmed != Result::good)
            return confirmed;
    }
    session.program_ok = true;
    return Result::good;
}

bool write_range(
    Session& session, Report& report, const WriteRange& range, std::span<const std::uint8_t> image, bool check_boot)
{
    const McuRecord& record = session.model();
    const std::int32_t block = block_bytes(record);
    WriteRange whole = range;
    whole.last = std::max((range.last / block + 1) * block - 1, least_end);
    if (is_aspen_top(record) || (record.series == 2 && check_boot))
        cut_at_boot_block(session, report, whole);
    report.progress({whole.first, whole.last, whole.first - 1});

    std::int32_t first = whole.first;
    std::int32_t last = (first / block + 1) * block - 1; // shorter than a block where the range begins inside one
    for (std::int32_t number = first / block; number <= whole.last / block; ++number) {
        if (!block_is_written(session, whole, first, last, image))
            return false;
        note_programmed(session, first, last, image);
        report.progress({whole.first, whole.last, last});
        first = last + 1;
        last += block;
    }
    return true;
}

bool is_programmed(const SessionFacts& session, std::int32_t address, std::span<const std::uint8_t> bytes)
{
    const std::vector<std::int16_t>& programmed = session.programmed;
    if (address < 0 || static_cast<std::size_t>(address) + bytes.size() > programmed.size())
        return false;
    return std::equal(bytes.begin(), bytes.end(), programmed.begin() + address);
}

bool write_block(Session& session, bool as_chunks, std::int32_t first, std::int32_t last, bool again,
    std::span<const std::uint8_t> image)
{
    constexpr std::int32_t chunk = Job::write_chunk;
    if (!as_chunks)
        return write_chunk_frame(session, first, last - first + 1, again, image);
    for (std::int32_t address = first; address <= last; address = (address / chunk + 1) * chunk) {
        if (!write_chunk_frame(session, address, std::min(chunk, last - address + 1), again, image) ||
            session.stop_requested)
            return false;
    }
    return true;
}

bool write_chunk_frame(
    Session& session, std::int32_t address, std::int32_t count, bool again, std::span<const std::uint8_t> image)
{
    std::array<std::uint8_t, 128> filled{};
    const auto data = chunk_of(image, address, count, filled);
    if (session.demo_mode)
        return write_demo_chunk(session, address, again, data);

    const DataFrame frame = build_data_frame(again ? command::write_block_again : command::write_block,
        static_cast<std::uint32_t>(address), data, session.check());
    session.data_sum = frame.data_sum;
    if (!session.make_way(frame.bytes.size(), again))
        return false;
    session.flush();
    session.port.send(frame.bytes);
    if (!session.wait_reply(reply_timeout_ms(static_cast<double>(session.chip.mcu_clock_hz), session.port.line().baud)))
        return false;
    return block_reply_good(session.frame(), session.model().cap_new_protocol, session.data_sum);
}

} // namespace vrk
