#include "shell/press.h"

#include "form/main_form.h"

#include "shell/kept_settings.h"
#include "shell/make_job.h"
#include "shell/messages.h"
#include "shell/open_file.h"
#include "shell/panel_state.h"
#include "shell/ports.h"
#include "shell/rc_boxes.h"
#include "shell/screen_report.h"
#include "shell/serial_numbers.h"

#include "link/handshake.h"
#include "link/image_writes.h"
#include "link/sequencer.h"
#include "link/shared_texts.h"
#include "platform/deadline.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr int repeat_row = 1;
constexpr int second_ms = 1000;

constexpr Text no_file = {"    Please open code file./请打开文件。    ", "    Please open code file.   "};
constexpr Text not_kept = {"设置无法保存，未下载。", "The settings can not be stored. Nothing was programmed."};

// A sequence runs, from the press to whatever end it takes: then the panel is free again and the port is closed.
class Sequence {
public:
    explicit Sequence(Shell& shell)
        : shell_(shell)
    {
        shell_.running = true;
        shell_.stop_requested = false;
        close_port();
        if (shell_.port_paths.empty()) // the list may have failed; nobody has to plug something in to get another
            refresh_ports(shell_);
    }
    ~Sequence()
    {
        close_port();
        shell_.running = false;
        show_panel_state(shell_);
    }
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

private:
    void close_port()
    {
        shell_.port.close();
        show_port_lamp(shell_, false);
    }

    Shell& shell_;
};

// One talk, told to the shell while it goes on: the stop button and whoever looks at the program find it there.
class Talk {
public:
    Talk(Shell& shell, const Job& job)
        : session(shell.platform.loop, shell.port, shell.mcu_table, job.model, job.line)
        , shell_(shell)
    {
        session.stop_requested = shell.stop_requested;
        shell_.session = &session;
    }
    ~Talk()
    {
        shell_.last_talk = session;
        shell_.session = nullptr;
    }
    Talk(const Talk&) = delete;
    Talk& operator=(const Talk&) = delete;

    Session session;

private:
    Shell& shell_;
};

// A chip is good: before anybody is told, its number is used up and the chip counted, and both are on the disk. Who is
// cut off behind it has a chip that was not told of, and never two with one number. Gives the count.
std::string keep_books(Shell& shell)
{
    const std::string count = number_text(number_in(shell.form.txtWrite_OK_Count.text()) + 1);
    shell.platform.settings.set("Settings", "Write_OK_Count", count);
    const bool moved = move_numbers(shell);
    const bool kept = keep_settings(shell);
    shell.number_for_next = moved && (kept || !numbers_in_use(shell).any());
    return count;
}

void show_success(Shell& shell, const std::string& count)
{
    shell.form.txtWrite_OK_Count.set_text(count);
    if (shell.form.optBeepYes.value())
        beep(shell, 1);
}

// The time to change chips. A stop ends it at once.
void count_down_to_next(Shell& shell)
{
    const int seconds_wanted = static_cast<int>(number_in(shell.form.comDalay_ReDownLoad.text()));
    for (int i = seconds_wanted; i >= 0 && !shell.stop_requested; --i) {
        const std::string seconds = std::to_string(i);
        Line line;
        line.en = "Program succeed.\nAfter a few seconds, re-connection will continue.  " + seconds;
        line.zh = "Program succeed. / 下载成功.\nAfter a few seconds re-connect will continue.  " + seconds +
            "\nChinese:几秒钟后将继续下载下一个 MCU...  " + seconds;
        append_message(shell, line);
        const Deadline second(shell.platform.loop, second_ms);
        while (!shell.stop_requested && !second.passed())
            shell.platform.loop.yield();
    }
}

void let_chip_go(Shell& shell, Session& session)
{
    leave_isp(session);
    session.drop_counts();
    session.close();
    show_port_lamp(shell, false);
}

Result program_next_chip(Shell& shell, bool repeat)
{
    const Job job = make_job(shell);
    ScreenReport report(shell);
    if (!numbers_can_be_written(job)) {
        show_box(shell, in_language(shell, number_outside));
        return Result::number_outside;
    }
    Talk talk(shell, job);
    Session& session = talk.session;
    const Result result = program_one_chip(session, job, report);
    const std::string count = result == Result::good ? keep_books(shell) : "";
    if (result == Result::good || result == Result::off_frequency)
        report_success(session, job, report);
    session.chip.target_ok = false;
    if (result == Result::wrong_model)
        shell.file_loaded = false; // it was meant for another chip
    if (result != Result::good)
        return result;

    show_success(shell, count);
    const bool another = repeat && shell.number_for_next;
    session.stop_requested = session.stop_requested || !another;
    let_chip_go(shell, session);
    numbers_fit(shell);
    tell_settings_fault(shell);
    if (another)
        count_down_to_next(shell);
    if (another && shell.stop_requested)
        report_stop(report); // below the report of the chip that is good
    return result;
}

void run_download(Shell& shell, int row)
{
    if (!shell.file_loaded)
        return show_box(shell, in_language(shell, no_file));
    if (shell.form.cekReloadFile.value() && !reload_code_file(shell))
        return;
    if (!numbers_fit(shell))
        return; // the number in the buffer is that of another chip
    if (!rc_frequencies_fit(shell))
        return;
    if (!numbers_are_safe(shell))
        return append_message(shell, not_kept);
    show_panel_state(shell);
    do
        shell.succeeded = program_next_chip(shell, row == repeat_row) == Result::good;
    while (shell.succeeded && row == repeat_row && shell.number_for_next && !shell.stop_requested);
}

} // namespace

void comDownload_Click(Shell& shell, int row)
{
    if (shell.running)
        return; // a click that came while the first one was still reading its file
    {
        const Sequence sequence(shell);
        shell.succeeded = false;
        run_download(shell, row);
    }
    tell_settings_fault(shell);
}

void comStop_Download_Click(Shell& shell)
{
    shell.stop_requested = true;
    if (shell.session != nullptr)
        shell.session->stop_requested = true;
}

void comReadChipLock_Click(Shell& shell)
{
    if (shell.running)
        return;
    {
        const Sequence sequence(shell);
        show_panel_state(shell);
        const Job job = make_job(shell);
        ScreenReport report(shell);
        Talk talk(shell, job);
        read_one_chip(talk.session, job, report);
    }
    tell_settings_fault(shell);
}

} // namespace vrk
