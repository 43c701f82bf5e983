// The dump as an editor: one digit is highlighted, and a digit typed takes its place in the text and in the buffer.
// Where a byte lies is read from the dump's own text, so that what is seen is what is changed. A text that is no dump
// has no bytes, and nothing happens to it.
#pragma once

#include "shell/shell.h"

#include <string_view>

namespace vrk {

// Selects the digit at the caret or, where none stands there, the next one of this line or the next. With none in
// reach, nothing stays selected.
void highlight_digit(TextBox& box);

constexpr std::string_view undo_key = "CtrlZ";
constexpr std::string_view redo_key = "CtrlY";
bool changes_bytes(std::string_view key); // one that is of no use while the job is sealed

// A whole keystroke in the box of a buffer: "PageUp", "PageDown", "Up", "Down", "Left", "Right",
// "Home" and "End" in the line, "CtrlHome" and "CtrlEnd" in the buffer, the two above, or one character. All others do
// nothing. Digits typed since the bytes came in can be taken back one by one, and be done again.
void press_edit_key(Shell& shell, FileBuffer& buffer, std::string_view key);

void key_down(
    Shell& shell, FileBuffer& buffer, std::string_view key); // moves the caret, scrolls where it leaves the view
// The edit; the first one of a run asks before. Dropped while the job is locked or on its way into a chip.
void key_press(Shell& shell, FileBuffer& buffer, char key);

} // namespace vrk
