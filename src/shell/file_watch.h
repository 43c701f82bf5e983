// Looks once a second whether the open file has been written anew, for those who compile and try in quick succession.
#pragma once

#include "shell/shell.h"

namespace vrk {

// The tick of Timer12. True: the code file has changed, has stayed as it is for a second, and has been loaded again;
// what follows, a download, is the caller's to start. A HEX file without its end record is told and left to its next
// change. While a sequence runs, a dialog stands or the tree is open nothing is loaded: the change is acted on when
// that is over.
bool watch_code_file(Shell& shell);

} // namespace vrk
