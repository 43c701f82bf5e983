#include "link/sequencer.h"

#include "link/erase.h"
#include "link/handshake.h"
#include "link/option_commit.h"
#include "link/panel_state.h"
#include "link/port.h"
#include "link/program.h"
#include "link/rc_test.h"
#include "link/stop.h"

#include "catalog/attributes.h"
#include "form/waits.h"
#include "image/auto_increase.h"
#include "image/download_plan.h"
#include "image/file_loader.h"
#include "options/status_frame.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr std::uint8_t no_rc_trim = 0xFF;

constexpr Text no_file = {"    Please open code file./请打开文件。    ", "    Please open code file.   "};
constexpr Text firmware_too_old = {
    "", "Sorry, the current program does not support the MCU or Firmware Version is too low."};
constexpr Text block_1_guarded = {"Chinese:因为由 block1 对 block0 编程已被禁止, 所以不能继续下载程序。",
    "Because Block1 to write Block0 is disable, so program can not continue."};
constexpr Text number_left_out = {"注意: 自动增量的数值在下载范围之外，没有写入 MCU。",
    "Note: the auto increment number lies outside of what a download writes, and was not programmed."};
constexpr Text erase_failed = {"擦除失败 (End: ", "Erasing MCU failed. (End: "};
constexpr Text erase_failed_hint = {
    "Try to use the lower baud. / 请尝试用稍低的波特率下载。", "Try to use the lower baud."};

// In English the firmware must be 4.0 up to letter C, 5.0 behind it; the versions compare as text.
bool firmware_is_supported(Shell& shell)
{
    if (!shell.language_is_english)
        return true;
    const std::string_view least = shell.target.fw_letter <= "C" ? "4.0" : "5.0";
    if (shell.target.fw_version >= least)
        return true;
    show_box(shell, firmware_too_old.en);
    return false;
}

// Third field of the option byte text.
bool block_1_is_guarded(const Shell& shell)
{
    const std::string& text = shell.options.byte_text;
    const std::size_t first = text.find(',');
    const std::size_t second = first == std::string::npos ? first : text.find(',', first + 1);
    return shell.beside.block_bytes == JobState::write_chunk && second != std::string::npos &&
        text.substr(second + 1, 1) == "1";
}

bool is_allowed(Shell& shell)
{
    if (!firmware_is_supported(shell) || !shell.target.target_ok)
        return false;
    if (!block_1_is_guarded(shell))
        return true;
    beep(shell, 3);
    append_message(shell, block_1_guarded);
    shell.target.target_ok = false;
    return false;
}

void make_plan(Shell& shell)
{
    if (!shell.plan.name.empty() || !download_plan(shell, Option_Orde(shell.target.fw_letter, shell.target.fw_version)))
        return;
    beep(shell, 2);
    if (shell.language_is_english) {
        append_message(shell, "The Program Code and EEPROM data is too big.");
        append_message(shell, "The exceeding part won't program.");
    } else {
        append_message(shell, "程序文件超出此 MCU 固件下载范围, 超出部分不下载。 ");
    }
}

// Every firmware but the very first can erase.
bool erase_stage(Shell& shell)
{
    if (number_in(shell.target.fw_version) <= 0.2)
        return true;
    erase_chip(shell);
    if (shell.link.stop_requested) {
        report_stop(shell);
        enable_buttons(shell);
        return false;
    }
    if (shell.link.reply_ok)
        return true;
    beep(shell, 3);
    append_with_end_time(shell, erase_failed);
    append_message(shell, erase_failed_hint);
    return false;
}

// The chip writes the last block out before it takes options.
void settle(Shell& shell)
{
    const bool same_baud = shell.form.cobBaudMax.text().substr(0, 4) == shell.link.handshake_baud;
    wait_ms(shell, same_baud ? 1000 : 100);
    shell.form.ProgressBar1.set_visible(false);
}

bool option_stage(Shell& shell)
{
    const McuRecord& record = wire_record(shell);
    if (record.cap_all_flash_ap || record.cap_no_option_write || record.series == 1)
        return true;
    commit_options(shell);
    return shell.link.reply_ok;
}

void report_success(Shell& shell)
{
    JobState& job = shell.job;
    job.program_time = minutes_text(seconds_between(job.program_started, shell.platform.loop.wall_time()));
    if (shell.language_is_english) {
        append_message(shell, "Program OK");
        append_message(shell, "Verify  OK ( Total: " + job.program_time + " )");
        append_message(shell, "Encrypt OK.");
        return;
    }
    append_message(shell, "Program OK / 下载 OK");
    append_message(shell, "Verify  OK / 校验 OK ");
    if (!job.erase_time.empty())
        append_message(shell, "erase times/擦除时间 :  " + job.erase_time);
    append_message(shell, "program times/下载时间: " + job.program_time);
    append_message(shell, "Encrypt OK/ 已加密");
}

void count_success(Shell& shell)
{
    const std::string count = number_text(number_in(shell.form.txtWrite_OK_Count.text()) + 1);
    shell.form.txtWrite_OK_Count.set_text(count);
    shell.platform.settings.set("Settings", "Write_OK_Count", count);
}

