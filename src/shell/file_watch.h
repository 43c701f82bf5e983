// Looks once a second whether the open file has been written anew, for those who compile and try in quick succession.
#pragma once

#include "shell/shell.h"

namespace vrk {

// The tick of Timer12. True: the file had changed and the code file has been loaded again; what follows, a download, is
// the caller's to start. While a sequence runs it waits with that: the bytes of a download do not change under its
// hands.
bool watch_code_file(Shell& shell);

} // namespace vrk
