#include "shell/press.h"

#include "form/main_form.h"

#include "shell/kept_settings.h"
#include "shell/line_books.h"
#include "shell/make_job.h"
#include "shell/messages.h"
#include "shell/open_file.h"
#include "shell/panel_state.h"
#include "shell/rc_boxes.h"
#include "shell/screen_report.h"
#include "shell/sequence.h"
#include "shell/serial_numbers.h"
#include "shell/terminal_page.h"

#include "link/handshake.h"
#include "link/sequencer.h"
#include "platform/deadline.h"
#include "platform/text_number.h"
#include "session/image_writes.h"
#include "session/shared_texts.h"

#include <array>
#include <vector>

namespace vrk {

namespace {

constexpr int repeat_row = 1;
constexpr int second_ms = 1000;

constexpr Text no_file = {"    Please open code file./请打开文件。    ", "    Please open code file.   "};

// A chip is good: before anybody is told, its number is used up and the chip counted, and both are on the disk. Who is
// cut off behind it has a chip that was not told of, and never two with one number. Gives the count.
std::string keep_books(Shell& shell)
{
    const std::string count = number_text(number_in(shell.form.txtWrite_OK_Count.text()) + 1);
    shell.platform.settings.set("Settings", "Write_OK_Count", count);
    use_up_numbers(shell);
    return count;
}

// The numbers in the chip that is being programmed, as the fields have them until they are used up.
std::vector<std::string> numbers_of_this_chip(const Shell& shell)
{
    std::vector<std::string> numbers;
    for (const AutoIncrease* record : {&shell.code_increase, &shell.data_increase}) {
        if (record->valid)
            numbers.push_back(record->next_value);
    }
    return numbers;
}

void say_numbers(const std::vector<std::string>& numbers, Report& report)
{
    constexpr Text number_in_chip = {"本片编号: ", "Number of this chip: "};
    for (const std::string& number : numbers)
        report.say(Line{number_in_chip} + number);
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
        append_message(shell, line.as(Tone::good));
        const Deadline second(shell.platform.loop, second_ms);
        while (!shell.stop_requested && !second.passed())
            shell.platform.loop.yield();
    }
}

// The numbers that the ledger has given, where the ones shown stood. False: one does not fit there.
bool put_drawn_numbers(Shell& shell)
{
    bool fits = true;
    for (const AutoIncrease* record : {&shell.code_increase, &shell.data_increase})
        fits = fits && (!record->valid || put_next_value(shell, record->kind, record->next_value));
    return fits;
}

Result program_next_chip(Shell& shell, bool repeat)
{
    ScreenReport screen(shell);
    ChipInBooks report(shell.books, line_wishes(shell), shell.platform.loop, screen);
    if (!report.begin(std::array{&shell.code_increase, &shell.data_increase}))
        return Result::refused;
    const bool stand_there = !numbers_from_ledger(shell) || put_drawn_numbers(shell);
    const Job job = make_job(shell);
    if (!stand_there || !numbers_can_be_written(job)) {
        show_box(shell, in_language(shell, number_outside));
        return Result::number_outside;
    }
    Talk talk(shell, job.model, job.line);
    Session& session = talk.session;
    report.seal(job, session);
    const Result result = program_one_chip(session, job, report);
    const std::vector<std::string> numbers = numbers_of_this_chip(shell);
    const bool in_books = report.end(result);
    const std::string count = result == Result::good ? keep_books(shell) : "";
    shell.number_for_next = shell.number_for_next && in_books;
    if (result == Result::good || result == Result::off_frequency)
        report_success(session, job, report);
    if (result == Result::good)
        say_numbers(numbers, report);
    report.tell_books();
    tell_verdict(shell, result, Judged::chip, result == Result::good && !numbers.empty() ? numbers.front() : "");
    session.chip.target_ok = false;
    if (result == Result::wrong_model)
        shell.file_loaded = false; // it was meant for another chip
    if (result != Result::good)
        return result;

    show_success(shell, count);
    const bool another = repeat && shell.number_for_next;
    session.stop_requested = session.stop_requested || !another;
    let_chip_go(session);
    show_port_lamp(shell, false);
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
        return;
    show_panel_state(shell);
    shell.number_for_next = true;
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
    if (shell.succeeded && row != repeat_row && shell.form.che_AutoOpenPort.value() && !shell.closing)
        terminal_open(shell);
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
        Talk talk(shell, job.model, job.line);
        tell_verdict(shell, read_one_chip(talk.session, job, report), Judged::nothing);
    }
    tell_settings_fault(shell);
}

} // namespace vrk
