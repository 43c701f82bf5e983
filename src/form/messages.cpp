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

std::string_view in_language(const MainForm& form, const Text& text)
{
    return form.language_is_english ? text.en : text.zh;
}

void append_message(MainForm& form, std::string_view line)
{
    form.textMsg.append("\n" + std::string{line});
}

void append_message(MainForm& form, const Text& line)
{
    append_message(form, in_language(form, line));
}

void show_box(MainForm& form, std::string_view text, std::string_view title)
{
    form.platform.dialogs.show(make_box(text, title));
}

bool ask_yes_no(MainForm& form, std::string_view text, std::string_view title)
{
    MessageBox box = make_box(text, title);
    box.buttons = Buttons::yes_no;
    box.default_reply = Reply::no;
    return form.platform.dialogs.show(box) == Reply::yes;
}

void beep(MainForm& form, int n)
{
    for (int i = 0; i < n; ++i) {
        form.platform.dialogs.beep();
        form.Timer_beep.start();
        while (form.Timer_beep.enabled())
            form.platform.loop.yield();
    }
}

std::string clock_now(const MainForm& form)
{
    return clock_text(form.platform.loop.wall_time());
}

} // namespace vrk
