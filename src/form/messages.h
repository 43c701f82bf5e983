// Texts in two languages, the report pane, message boxes and beeps.
#pragma once

#include "form/shell.h"
#include "report/text.h"

#include <string>
#include <string_view>

namespace vrk {

std::string_view in_language(const Shell& shell, const Text& text);

// Appends a line break and the line to textMsg; the caret goes to the end.
void append_message(Shell& shell, std::string_view line);
void append_message(Shell& shell, const Text& line);

void show_box(Shell& shell, std::string_view text, std::string_view title = {});
// A question with Yes and No; No is the default.
bool ask_yes_no(Shell& shell, std::string_view text, std::string_view title = {});

// n system beeps 150 ms apart. Yields; not ended by stop_requested.
void beep(Shell& shell, int n);

std::string clock_now(const Shell& shell); // "hh:mm:ss"

} // namespace vrk
