// What a hand can do to a control, and which routine follows. The window and the script driver both come through here,
// so that neither can do what the other cannot.
#pragma once

#include "shell/gate.h"

#include <string_view>

namespace vrk {

// Each acts as a hand would: the control takes its new state, then its event runs. What the gate refuses leaves
// everything as it is. Hidden controls take it: what is not in view now can still be reached.
Touch click(Shell& shell, Control& control); // buttons, labels, boxes that are clicked; toggles a check box
Touch type_text(Shell& shell, Control& control, std::string_view text); // a text box, or the text of an editable list
Touch choose_item(Shell& shell, ComboBox& box, int item);
Touch set_checked(Shell& shell, CheckBox& box, bool value);
Touch choose_option(Shell& shell, OptionButton& button);
Touch choose_tab(Shell& shell, TabStrip& strip, int tab);
Touch choose_node(Shell& shell, Tree& tree, std::string_view key);
Touch scroll_to(Shell& shell, ScrollBar& bar, int value);
Touch press_key(Shell& shell, Control& control, std::string_view key); // "Esc", "PageUp", "a" ...
// A click between the characters, or a stretch of text drawn over. A click into a dump highlights a digit.
Touch put_caret(Shell& shell, TextBox& box, int position, int length = 0);

// Once a second: the code file has changed on disk, and the user wants it to be downloaded when it does.
void Timer12_Timer(Shell& shell);

} // namespace vrk
