#include "form/messages.h"

#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr std::string_view program_title = "VRK-ISP"; // over boxes that have no title of their own

MessageBox make_box(std::string_view text, std::string_view title)
{
    MessageBox box;
    box.title = title.empty() ? program_title : title;
    box.text = text;
    return box;
}

} // namespace

std::string_view in_language(const Shell& shell, const Text& text)
{
    return shell.language_is_english ? text.en : text.zh;
}

void append_message(Shell& shell, std::string_view line)
{
    shell.form.textMsg.append("\n" + std::string{line});
}

void append_message(Shell& shell, const Text& line)
{
    append_message(shell, in_language(shell, line));
}

void show_box(Shell& shell, std::string_view text, std::string_view title)
{
    shell.platform.dialogs.show(make_box(text, title));
}

bool ask_yes_no(Shell& shell, std::string_view text, std::string_view title)
{
    MessageBox box = make_box(text, title);
    box.buttons = Buttons::yes_no;
    box.default_reply = Reply::no;
    return shell.platform.dialogs.show(box) == Reply::yes;
}

void beep(Shell& shell, int n)
{
    for (int i = 0; i < n; ++i) {
        shell.platform.dialogs.beep();
        shell.Timer_beep.start();
        while (shell.Timer_beep.enabled())
            shell.platform.loop.yield();
    }
}

std::string clock_now(const Shell& shell)
{
    return clock_text(shell.platform.loop.wall_time());
}

} // namespace vrk
