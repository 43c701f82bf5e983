// To a place in a dump: to an address, or to bytes that are looked for.
#pragma once

#include "shell/shell.h"

namespace vrk {

// The address in the field, hexadecimal: its byte comes into view and is highlighted. One that is none, or lies where
// the dump does not reach, is told beside the fields.
void go_to_address(Shell& shell, BufferKind kind);

// The next place of what stands in the field, from the caret on and from the top again: it comes into view and is
// highlighted. That it is nowhere, or had to go on from the top, is told beside the fields.
void find_in_dump(Shell& shell, BufferKind kind);

} // namespace vrk
