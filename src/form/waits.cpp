#include "form/waits.h"

namespace vrk {

void wait_ms(MainForm& form, int n)
{
    if (n == 0)
        return;
    form.Timer6.start(n);
    while (form.Timer6.enabled())
        form.platform.loop.yield();
}

bool wait_reply(MainForm& form, Timer& timer, int ms)
{
    timer.start(ms);
    while (!form.link.stop_requested && !form.link.reply_ok && timer.enabled())
        form.platform.loop.yield();
    timer.stop();
    return form.link.reply_ok;
}

} // namespace vrk