bool number_is_programmed(
    const Shell& shell, const AutoIncrease& record, const FileBuffer& buffer, std::int32_t flash_first)
{
    const std::int32_t first = record.address + 1 - record.bytes;
    if (!record.valid || record.bytes <= 0 || first < 0 || record.address > buffer.last())
        return true; // nothing was stamped
    const auto bytes =
        std::span{buffer.data}.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(record.bytes));
    return is_programmed(shell, flash_first + first, bytes);
}

// The effective length of a file ends its writing, and a number does not make it longer.
void report_left_out_number(Shell& shell)
{
    const std::int32_t data_first = wire_record(shell).eeprom_first;
    if (!number_is_programmed(shell, shell.code_increase, shell.code_buffer, 0) ||
        !number_is_programmed(shell, shell.data_increase, shell.data_buffer, data_first))
        append_message(shell, number_left_out);
}

// One chip, from the first sync byte to the last option. True: the chip holds what was planned, and it has been said.
bool program_one_chip(Shell& shell)
{
    shell.link.header_required = false;
    shell.form.textMsg.set_text("");
    connect_target(shell, Purpose::download);
    if (shell.link.stop_requested || !is_allowed(shell))
        return false;
    make_plan(shell);
    if (!erase_stage(shell))
        return false;
    program_all(shell);
    if (!shell.job.program_ok)
        return false;
    settle(shell);
    if (!option_stage(shell))
        return false;
    report_success(shell);
    report_left_out_number(shell);
    if (shell.rc.rc_calibrate && !rc_report(shell))
        return false;
    count_success(shell);
    if (shell.form.optBeepYes.value())
        beep(shell, 1);
    shell.job.number_for_next = move_numbers(shell);
    return true;
}

void clear_counts(Shell& shell)
{
    shell.MSComm1.clear_InBuffer();
    shell.MSComm1.clear_OutBuffer();
}

// The time to change chips. The stop button is not looked at here: the wait runs out, and the next connection stops.
void count_down_to_next(Shell& shell)
{
    leave_isp(shell);
    clear_counts(shell);
    close_link(shell);
    for (int i = static_cast<int>(number_in(shell.form.comDalay_ReDownLoad.text())); i >= 0; --i) {
        const std::string seconds = std::to_string(i);
        if (shell.language_is_english) {
            append_message(shell, "Program succeed.");
            append_message(shell, "After a few seconds, re-connection will continue.  " + seconds);
        } else {
            append_message(shell, "Program succeed. / 下载成功.");
            append_message(shell, "After a few seconds re-connect will continue.  " + seconds);
            append_message(shell, "Chinese:几秒钟后将继续下载下一个 MCU...  " + seconds);
        }
        shell.Timer10.start();
        while (shell.Timer10.enabled())
            shell.platform.loop.yield();
    }
}

void finish(Shell& shell)
{
    shell.Timer9.stop();
    shell.link.stop_requested = true;
    shell.target.target_ok = false;
    clear_counts(shell);
    unlock_panel_after_sequence(shell);
    leave_isp(shell);
    close_link(shell);
}

void run_download(Shell& shell, int row)
{
    shell.rc.last_rc_trim = no_rc_trim;
    shell.rc.rc_calibrate = series_is_15_16(shell.selected.series) && row <= 1;
    shell.link.board_mode = false;
    close_link(shell);
    if (!shell.file_loaded) {
        show_box(shell, in_language(shell, no_file));
        return;
    }
    if (shell.form.cekReloadFile.value())
        reload_code_file(shell);
    if (!numbers_fit(shell))
        return; // the number in the buffer is that of another chip
    lock_panel_for_sequence(shell);
    disable_buttons(shell);
    shell.link.stop_requested = false;
    shell.plan = DownloadPlan{};

    bool another = false; // chip of a repeated download
    do {
        shell.job.succeeded = program_one_chip(shell);
        another = shell.job.succeeded && row == 1 && shell.job.number_for_next;
        if (another)
            count_down_to_next(shell);
    } while (another);
    if (shell.job.succeeded)
        finish(shell);
    else if (!shell.file_loaded)
        unlock_panel_after_sequence(
            shell); // the chip was another model: the file has to be opened again, or another picked
    enable_buttons(shell);
}

} // namespace

void comDownload_Click(Shell& shell, int row)
{
    if (shell.job.sequence_running)
        return; // a click that came while the first one was still reading its file
    shell.job.sequence_running = true;
    shell.job.succeeded = false;
    run_download(shell, row);
    shell.job.sequence_running = false;
}

void comStop_Download_Click(Shell& shell)
{
    shell.Timer9.stop();
    shell.link.stop_requested = true;
    shell.target.target_ok = false;
    clear_counts(shell);
    close_link(shell);
    unlock_panel_after_sequence(shell);
}

void leave_isp(Shell& shell)
{
    send_short_command(shell, command::leave_isp);
    shell.Timer7.start(100);
    while (!shell.link.reply_ok && shell.Timer7.enabled())
        shell.platform.loop.yield();
    shell.Timer7.stop();
}

} // namespace vrk
