#include "link/stop.h"

namespace vrk {

namespace {

constexpr Text connection_failed = {"Connection failed. / 握手失败 (End: ", "Connection failed. (End: "};

}

void report_stop(Shell& shell)
{
    beep(shell, 1);
    append_message(shell, stop_text);
}

void report_connection_failed(Shell& shell, int beeps)
{
    beep(shell, beeps);
    append_with_end_time(shell, connection_failed);
}

void append_with_end_time(Shell& shell, const Text& text)
{
    append_message(shell, std::string{in_language(shell, text)} + clock_now(shell) + ")");
}

} // namespace vrk
