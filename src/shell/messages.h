// The report pane, message boxes, file dialogs and beeps.
#pragma once

#include "platform/dialogs.h"
#include "report/text.h"
#include "shell/shell.h"

#include <optional>
#include <string>
#include <string_view>

namespace vrk {

std::string_view in_language(const Shell& shell, const Text& text);

// Appends a line break and the line to textMsg; the caret goes to the end. A line of another language is left out.
void append_message(Shell& shell, const Line& line);

// Most boxes tell of something that is not as it should be.
void show_box(Shell& shell, std::string_view text, std::string_view title = {}, BoxIcon icon = BoxIcon::warning);
// A question with Yes and No; No is the default.
bool ask_yes_no(Shell& shell, std::string_view text, std::string_view title = {});

// The file dialog, from its opening to its end. Nothing: cancelled.
std::optional<std::string> choose_path(Shell& shell, const FileDialog& dialog);

// n system beeps 150 ms apart. Yields; not ended by a stop.
void beep(Shell& shell, int n);

} // namespace vrk
