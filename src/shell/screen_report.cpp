#include "shell/screen_report.h"

#include "form/main_form.h"

#include "shell/check_page.h"
#include "shell/messages.h"
#include "shell/option_choices.h"

#include <array>
#include <cstdio>

namespace vrk {

namespace {

constexpr std::int32_t byte_progress_last = 0x7FFF; // above it the progress bar counts in 256 bytes

// "####.000" and K: no digit in front where there is no whole kilobyte.
std::string kilobyte_text(std::int32_t bytes)
{
    std::array<char, 32> kilobytes{};
    const int size = std::snprintf(kilobytes.data(), kilobytes.size(), "%.3fK", bytes / 1024.0);
    std::string_view text{kilobytes.data(), static_cast<std::size_t>(size)};
    if (text.starts_with("0."))
        text.remove_prefix(1);
    return std::string{text};
}

} // namespace

void ScreenReport::show_box(const Line& text, const Line& title)
{
    const bool english = shell_.language_is_english;
    vrk::show_box(shell_, text.in(english), title.in(english));
}

bool ScreenReport::ask(const Line& question, const Line& title)
{
    const bool english = shell_.language_is_english;
    return ask_yes_no(shell_, question.in(english), title.in(english));
}

void ScreenReport::say(const Line& line) { append_message(shell_, line); }

void ScreenReport::beep(int times) { vrk::beep(shell_, times); }

void ScreenReport::enter(Stage stage)
{
    ProgressBar& bar = shell_.form.ProgressBar1;
    switch (stage) {
    case Stage::calling:
        shell_.form.textMsg.set_text("");
        wait_for_target(shell_);
        break;
    case Stage::found:
        work_on_target(shell_);
        break;
    case Stage::writing:
        work_on_target(shell_); // an engine without a stage before it
        bar.set_range(1, 3);
        bar.set_visible(true);
        break;
    case Stage::settling:
        bar.set_visible(false);
        break;
    case Stage::options:
        snapshot_controls(shell_); // what goes in now, in the table where what was read has been marked
        break;
    }
}

void ScreenReport::progress(const Progress& progress)
{
    const std::int32_t unit = progress.first <= byte_progress_last && progress.last <= byte_progress_last ? 1 : 256;
    ProgressBar& bar = shell_.form.ProgressBar1;
    bar.set_range(progress.first / unit, unit == 1 ? progress.last + 1 : progress.last / unit + 1);
    bar.set_visible(true);
    bar.set_value((progress.written_to + 1) / unit);
    if (progress.unit == Progress::Unit::byte && progress.written_to >= progress.first)
        shell_.form.labKbyte.set_caption(kilobyte_text(progress.written_to - progress.first + 1));
    show_time_left(shell_, progress);
}

void ScreenReport::port_is_open(bool open) { show_port_lamp(shell_, open); }

void ScreenReport::options_read(const ChipStatus& status) { show_chip_status(shell_, status); }

void show_port_lamp(Shell& shell, bool open)
{
    shell.form.imgOpen_sys.set_visible(open);
    shell.form.imgNotOpen_sys.set_visible(!open);
}

} // namespace vrk
