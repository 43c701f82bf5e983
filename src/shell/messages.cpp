#include "shell/messages.h"

#include "form/main_form.h"
#include "shell/about.h"

#include "platform/deadline.h"

namespace vrk {

namespace {

constexpr int beep_spacing_ms = 150;

// A dialog stands, for as long as this does.
class OpenDialog {
public:
    explicit OpenDialog(Shell& shell)
        : shell_(shell)
    {
        ++shell_.dialogs_open;
    }
    ~OpenDialog() { --shell_.dialogs_open; }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;

private:
    Shell& shell_;
};

Reply show(Shell& shell, const MessageBox& box)
{
    const OpenDialog open(shell);
    return shell.platform.dialogs.show(box);
}

MessageBox make_box(std::string_view text, std::string_view title, BoxIcon icon)
{
    MessageBox box;
    box.title = title.empty() ? program_name : title;
    box.text = text;
    box.icon = icon;
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
        shell.form.textMsg.append("\n" + line.in(shell.language_is_english), line.tone);
}

void show_box(Shell& shell, std::string_view text, std::string_view title, BoxIcon icon)
{
    show(shell, make_box(text, title, icon));
}

bool ask_yes_no(Shell& shell, std::string_view text, std::string_view title)
{
    MessageBox box = make_box(text, title, BoxIcon::question);
    box.buttons = Buttons::yes_no;
    box.default_reply = Reply::no;
    return show(shell, box) == Reply::yes;
}

std::optional<std::string> choose_path(Shell& shell, const FileDialog& dialog)
{
    const OpenDialog open(shell);
    return shell.platform.dialogs.choose(dialog);
}

void beep(Shell& shell, int n)
{
    for (int i = 0; i < n; ++i) {
        shell.platform.dialogs.beep();
        wait_ms(shell.platform.loop, beep_spacing_ms);
    }
}

} // namespace vrk
