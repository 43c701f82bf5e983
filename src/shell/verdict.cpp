#include "shell/verdict.h"

#include "form/main_form.h"

#include "platform/text_number.h"
#include "shell/kept_settings.h"
#include "shell/messages.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vrk {

namespace {

struct Word {
    VerdictState state;
    Text text;
};

// clang-format off
constexpr Word words[] = {
    { VerdictState::ready,    { "就绪",     "READY" } },
    { VerdictState::waiting,  { "等待连接", "WAITING" } },
    { VerdictState::working,  { "正在进行", "WORKING" } },
    { VerdictState::good,     { "合格",     "GOOD" } },
    { VerdictState::bad,      { "不合格",   "BAD" } },
    { VerdictState::stopped,  { "已停止",   "STOPPED" } },
    { VerdictState::done,     { "完成",     "DONE" } },
    { VerdictState::not_done, { "未执行",   "NOT DONE" } },
};
// clang-format on

} // namespace

const Text& word_of(VerdictState state)
{
    const Word* found =
        std::find_if(std::begin(words), std::end(words), [=](const Word& w) { return w.state == state; });
    return found->text; // the table has them all
}

namespace {

void show(Shell& shell, VerdictState state)
{
    shell.verdict.now = state;
    shell.form.labVerdict.set_caption(in_language(shell, word_of(state)));
    shell.form.labTimeLeft.set_caption("");
}

VerdictState state_of(Result result, Judged judged, bool answered)
{
    if (result == Result::stopped)
        return VerdictState::stopped;
    if (judged == Judged::nothing)
        return result == Result::good ? VerdictState::done : VerdictState::not_done;
    if (result == Result::good)
        return VerdictState::good;
    const bool left_alone = judged == Judged::chip && result == Result::refused;
    return answered && !left_alone ? VerdictState::bad : VerdictState::not_done;
}

void count_bad(Shell& shell)
{
    const std::string count = number_text(number_in(shell.form.txtWrite_Bad_Count.text()) + 1);
    shell.form.txtWrite_Bad_Count.set_text(count);
    shell.platform.settings.set("Settings", "Write_Bad_Count", count);
    keep_settings(shell);
}

} // namespace

void start_verdict(Shell& shell) { show(shell, VerdictState::ready); }

void wait_for_target(Shell& shell)
{
    shell.form.labKbyte.set_caption("");
    show(shell, VerdictState::waiting);
}

void work_on_target(Shell& shell) { show(shell, VerdictState::working); }

void tell_verdict(Shell& shell, Result result, Judged judged, const std::string& number)
{
    const bool answered = shell.verdict.now == VerdictState::working;
    const VerdictState state = state_of(result, judged, answered);
    show(shell, state);
    if (!answered || judged != Judged::chip)
        return; // no chip was touched: the last one is still the last
    std::string last = std::string{in_language(shell, last_chip)};
    last.append(in_language(shell, word_of(state))).append("  ").append(clock_text(shell.platform.loop.wall_time()));
    if (!number.empty())
        last.append("  ").append(number);
    shell.form.labLastVerdict.set_caption(last);
    if (state == VerdictState::bad)
        count_bad(shell);
}

void settle_verdict(Shell& shell)
{
    if (shell.verdict.now == VerdictState::waiting || shell.verdict.now == VerdictState::working)
        show(shell, VerdictState::not_done);
}

void show_time_left(Shell& shell, const Progress& progress)
{
    const auto figures = shell.verdict.pace.figures(progress, shell.platform.loop.now_us());
    if (!figures)
        return;
    std::array<char, 32> text{};
    int size = 0;
    if (figures->seconds_left) {
        const int left_s = *figures->seconds_left;
        size = std::snprintf(text.data(), text.size(), "%d %%  %d:%02d", figures->percent, left_s / 60, left_s % 60);
    } else {
        size = std::snprintf(text.data(), text.size(), "%d %%", figures->percent);
    }
    shell.form.labTimeLeft.set_caption({text.data(), static_cast<std::size_t>(size)});
}

} // namespace vrk
