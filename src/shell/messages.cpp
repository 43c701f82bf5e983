#include "shell/messages.h"

#include "form/main_form.h"

#include "platform/deadline.h"

namespace vrk {

namespace {

constexpr std::string_view program_title = "VRK-ISP"; // over boxes that have no title of their own
constexpr int beep_spacing_ms = 150;

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
    return in_language(shell.language_is_english, text);
}

void append_message(Shell& shell, const Line& line)
{
    if (line.is_in(shell.language_is_english))
        shell.form.textMsg.append("\n" + line.in(shell.language_is_english));
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
        wait_ms(shell.platform.loop, beep_spacing_ms);
    }
}

} // namespace vrk
