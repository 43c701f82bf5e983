#include "form/waits.h"

namespace vrk {

void wait_ms(Shell& shell, int n)
{
    if (n == 0)
        return;
    shell.Timer6.start(n);
    while (shell.Timer6.enabled())
        shell.platform.loop.yield();
}

bool wait_reply(Shell& shell, Timer& timer, int ms)
{
    timer.start(ms);
    while (!shell.link.stop_requested && !shell.link.reply_ok && timer.enabled())
        shell.platform.loop.yield();
    timer.stop();
    return shell.link.reply_ok;
}

} // namespace vrk
