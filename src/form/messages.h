// Texts in two languages, the report pane, message boxes and beeps.
#pragma once

#include "form/main_form.h"

#include <string>
#include <string_view>

namespace vrk {

// Both forms of a text. language_is_english chooses.
struct Text {
    std::string_view zh;
    std::string_view en;
};

std::string_view in_language(const MainForm& form, const Text& text);

// Appends a line break and the line to textMsg; the caret goes to the end.
void append_message(MainForm& form, std::string_view line);
void append_message(MainForm& form, const Text& line);

void show_box(MainForm& form, std::string_view text, std::string_view title = {});
// A question with Yes and No; No is the default.
bool ask_yes_no(MainForm& form, std::string_view text, std::string_view title = {});

// n system beeps 150 ms apart. Yields; not ended by stop_requested.
void beep(MainForm& form, int n);

std::string clock_now(const MainForm& form); // "hh:mm:ss"

} // namespace vrk
