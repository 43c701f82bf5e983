#include "shell/tool_press.h"

#include "form/main_form.h"

#include "shell/buffer_view.h"
#include "shell/kept_settings.h"
#include "shell/line_books.h"
#include "shell/messages.h"
#include "shell/open_file.h"
#include "shell/panel_state.h"
#include "shell/press.h"
#include "shell/screen_report.h"
#include "shell/sequence.h"
#include "shell/serial_numbers.h"
#include "shell/tool_jobs.h"

#include "board/board_download.h"
#include "board/memory_reader.h"
#include "platform/text_number.h"

#include <algorithm>
#include <numeric>

namespace vrk {

namespace {

constexpr Text no_file_for_command = {"Please open code file./请打开文件。", "Please open code file."};
constexpr Text no_file_for_demo = {" Please open code file./请打开文件。", "  Please open code file. "};
constexpr Text no_file_for_board = {"    Please open code file./请打开文件。    ", "Please open code file."};

bool file_is_open(Shell& shell, const Text& otherwise)
{
    if (!shell.file_loaded)
        show_box(shell, in_language(shell, otherwise));
    return shell.file_loaded;
}

// As before a download: what is reloaded, and that the numbers can be used.
bool job_can_be_made(Shell& shell)
{
    if (shell.form.cekReloadFile.value() && !reload_code_file(shell))
        return false;
    return numbers_are_the_forms(shell) && numbers_fit(shell) && numbers_are_safe(shell);
}

bool command_is_sent(Shell& shell)
{
    const Sequence sequence(shell);
    if (!file_is_open(shell, no_file_for_command))
        return false;
    show_panel_state(shell);
    shell.form.textMsg.set_text("");
    const UserCommand command = make_user_command(shell);
    ScreenReport report(shell);
    Talk talk(shell, shell.selected, user_port(shell));
    const Result result = send_user_command(talk.session, command, report);
    tell_verdict(shell, result, Judged::nothing);
    return result == Result::good;
}

// One chip after the other through user code, while all goes well.
void run_demo(Shell& shell, bool repeat)
{
    ScreenReport report(shell);
    for (bool first = true;; first = false) {
        const DemoJob job = make_demo_job(shell);
        Talk talk(shell, job.model, job.port);
        Result result = first ? enter_demo(talk.session, job, report) : Result::good;
        if (result == Result::good)
            result = program_by_demo(talk.session, job, report);
        if (result == Result::wrong_model)
            shell.file_loaded = false; // it was meant for another chip
        if (result == Result::good) {
            use_up_numbers(shell);
            report_demo_success(talk.session, report);
        }
        tell_verdict(shell, result, Judged::other_target);
        if (result != Result::good)
            return;
        if (shell.form.optBeepYes.value())
            beep(shell, 1);
        numbers_fit(shell);
        tell_settings_fault(shell);
        const int seconds = static_cast<int>(number_in(shell.form.comDalay_ReDownLoad.text()));
        if (!repeat || !shell.number_for_next || !count_down_to_next_demo(talk.session, report, seconds))
            return;
    }
}

// What was read, in place of the code, as after a load.
void show_memory(Shell& shell, const MemoryRead& memory)
{
    FileBuffer& code = shell.code_buffer;
    if (memory.line_lost)
        clear_buffer(shell, 0, code);
    forget_edits(shell, code.kind);
    std::copy(memory.pages.begin(), memory.pages.end(), code.data.begin());
    if (memory.result == Result::good) {
        code.high = 0xFFFF;
        code.view_high = 0xFFFF;
        code.checksum = std::accumulate(memory.pages.begin(), memory.pages.end(), 0);
    }
    update_view(shell, code);
}

} // namespace

void set_up_tools(Shell& shell)
{
    constexpr int pins_at_start = 9; // 44
    shell.form.combPins.set_items({"12", "14", "16", "18", "20", "24", "28", "32", "40", "44", "48"});
    shell.form.combPins.choose(pins_at_start);
    shell.form.txt_download_max.set_text("10");
    show_production_controls(shell);
}

void show_production_controls(Shell& shell)
{
    const bool shown = shell.form.mnuProduction.value();
    shell.form.comComp.set_visible(shown);
    shell.form.combPins.set_visible(shown);
    shell.form.labTJXZ[3].set_visible(shown);
    for (CheckBox& box : shell.form.che_staple)
        box.set_visible(shown);
}

void comSendUserCode_Click(Shell& shell)
{
    if (!shell.running && command_is_sent(shell))
        comDownload_Click(shell, 0);
}

void com_Demo_DownLoad_Click(Shell& shell, bool repeat)
{
    if (shell.running)
        return;
    {
        const Sequence sequence(shell);
        if (file_is_open(shell, no_file_for_demo) && job_can_be_made(shell)) {
            show_panel_state(shell);
            run_demo(shell, repeat);
        }
    }
    tell_settings_fault(shell);
}

void comTJXZ_Click(Shell& shell)
{
    if (shell.running)
        return;
    const Sequence sequence(shell);
    shell.form.textMsg.set_text("");
    if (!file_is_open(shell, no_file_for_board) || !job_can_be_made(shell))
        return;
    show_panel_state(shell);
    const BoardJob job = make_board_job(shell);
    ScreenReport report(shell);
    Talk talk(shell, job.model, job.line);
    BoardOutcome outcome = download_to_board(talk.session, job, report);
    tell_verdict(shell, outcome.result, Judged::other_target);
    if (!outcome.image.empty())
        shell.board_image = std::move(outcome.image);
    if (outcome.kept.empty())
        return;
    const std::size_t count = std::min(outcome.kept.size(), shell.code_buffer.data.size());
    std::copy_n(outcome.kept.begin(), count, shell.code_buffer.data.begin());
    forget_history(shell, BufferKind::code);
    put_numbers_back(shell, numbers_in_use(shell)); // the board's places are open; a download of our own fills them
    update_view(shell, shell.code_buffer);
}

void Read24C512_Click(Shell& shell)
{
    if (shell.running)
        return;
    const Sequence sequence(shell);
    shell.form.textMsg.set_text("");
    if (!file_is_open(shell, no_file_for_board))
        return;
    show_panel_state(shell);
    const BoardJob job = make_board_job(shell);
    ScreenReport report(shell);
    Talk talk(shell, job.model, job.line);
    const MemoryRead memory = read_board_memory(talk.session, job, report);
    tell_verdict(shell, memory.result, Judged::nothing);
    show_memory(shell, memory);
}

} // namespace vrk
