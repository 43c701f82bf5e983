#include "shell/terminal_desk.h"

namespace vrk {

namespace {

constexpr int repeat_ms = 1000;
constexpr int display_ms = 35;
constexpr int port_ms = 300;
constexpr int send_ms = 1000; // until the user chooses another cycle

} // namespace

TerminalDesk::TerminalDesk(EventLoop& loop)
    : TimerDebug(loop, Timer::Kind::one_shot, repeat_ms)
    , TimerDebugDisplay(loop, Timer::Kind::one_shot, display_ms)
    , TimerDebugAutoSend(loop, Timer::Kind::repeating, send_ms)
    , TimerSpreadAutoSend(loop, Timer::Kind::repeating, send_ms)
    , TimerDebugPort(loop, Timer::Kind::repeating, port_ms)
{
}

} // namespace vrk
