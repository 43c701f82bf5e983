#include "link/program.h"

#include "link/port.h"
#include "link/stop.h"

#include "catalog/attributes.h"
#include "form/waits.h"
#include "options/status_frame.h"
#include "platform/text_number.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vrk {

namespace {

constexpr int block_tries = 4;
constexpr std::int32_t least_end = 0x27F; // a range never ends below it
constexpr std::int32_t least_code_last = 0x3FF;
constexpr std::int32_t byte_progress_last = 0x7FFF; // above it the progress bar counts in 256 bytes
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

// A working copy of the first bytes of a buffer; what no byte fills is 00.
Image copy_of(const FileBuffer& buffer, std::int32_t last)
{
    Image copy(buffer.data.size(), 0);
    const auto count = std::min(static_cast<std::size_t>(std::max(last + 1, 0)), buffer.data.size());
    std::copy_n(buffer.data.begin(), count, copy.begin());
    return copy;
}

bool program_code_and_data(Shell& shell, const McuRecord& record)
{
    Image merged = copy_of(shell.code_buffer, record.ap_last);
    const std::int32_t length =
        std::clamp(shell.data_buffer.high + 1, 0, static_cast<std::int32_t>(merged.size()) - record.eeprom_first);
    std::copy_n(shell.data_buffer.data.begin(), length, merged.begin() + record.eeprom_first);
    return !write_range(shell, {true, 0, record.ap_last + 1}, merged, true) &&
        !write_range(shell, {true, record.eeprom_first, record.eeprom_first + length}, merged, true);
}

bool program_newer(Shell& shell, const McuRecord& record)
{
    const FileBuffer& code = shell.code_buffer;
    if (has_eeprom_buffer(record)) {
        if (shell.data_buffer.loaded)
            return program_code_and_data(shell, record);
        return !write_range(shell, {true, 0, code.high + 1}, copy_of(code, code.high), true);
    }
    const std::int32_t limit = code_limit(record, number_in(shell.target.fw_version));
    const std::int32_t first = std::min(std::max(code.low, 0), limit);
    const std::int32_t last = std::min(std::max(code.high, least_code_last), limit);
    return !write_range(shell, {true, first, last}, code.data, true);
}

bool program_images(Shell& shell, const McuRecord& record)
{
    const FileBuffer& code = shell.code_buffer;
    if (record.series == 18)
        return !write_range(shell, {true, std::max(code.low, 0), std::min(code.high, record.isp_last)}, code.data, true);
    if (is_newer_series(record.series))
        return program_newer(shell, record);
    const bool as_chunks = shell.beside.block_bytes > JobState::write_chunk;
    return !write_range(shell, {as_chunks, code.low, code.high}, code.data, true);
}

void say_failed(Shell& shell)
{
    if (shell.link.stop_requested) {
        beep(shell, 2);
        append_message(shell, stopped);
        return;
    }
    beep(shell, 3);
    append_with_end_time(shell, failed);
    append_message(shell, failed_hint);
}

// The newer chips confirm the whole code. A silent one is left to the option stage to notice.
bool code_is_confirmed(Shell& shell)
{
    board_send_command(shell, command::end_of_code, 200, 0);
    if (!wait_model_reply(shell) || shell.link.rx_buffer[3] == code_taken)
        return true;
    beep(shell, 2);
    append_message(shell, options_left);
    shell.link.reply_ok = false;
    return false;
}

void begin_progress(Shell& shell)
{
    constexpr Text begin_time = {" ( 开始时间: ", " ( Begin: "};
    constexpr Text programming = {"正在下载...", "Programming..."};
    shell.form.ProgressBar1.set_range(1, 3);
    shell.form.ProgressBar1.set_visible(true);
    append_message(shell,
        std::string{in_language(shell, programming)} + std::string{in_language(shell, begin_time)} + clock_now(shell) +
            " )");
}

bool counts_by_bytes(const WriteRange& range)
{
    return range.first <= byte_progress_last && range.last <= byte_progress_last;
}

void set_progress_limits(Shell& shell, const WriteRange& range)
{
    if (counts_by_bytes(range))
        shell.form.ProgressBar1.set_range(range.first, range.last + 1);
    else
        shell.form.ProgressBar1.set_range(range.first / 256, range.last / 256 + 1);
}

void show_progress(Shell& shell, const WriteRange& range, std::int32_t end)
{
    shell.form.ProgressBar1.set_value(counts_by_bytes(range) ? end + 1 : (end + 1) / 256);
    std::array<char, 32> kilobytes{};
    const int size = std::snprintf(kilobytes.data(), kilobytes.size(), "%.3fK", (end - range.first + 1) / 1024.0);
    std::string_view text{kilobytes.data(), static_cast<std::size_t>(size)};
    if (text.starts_with("0."))
        text.remove_prefix(1); // "####.000": no digit in front where there is no whole kilobyte
    shell.form.labKbyte.set_caption(text);
}

// The boot block of these chips can be larger than its smallest shell, and code must not reach into it.
void cut_at_boot_block(Shell& shell, WriteRange& range)
{
    const McuRecord& record = wire_record(shell);
    TargetFacts& target = shell.target;
    if (record.series != 0 && !target.boot_size_known) {
        const std::int16_t size = boot_size_by_version(version_times_ten(target.fw_version));
        if (size != 0)
            target.boot_size = size;
    }
    const std::int32_t most = record.isp_last + 0x400 - target.boot_size;
    if (target.boot_size <= 0x400 || shell.link.demo_mode || range.last <= most)
        return;
    beep(shell, 2);
    range.last = most;
    set_progress_limits(shell, range);
    const std::string kilobytes = std::to_string((range.last + 0x1FF) / 1024);
    if (shell.language_is_english) {
        append_message(shell, "Enable " + kilobytes + "K file size for this Version firmware.");
        append_message(
            shell, "Enable " + kilobytes + "K file size for this Version firmware(program " + kilobytes + "K only).");
    } else {
        append_message(shell, "Chinese:此版本固件最多可编程 " + kilobytes + "K, 您的文件已超长，");
        append_message(shell, "        超长部分不下载。");
    }
}

bool block_failed(
    Shell& shell, const WriteRange& range, std::int32_t first, std::int32_t last, std::span<const std::uint8_t> image)
{
    for (int attempt = 0; attempt < block_tries; ++attempt) {
        const bool bad = write_block(shell, range.as_chunks, first, last, attempt > 0, image);
        if (shell.link.stop_requested)
            return true;
        if (!bad)
            return false;
    }
    return true;
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

void note_programmed(Shell& shell, std::int32_t first, std::int32_t last, std::span<const std::uint8_t> image)
{
    std::vector<std::int16_t>& programmed = shell.job.programmed;
    if (programmed.size() <= static_cast<std::size_t>(last))
        programmed.resize(static_cast<std::size_t>(last) + 1, -1);
    for (auto at = static_cast<std::size_t>(first); at <= static_cast<std::size_t>(last); ++at)
        programmed[at] = at < image.size() ? image[at] : std::int16_t{0};
}

bool block_reply_good(std::span<const std::uint8_t> reply, bool new_protocol, std::uint16_t data_sum)
{
    if (reply.size() < 5)
        return false;
    const bool sum_good = reply[4] == (data_sum & 0xFF);
    if (new_protocol)
        return reply[3] == 0 && sum_good;
    const bool short_answer = reply[1] == 0 && reply[2] == 6; // taken, and too old to send the sum
    return reply[3] == block_taken && (short_answer || sum_good);
}

bool send_demo_chunk(Shell& shell, std::int32_t address, bool again, std::span<const std::uint8_t> data)
{
    LinkState& link = shell.link;
    const DataFrame frame = build_demo_data_frame(
        again ? command::demo_write_again : command::demo_write, static_cast<std::uint32_t>(address), data);
    link.data_sum = frame.data_sum;
    flush_link(shell);
    link.demo_reply_ok = false;
    shell.MSComm1.Output(frame.bytes);
    shell.Timer7.start(reply_timeout_ms(static_cast<double>(shell.target.mcu_clock_hz), shell.MSComm1.baud()));
    while (!link.demo_reply_ok && !link.stop_requested && shell.Timer7.enabled())
        shell.platform.loop.yield();
    shell.Timer7.stop();
    if (!link.demo_reply_ok)
        return false;
    link.reply_ok = true;
    const auto reply = read_frame(shell);
    return reply.size() > 6 && reply[5] * 256 + reply[6] == link.data_sum;
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

void program_all(Shell& shell)
{
    shell.job.program_ok = false;
    shell.job.programmed.clear();
    shell.Timer1.set_interval_ms(800);
    shell.Timer2.set_interval_ms(200);
    shell.job.program_started = shell.platform.loop.wall_time();
    begin_progress(shell);
    const McuRecord& record = wire_record(shell);
    if (!program_images(shell, record))
        return say_failed(shell);
    if (record.cap_no_option_write) {
        shell.link.reply_ok = true;
        shell.job.program_ok = true;
        return;
    }
    shell.job.program_ok = !record.cap_new_protocol || code_is_confirmed(shell);
}

bool write_range(Shell& shell, const WriteRange& range, std::span<const std::uint8_t> image, bool check_boot)
{
    const McuRecord& record = wire_record(shell);
    const std::int32_t block = shell.beside.block_bytes;
    WriteRange whole = range;
    whole.last = std::max((range.last / block + 1) * block - 1, least_end);
    set_progress_limits(shell, whole);
    if (is_aspen_top(record) || (record.series == 2 && check_boot))
        cut_at_boot_block(shell, whole);
    shell.form.ProgressBar1.set_visible(true);
    shell.form.ProgressBar1.set_value(shell.form.ProgressBar1.min());

    std::int32_t first = whole.first;
    std::int32_t last = (first / block + 1) * block - 1; // shorter than a block where the range begins inside one
    for (std::int32_t number = first / block; number <= whole.last / block; ++number) {
        if (block_failed(shell, whole, first, last, image))
            return true;
        note_programmed(shell, first, last, image);
        show_progress(shell, whole, last);
        first = last + 1;
        last += block;
    }
    return false;
}

bool is_programmed(const Shell& shell, std::int32_t address, std::span<const std::uint8_t> bytes)
{
    const std::vector<std::int16_t>& programmed = shell.job.programmed;
    if (address < 0 || static_cast<std::size_t>(address) + bytes.size() > programmed.size())
        return false;
    return std::equal(bytes.begin(), bytes.end(), programmed.begin() + address);
}

bool write_block(Shell& shell, bool as_chunks, std::int32_t first, std::int32_t last, bool again,
    std::span<const std::uint8_t> image)
{
    constexpr std::int32_t chunk = JobState::write_chunk;
    if (!as_chunks)
        return write_chunk_frame(shell, first, last - first + 1, again, image);
    for (std::int32_t address = first; address <= last; address = (address / chunk + 1) * chunk) {
        if (write_chunk_frame(shell, address, std::min(chunk, last - address + 1), again, image) ||
            shell.link.stop_requested)
            return true;
    }
    return false;
}

bool write_chunk_frame(
    Shell& shell, std::int32_t address, std::int32_t count, bool again, std::span<const std::uint8_t> image)
{
    std::array<std::uint8_t, 128> filled{};
    const auto data = chunk_of(image, address, count, filled);
    if (shell.link.demo_mode)
        return !send_demo_chunk(shell, address, again, data);

    const DataFrame frame = build_data_frame(again ? command::write_block_again : command::write_block,
        static_cast<std::uint32_t>(address), data, wire_check(shell));
    shell.link.data_sum = frame.data_sum;
    flush_link(shell);
    shell.MSComm1.Output(frame.bytes);
    if (!wait_reply(shell, reply_timeout_ms(static_cast<double>(shell.target.mcu_clock_hz), shell.MSComm1.baud())))
        return true;
    return !block_reply_good(read_frame(shell), wire_record(shell).cap_new_protocol, shell.link.data_sum);
}

} // namespace vrk
