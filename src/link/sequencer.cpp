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
bool firmware_is_supported(MainForm& form)
{
    if (!form.language_is_english)
        return true;
    const std::string_view least = form.target.fw_letter <= "C" ? "4.0" : "5.0";
    if (form.target.fw_version >= least)
        return true;
    show_box(form, firmware_too_old.en);
    return false;
}

// Third field of the option byte text.
bool block_1_is_guarded(const MainForm& form)
{
    const std::string& text = form.options.byte_text;
    const std::size_t first = text.find(',');
    const std::size_t second = first == std::string::npos ? first : text.find(',', first + 1);
    return form.beside.block_bytes == JobState::write_chunk && second != std::string::npos &&
        text.substr(second + 1, 1) == "1";
}

bool is_allowed(MainForm& form)
{
    if (!firmware_is_supported(form) || !form.target.target_ok)
        return false;
    if (!block_1_is_guarded(form))
        return true;
    beep(form, 3);
    append_message(form, block_1_guarded);
    form.target.target_ok = false;
    return false;
}

void make_plan(MainForm& form)
{
    if (!form.plan.name.empty() || !download_plan(form, Option_Orde(form.target.fw_letter, form.target.fw_version)))
        return;
    beep(form, 2);
    if (form.language_is_english) {
        append_message(form, "The Program Code and EEPROM data is too big.");
        append_message(form, "The exceeding part won't program.");
    } else {
        append_message(form, "程序文件超出此 MCU 固件下载范围, 超出部分不下载。 ");
    }
}

// Every firmware but the very first can erase.
bool erase_stage(MainForm& form)
{
    if (number_in(form.target.fw_version) <= 0.2)
        return true;
    erase_chip(form);
    if (form.link.stop_requested) {
        report_stop(form);
        enable_buttons(form);
        return false;
    }
    if (form.link.reply_ok)
        return true;
    beep(form, 3);
    append_with_end_time(form, erase_failed);
    append_message(form, erase_failed_hint);
    return false;
}

// The chip writes the last block out before it takes options.
void settle(MainForm& form)
{
    const bool same_baud = form.cobBaudMax.text().substr(0, 4) == form.link.handshake_baud;
    wait_ms(form, same_baud ? 1000 : 100);
    form.ProgressBar1.set_visible(false);
}

bool option_stage(MainForm& form)
{
    const McuRecord& record = wire_record(form);
    if (record.cap_all_flash_ap || record.cap_no_option_write || record.series == 1)
        return true;
    commit_options(form);
    return form.link.reply_ok;
}

void report_success(MainForm& form)
{
    JobState& job = form.job;
    job.program_time = minutes_text(seconds_between(job.program_started, form.platform.loop.wall_time()));
    if (form.language_is_english) {
        append_message(form, "Program OK");
        append_message(form, "Verify  OK ( Total: " + job.program_time + " )");
        append_message(form, "Encrypt OK.");
        return;
    }
    append_message(form, "Program OK / 下载 OK");
    append_message(form, "Verify  OK / 校验 OK ");
    if (!job.erase_time.empty())
        append_message(form, "erase times/擦除时间 :  " + job.erase_time);
    append_message(form, "program times/下载时间: " + job.program_time);
    append_message(form, "Encrypt OK/ 已加密");
}

void count_success(MainForm& form)
{
    const std::string count = number_text(number_in(form.txtWrite_OK_Count.text()) + 1);
    form.txtWrite_OK_Count.set_text(count);
    form.platform.settings.set("Settings", "Write_OK_Count", count);
}

bool number_is_programmed(
    const MainForm& form, const AutoIncrease& record, const FileBuffer& buffer, std::int32_t flash_first)
{
    const std::int32_t first = record.address + 1 - record.bytes;
    if (!record.valid || record.bytes <= 0 || first < 0 || record.address > buffer.last())
        return true; // nothing was stamped
    const auto bytes =
        std::span{buffer.data}.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(record.bytes));
    return is_programmed(form, flash_first + first, bytes);
}

