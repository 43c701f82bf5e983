// The two waits of every sequence. Both yield, so that the port, the timers and the user's clicks are served meanwhile.
#pragma once

#include "form/shell.h"

namespace vrk {

// Waits n milliseconds on Timer6; nothing ends it early, not even stop_requested. 0 returns at once.
void wait_ms(Shell& shell, int n);

// Waits for a good reply, the stop button or the time-out in ms, whichever comes first. Answers reply_ok. The reply may
// have come already: who wants a new one clears reply_ok before sending.
bool wait_reply(Shell& shell, Timer& timer, int ms);
inline bool wait_reply(Shell& shell, int ms) { return wait_reply(shell, shell.Timer7, ms); }

} // namespace vrk
