#include "link/option_commit.h"

#include "link/handshake.h"
#include "link/panel_state.h"
#include "link/port.h"
#include "link/sequencer.h"
#include "link/stop.h"

#include "catalog/attributes.h"
#include "form/waits.h"
#include "options/codec.h"
#include "options/status_frame.h"

#include <algorithm>
#include <array>

namespace vrk {

namespace {

constexpr Text options_ok = {"设置选项成功。", "Setting options OK. "};
constexpr Text oldest_ok = {"设置选项成功。 (End: ", "Setting options OK.  (End: "};
constexpr Text oldest_double_speed_ok = {"设置双倍速成功。 (End: ", "Lock Chip, set 6 Clocks OK. (End: "};
constexpr Text options_failed = {"设置选项失败。", "Setting options failed!"};
constexpr Text read_ok = {"读选项成功.", "Reading Options OK. "};
constexpr Text version_read_ok = {"读版本号成功.", "Read MCU Firmware Version OK."};
constexpr Text read_failed = {"读选项失败.", "Reading Options failed!."};

constexpr int rounds = 2;
constexpr int tries = 2; // of a round
constexpr int oldest_tries = 3;
constexpr int oldest_wait_ms = 50;
constexpr int short_form_wait_ms = 500; // some bytes to be written
constexpr int long_form_wait_ms = 2500; // all of them
constexpr int compares_from_version = 32; // older firmware does not give the options back as they were written
constexpr int varying_bits = 0x88; // of byte 1 in series 7 and up: the chip sets them by itself

// Rows by family and firmware.
constexpr int rows_last[] = {0, 3, 4, 5, 8, 9}; // series 18, in the order of its frame
constexpr int all_rows[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
constexpr int rows_16[] = {0, 1, 2, 3, 12, 13};
constexpr int rows_newer_order[] = {0, 1, 2, 3, 9};
constexpr int rows_older_order[] = {2, 3, 8, 10, 11};
constexpr int rows_older_order_hazel[] = {2, 3, 8, 10, 11, 0};

OptionBytes wanted_bytes(const Shell& shell)
{
    OptionBytes bytes{};
    for (std::size_t row = 0; row < bytes.size(); ++row)
        bytes[row] = shell.options.option_bytes[row][0];
    return bytes;
}

// 80 or 81: taken. Anything else means that the chip is not ready for it yet.
bool write_is_taken(const Shell& shell)
{
    const std::uint8_t code = shell.link.rx_buffer[3];
    return shell.link.reply_ok && (code == 0x80 || code == 0x81);
}

void reopen(Shell& shell)
{
    open_link(shell);
    shell.form.imgOpen_sys.set_visible(false);
}

bool write_options(Shell& shell, const Bytes& frame, int attempts, int reply_ms)
{
    for (int attempt = 0; attempt < attempts && !shell.link.stop_requested; ++attempt) {
        flush_link(shell);
        expect_reply(shell);
        send_frame(shell, frame);
        wait_reply(shell, reply_ms);
        if (write_is_taken(shell))
            return true;
    }
    shell.link.reply_ok = false;
    return false;
}

// The options as the chip has them now. False: it did not answer.
bool read_back(Shell& shell)
{
    flush_link(shell);
    read_status(shell);
    return shell.link.reply_ok;
}

void end_without_success(Shell& shell)
{
    shell.link.reply_ok = false;
    if (shell.link.stop_requested)
        report_stop(shell);
    else
        report_option_failure(shell);
}

// The chip holds what was wanted.
void options_are_held(Shell& shell)
{
    shell.job.options_done = true;
    shell.link.reply_ok = true;
}

// Writes the frame until the chip has taken it and has told its options again. `taken` looks at those: a difference
// ends the stage, since a chip that did not change a bit will not change it the next time.
template <typename Taken> void write_and_compare(Shell& shell, const Bytes& frame, int reply_ms, Taken taken)
{
    reopen(shell);
    for (int round = 0; round < rounds && !shell.link.stop_requested; ++round) {
        if (!write_options(shell, frame, tries, reply_ms) || !read_back(shell))
            continue;
        shell.target.options_read_ok = taken();
        if (!shell.target.options_read_ok)
            break;
        append_message(shell, options_ok);
        return options_are_held(shell);
    }
    end_without_success(shell);
}

// The oldest family has one option byte and no choice in it.
void commit_oldest(Shell& shell)
{
    reopen(shell);
    const bool taken =
        write_options(shell, build_single_option_frame(0xFF, wire_check(shell)), oldest_tries, oldest_wait_ms);
    if (!taken || !read_back(shell))
        return end_without_success(shell);
    append_with_end_time(shell, shell.form.Option0[0].value() ? oldest_double_speed_ok : oldest_ok);
    shell.job.options_done = true;
}

// Written whole where a bit of byte 8 that acts at the next download is to be set; else only if byte 1 changes.
bool older_needs_writing(const Shell& shell, const OptionBytes& wanted)
{
    return (wanted[8] & 0xEF) == 0 || (wanted[8] & 0xF7) == 0 || wanted[1] != shell.options.status_bytes[1];
}

void commit_older(Shell& shell)
{
    const OptionBytes wanted = wanted_bytes(shell);
    if (!older_needs_writing(shell, wanted)) {
        leave_isp(shell);
        return options_are_held(shell);
    }
    const TargetFacts& target = shell.target;
    const bool double_speed = is_chosen(shell, "Double_speed_YES");
    const Bytes frame =
        build_older_option_frame(wanted, static_cast<std::uint8_t>(double_speed ? target.reload2_hi : target.reload_hi),
            static_cast<std::uint8_t>(double_speed ? target.reload2_lo : target.reload_lo), wire_check(shell));
    write_and_compare(shell, frame, short_form_wait_ms, [&] { return shell.options.status_bytes[1] == wanted[1]; });
}

bool rows_hold(const Shell& shell, std::span<const int> rows, const OptionBytes& wanted, int varying_in_row_1 = 0)
{
    return std::all_of(rows.begin(), rows.end(), [&](int row) {
        const int mask = row == 1 ? varying_in_row_1 : 0;
        return (shell.options.status_bytes[row] | mask) == (wanted[static_cast<std::size_t>(row)] | mask);
    });
}

bool newer_needs_writing(const Shell& shell, const McuRecord& record, const OptionBytes& wanted)
{
    const auto& have = shell.options.status_bytes;
    const TargetFacts& target = shell.target;
    const bool firmware_bit = (have[record.series >= 7 ? 1 : 2] & 2) != 0;
    if (!firmware_bit || record.cap_no_eeprom)
        return true;
    if (Option_Orde(target.fw_letter, target.fw_version) == 5 && have[0] != wanted[0])
        return true;
    return !rows_hold(shell, compared_rows(record, target.fw_letter, target.fw_version), wanted);
}

bool firmware_gives_back(const Shell& shell)
{
    return version_times_ten(shell.target.fw_version) >= compares_from_version;
}

bool newer_was_taken(const Shell& shell, const McuRecord& record, const OptionBytes& wanted)
{
    if (option_family(record.series) == 4)
        return rows_hold(shell, all_rows, wanted);
    if (!firmware_gives_back(shell))
        return true;
    const auto rows = compared_rows(record, shell.target.fw_letter, shell.target.fw_version);
    return rows_hold(shell, rows, wanted, record.series >= 7 ? varying_bits : 0);
}

void commit_newer(Shell& shell)
{
    const McuRecord& record = wire_record(shell);
    if (record.cap_parity && shell.target.fw_version <= "3.6")
        shell.options.option_bytes[3][0] = 0xFF;
    const OptionBytes wanted = wanted_bytes(shell);
    if (!newer_needs_writing(shell, record, wanted))
        return options_are_held(shell);
    const Bytes frame = build_newer_option_frame(
        wanted, record.series, static_cast<std::uint32_t>(shell.target.mcu_clock_saved), wire_check(shell));
    write_and_compare(shell, frame, long_form_wait_ms, [&] { return newer_was_taken(shell, record, wanted); });
}

// The family without a page of its own choices: its bytes go out as its rule makes them.
void commit_last(Shell& shell)
{
    const OptionBytes wanted = wanted_bytes(shell);
    const bool has_clock_of_its_own = (shell.options.status_bytes[3] & 2) != 0;
    if (has_clock_of_its_own && rows_hold(shell, rows_last, wanted)) {
        leave_isp(shell);
        return options_are_held(shell);
    }
    std::optional<std::uint32_t> clock_hz;
    if (!has_clock_of_its_own)
        clock_hz = static_cast<std::uint32_t>(shell.target.mcu_clock_saved);
    const Bytes frame = build_last_option_frame(wanted, clock_hz, wire_check(shell));
    write_and_compare(shell, frame, short_form_wait_ms,
        [&] { return !firmware_gives_back(shell) || rows_hold(shell, rows_last, wanted); });
}

void append_clock(Bytes& parameters, std::uint32_t clock_hz)
{
    for (const int shift : {24, 16, 8, 0})
        parameters.push_back(static_cast<std::uint8_t>(clock_hz >> shift));
}

} // namespace

std::span<const int> compared_rows(const McuRecord& record, const std::string& letter, const std::string& version)
{
    if (option_family(record.series) == 4)
        return rows_16;
    if (record.series >= 7 || Option_Orde(letter, version) == 5 || (letter == "H" && version_times_ten(version) >= 58))
        return rows_newer_order;
    return record.series == 6 ? std::span<const int>{rows_older_order_hazel} : std::span<const int>{rows_older_order};
}

Bytes build_single_option_frame(std::uint8_t value, Check check)
{
    return build_command_frame(command::write_options, std::span{&value, 1}, check);
}

Bytes build_older_option_frame(const OptionBytes& wanted, std::uint8_t reload_hi, std::uint8_t reload_lo, Check check)
{
    const std::uint8_t parameters[] = {wanted[1], reload_hi, reload_lo, wanted[8]};
    return build_command_frame(command::write_options, parameters, check);
}

Bytes build_newer_option_frame(const OptionBytes& wanted, std::int32_t series, std::uint32_t clock_hz, Check check)
{
    Bytes parameters;
    if (series < 7) {
        parameters = {wanted[2], wanted[3], wanted[8], wanted[10], series == 6 ? wanted[0] : wanted[11]};
        append_clock(parameters, clock_hz);
    }
    parameters.insert(parameters.end(), wanted.begin(), wanted.begin() + 16);
    append_clock(parameters, clock_hz);
    if (series >= 7)
        return build_command_frame(command::write_options, parameters, Check::sum16);
    parameters.insert(parameters.end(), 3, 0xFF);
    return build_command_frame(command::write_options, parameters, check);
}

Bytes build_last_option_frame(const OptionBytes& wanted, std::optional<std::uint32_t> clock_hz, Check check)
{
    Bytes parameters;
    for (const int row : rows_last)
        parameters.push_back(wanted[static_cast<std::size_t>(row)]);
    append_clock(parameters, clock_hz.value_or(0xFFFFFFFF));
    return build_command_frame(command::write_options, parameters, check);
}

void report_option_failure(Shell& shell)
{
    beep(shell, 3);
    append_message(shell, options_failed);
    shell.link.reply_ok = false;
}

void commit_options(Shell& shell)
{
    shell.job.options_done = false;
    build_option_bytes(shell); // now: chips with a short status frame have told nothing at the handshake
    const std::int32_t series = wire_record(shell).series;
    if (series == 0)
        commit_oldest(shell);
    else if (series == 18)
        commit_last(shell);
    else if (is_newer_series(series))
        commit_newer(shell);
    else
        commit_older(shell);
}

void comReadChipLock_Click(Shell& shell)
{
    if (shell.job.sequence_running)
        return;
    shell.job.sequence_running = true;
    lock_panel_for_sequence(shell);
    disable_buttons(shell);
    shell.link.stop_requested = false;
    shell.form.textMsg.set_text("");
    connect_target(shell, Purpose::read_only);
    if (shell.target.target_ok) {
        leave_isp(shell);
        close_link(shell);
        if (!shell.target.options_read_ok)
            append_message(shell, read_failed);
        else
            append_message(shell, shell.target.fw_letter == "B" ? version_read_ok : read_ok);
    }
    unlock_panel_after_sequence(shell);
    enable_buttons(shell);
    shell.form.comReadChipLock.set_enabled(true);
    shell.job.sequence_running = false;
}

} // namespace vrk
