// The two waits of every sequence. Both yield, so that the port, the timers and the user's clicks are served meanwhile.
#pragma once

#include "form/main_form.h"

namespace vrk {

// Waits n milliseconds on Timer6; nothing ends it early, not even stop_requested. 0 returns at once.
void wait_ms(MainForm& form, int n);

// Waits for a good reply, the stop button or the time-out in ms, whichever comes first. Answers reply_ok. The reply may
// have come already: who wants a new one clears reply_ok before sending.
bool wait_reply(MainForm& form, Timer& timer, int ms);
inline bool wait_reply(MainForm& form, int ms) { return wait_reply(form, form.Timer7, ms); }

} // namespace vrk
