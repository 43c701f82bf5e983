// The one gate that hands come through, of the window and of scripts alike. While a sequence runs it keeps everything
// that makes up a job, or that would hold the sequence up with a box, out of reach.
#pragma once

#include "shell/shell.h"

namespace vrk {

enum class Touch {
    taken, // the control has its new state, and its event has run
    disabled,
    busy, // a sequence runs, and this has to wait for its end
    impossible, // the control has no such item, node or text
};

// Whether a hand may have its way with the control now. `taken`: it may.
Touch may_touch(const Shell& shell, const Control& control);
// With a key: a digit typed over a byte changes the job, and a key that moves the caret does not.
Touch may_press(const Shell& shell, const Control& control, std::string_view key);

} // namespace vrk