// The effective length of a file ends its writing, and a number does not make it longer.
void report_left_out_number(MainForm& form)
{
    const std::int32_t data_first = wire_record(form).eeprom_first;
    if (!number_is_programmed(form, form.code_increase, form.code_buffer, 0) ||
        !number_is_programmed(form, form.data_increase, form.data_buffer, data_first))
        append_message(form, number_left_out);
}

// One chip, from the first sync byte to the last option. True: the chip holds what was planned, and it has been said.
bool program_one_chip(MainForm& form)
{
    form.link.header_required = false;
    form.textMsg.set_text("");
    connect_target(form, Purpose::download);
    if (form.link.stop_requested || !is_allowed(form))
        return false;
    make_plan(form);
    if (!erase_stage(form))
        return false;
    program_all(form);
    if (!form.job.program_ok)
        return false;
    settle(form);
    if (!option_stage(form))
        return false;
    report_success(form);
    report_left_out_number(form);
    if (form.rc.rc_calibrate && !rc_report(form))
        return false;
    count_success(form);
    if (form.optBeepYes.value())
        beep(form, 1);
    form.job.number_for_next = move_numbers(form);
    return true;
}

void clear_counts(MainForm& form)
{
    form.MSComm1.clear_InBuffer();
    form.MSComm1.clear_OutBuffer();
}

// The time to change chips. The stop button is not looked at here: the wait runs out, and the next connection stops.
void count_down_to_next(MainForm& form)
{
    leave_isp(form);
    clear_counts(form);
    close_link(form);
    for (int i = static_cast<int>(number_in(form.comDalay_ReDownLoad.text())); i >= 0; --i) {
        const std::string seconds = std::to_string(i);
        if (form.language_is_english) {
            append_message(form, "Program succeed.");
            append_message(form, "After a few seconds, re-connection will continue.  " + seconds);
        } else {
            append_message(form, "Program succeed. / 下载成功.");
            append_message(form, "After a few seconds re-connect will continue.  " + seconds);
            append_message(form, "Chinese:几秒钟后将继续下载下一个 MCU...  " + seconds);
        }
        form.Timer10.start();
        while (form.Timer10.enabled())
            form.platform.loop.yield();
    }
}

void finish(MainForm& form)
{
    form.Timer9.stop();
    form.link.stop_requested = true;
    form.target.target_ok = false;
    clear_counts(form);
    unlock_panel_after_sequence(form);
    leave_isp(form);
    close_link(form);
}

void run_download(MainForm& form, int row)
{
    form.rc.last_rc_trim = no_rc_trim;
    form.rc.rc_calibrate = series_is_15_16(form.selected.series) && row <= 1;
    form.link.board_mode = false;
    close_link(form);
    if (!form.file_loaded) {
        show_box(form, in_language(form, no_file));
        return;
    }
    if (form.cekReloadFile.value())
        reload_code_file(form);
    if (!numbers_fit(form))
        return; // the number in the buffer is that of another chip
    lock_panel_for_sequence(form);
    disable_buttons(form);
    form.link.stop_requested = false;
    form.plan = DownloadPlan{};

    bool another = false; // chip of a repeated download
    do {
        form.job.succeeded = program_one_chip(form);
        another = form.job.succeeded && row == 1 && form.job.number_for_next;
        if (another)
            count_down_to_next(form);
    } while (another);
    if (form.job.succeeded)
        finish(form);
    else if (!form.file_loaded)
        unlock_panel_after_sequence(
            form); // the chip was another model: the file has to be opened again, or another picked
    enable_buttons(form);
}

} // namespace

void comDownload_Click(MainForm& form, int row)
{
    if (form.job.sequence_running)
        return; // a click that came while the first one was still reading its file
    form.job.sequence_running = true;
    form.job.succeeded = false;
    run_download(form, row);
    form.job.sequence_running = false;
}

void comStop_Download_Click(MainForm& form)
{
    form.Timer9.stop();
    form.link.stop_requested = true;
    form.target.target_ok = false;
    clear_counts(form);
    close_link(form);
    unlock_panel_after_sequence(form);
}

void leave_isp(MainForm& form)
{
    send_short_command(form, command::leave_isp);
    form.Timer7.start(100);
    while (!form.link.reply_ok && form.Timer7.enabled())
        form.platform.loop.yield();
    form.Timer7.stop();
}

} // namespace vrk
