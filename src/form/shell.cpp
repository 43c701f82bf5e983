#include "form/shell.h"

namespace vrk {

Shell::Shell(const Platform& its_platform)
    : platform(its_platform)
    , MSComm1(its_platform.ports)
    // clang-format off
    //                            kind                    ms      role
    , Timer1     (platform.loop, Timer::Kind::one_shot,   1000) // reply time-out of a model frame: sets reply_timeout
    , Timer2     (platform.loop, Timer::Kind::one_shot,    500) // sets reply_bad
    , Timer3     (platform.loop, Timer::Kind::one_shot,    500) // a saved setting has changed: saves all of them
    , Timer6     (platform.loop, Timer::Kind::one_shot,    200) // wait_ms
    , Timer7     (platform.loop, Timer::Kind::one_shot,    200) // waits for a reply, spacing of the sync bytes
    , Timer8     (platform.loop, Timer::Kind::one_shot,    200) // long waits of set_new_baud and of the RC test
    , Timer9     (platform.loop, Timer::Kind::one_shot,   4000) // nobody answers: shows the guidance
    , Timer10    (platform.loop, Timer::Kind::one_shot,   1000) // one second of the delay before a repeat
    , Timer11    (platform.loop, Timer::Kind::one_shot,  20000) // takes the hint of the buffer editor away again
    , Timer12    (platform.loop, Timer::Kind::repeating,  1000) // watches the code file for a change
    , Timer_beep (platform.loop, Timer::Kind::one_shot,    150) // spacing of beeps
    , TimerUnload(platform.loop, Timer::Kind::one_shot,    500) // ends the program once the sequences have wound down
// clang-format on
{
    Timer1.on_tick = [this] { link.reply_timeout = true; };
    Timer2.on_tick = [this] { link.reply_bad = true; };
    Timer11.on_tick = [this] { form.LabEdit_Clew.set_visible(false); };
}

} // namespace vrk
