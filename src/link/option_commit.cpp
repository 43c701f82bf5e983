#include "link/option_commit.h"

#include "link/handshake.h"

#include "catalog/attributes.h"
#include "options/status_frame.h"
#include "session/shared_texts.h"

#include <algorithm>
#include <array>

namespace vrk {

namespace {

constexpr Text options_ok = {"设置选项成功。", "Setting options OK. "};
constexpr Text oldest_ok = {"设置选项成功。 (End: ", "Setting options OK.  (End: "};
constexpr Text oldest_double_speed_ok = {"设置双倍速成功。 (End: ", "Lock Chip, set 6 Clocks OK. (End: "};
constexpr Text options_failed = {"设置选项失败。", "Setting options failed!"};

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

// 80 or 81: taken. Anything else means that the chip is not ready for it yet.
bool write_is_taken(const ReceiveState& rx) { return rx.reply_ok && (rx.code() == 0x80 || rx.code() == 0x81); }

bool write_options(Session& session, const Bytes& frame, int attempts, int reply_ms)
{
    for (int attempt = 0; attempt < attempts && !session.is_over(); ++attempt) {
        session.flush();
        if (!session.expect_reply(frame.size(), attempt > 0))
            break;
        session.send(frame);
        session.wait_reply(std::max(reply_ms, session.exchange_ms(frame.size())));
        if (write_is_taken(session.rx))
            return true;
    }
    return false;
}

// The options as the chip has them now. False: it did not answer.
bool read_back(Session& session, const Job& job)
{
    session.flush();
    return read_status(session, job);
}

Result not_written(const Session& session, Report& report)
{
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    report_failed(session, report, 3, options_failed);
    return Result::options_failed;
}

Result options_are_held(Session& session)
{
    session.options_done = true;
    return Result::good;
}

// Writes the frame until the chip has taken it and has told its options again. `taken` looks at those: a difference
// ends the stage, since a chip that did not change a bit will not change it the next time.
template <typename Taken>
Result write_and_compare(
    Session& session, const Job& job, Report& report, const Bytes& frame, int reply_ms, Taken taken)
{
    session.open();
    for (int round = 0; round < rounds && !session.is_over(); ++round) {
        if (!write_options(session, frame, tries, reply_ms) || !read_back(session, job))
            continue;
        session.chip.options_read_ok = taken();
        if (!session.chip.options_read_ok && session.told.none())
            continue; // an answer that tells no options is no answer
        if (!session.chip.options_read_ok)
            break;
        report.say(options_ok);
        return options_are_held(session);
    }
    return not_written(session, report);
}

// The oldest family has one option byte and no choice in it.
Result commit_oldest(Session& session, const Job& job, Report& report)
{
    session.open();
    const bool taken =
        write_options(session, build_single_option_frame(0xFF, session.check()), oldest_tries, oldest_wait_ms);
    if (!taken || !read_back(session, job))
        return not_written(session, report);
    report.say(with_end_time(job.double_speed ? oldest_double_speed_ok : oldest_ok, session.loop));
    return options_are_held(session);
}

// The chip has told this row, and told what is wanted. A row that it did not tell may hold anything.
bool row_holds(const Session& session, std::size_t row, const OptionBytes& wanted, int varying = 0)
{
    return session.told[row] && (session.status_bytes[row] | varying) == (wanted[row] | varying);
}

// Written whole where a bit of byte 8 that acts at the next download is to be set; else only if byte 1 changes.
bool older_needs_writing(const Session& session, const OptionBytes& wanted)
{
    return (wanted[8] & 0xEF) == 0 || (wanted[8] & 0xF7) == 0 || !row_holds(session, 1, wanted);
}

Result commit_older(Session& session, const Job& job, Report& report)
{
    const OptionBytes wanted = job.options.wanted();
    if (!older_needs_writing(session, wanted)) {
        leave_isp(session);
        return options_are_held(session);
    }
    const ChipFacts& chip = session.chip;
    const auto reload_hi = static_cast<std::uint8_t>(job.double_speed ? chip.reload2_hi : chip.reload_hi);
    const auto reload_lo = static_cast<std::uint8_t>(job.double_speed ? chip.reload2_lo : chip.reload_lo);
    return write_and_compare(session, job, report,
        build_older_option_frame(wanted, reload_hi, reload_lo, session.check()), short_form_wait_ms,
        [&] { return row_holds(session, 1, wanted); });
}

bool rows_hold(const Session& session, std::span<const int> rows, const OptionBytes& wanted, int varying_in_row_1 = 0)
{
    return std::all_of(rows.begin(), rows.end(), [&](int row) {
        return row_holds(session, static_cast<std::size_t>(row), wanted, row == 1 ? varying_in_row_1 : 0);
    });
}

bool newer_needs_writing(const Session& session, const OptionBytes& wanted)
{
    const McuRecord& record = session.model();
    const ChipFacts& chip = session.chip;
    const std::size_t firmware_row = record.series >= 7 ? 1 : 2;
    const bool firmware_bit = session.told[firmware_row] && (session.status_bytes[firmware_row] & 2) != 0;
    if (!firmware_bit || record.cap_no_eeprom)
        return true;
    if (Option_Orde(chip.fw_letter, chip.fw_version) == 5 && !row_holds(session, 0, wanted))
        return true;
    return !rows_hold(session, compared_rows(record, chip.fw_letter, chip.fw_version), wanted);
}

bool firmware_gives_back(const ChipFacts& chip) { return version_times_ten(chip.fw_version) >= compares_from_version; }

bool newer_was_taken(const Session& session, const OptionBytes& wanted)
{
    const McuRecord& record = session.model();
    const ChipFacts& chip = session.chip;
    if (option_family(record.series) == 4)
        return rows_hold(session, all_rows, wanted);
    if (!firmware_gives_back(chip))
        return true;
    return rows_hold(
        session, compared_rows(record, chip.fw_letter, chip.fw_version), wanted, record.series >= 7 ? varying_bits : 0);
}

Result commit_newer(Session& session, const Job& job, Report& report)
{
    const McuRecord& record = session.model();
    OptionBytes wanted = job.options.wanted();
    if (record.cap_parity && session.chip.fw_version <= "3.6")
        wanted[3] = 0xFF;
    if (!newer_needs_writing(session, wanted))
        return options_are_held(session);
    const auto clock_hz = static_cast<std::uint32_t>(session.chip.mcu_clock_saved);
    return write_and_compare(session, job, report,
        build_newer_option_frame(wanted, record.series, clock_hz, session.check()), long_form_wait_ms,
        [&] { return newer_was_taken(session, wanted); });
}

// The family without a page of its own choices: its bytes go out as its rule makes them.
Result commit_last(Session& session, const Job& job, Report& report)
{
    const OptionBytes wanted = job.options.wanted();
    const bool has_clock_of_its_own = session.told[3] && (session.status_bytes[3] & 2) != 0;
    if (has_clock_of_its_own && rows_hold(session, rows_last, wanted)) {
        leave_isp(session);
        return options_are_held(session);
    }
    std::optional<std::uint32_t> clock_hz;
    if (!has_clock_of_its_own)
        clock_hz = static_cast<std::uint32_t>(session.chip.mcu_clock_saved);
    return write_and_compare(session, job, report, build_last_option_frame(wanted, clock_hz, session.check()),
        short_form_wait_ms,
        [&] { return !firmware_gives_back(session.chip) || rows_hold(session, rows_last, wanted); });
}

void append_clock(Bytes& parameters, std::uint32_t clock_hz)
{
    parameters.insert(parameters.end(), {high(clock_hz >> 16), low(clock_hz >> 16), high(clock_hz), low(clock_hz)});
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

Result commit_options(Session& session, const Job& job, Report& report)
{
    session.options_done = false;
    const std::int32_t series = session.model().series;
    if (series == 0)
        return commit_oldest(session, job, report);
    if (series == 18)
        return commit_last(session, job, report);
    return is_newer_series(series) ? commit_newer(session, job, report) : commit_older(session, job, report);
}

} // namespace vrk
