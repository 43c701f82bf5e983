// Files that come by their name, whoever names them: a dialog, the command line, the menu, a file that is dropped.
#pragma once

#include "shell/gate.h"
#include "shell/open_file.h"

#include <string>

namespace vrk {

// A project may be chosen in the dialog of either buffer: it is opened, with its page in view.
void open_if_project(Shell& shell, Chosen chosen);
void show_project(Shell& shell, const std::string& path); // the same, of one that is known to be a project

// As if it had been chosen in the dialog of that buffer.
void open_path(Shell& shell, const std::string& path, BufferKind kind = BufferKind::code);

// Of the page that is in view; the code buffer where that is neither's.
BufferKind buffer_in_view(const Shell& shell);

// A file that a hand drops on the window: a HEX or BIN file goes into the buffer in view, a project is opened. It goes
// through the gate of the button that does the same; others are impossible.
Touch may_drop(const Shell& shell, const std::string& path);
Touch drop_file(Shell& shell, const std::string& path);

} // namespace vrk
