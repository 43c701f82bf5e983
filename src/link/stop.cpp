#include "link/stop.h"

namespace vrk {

namespace {

constexpr Text connection_failed = {"Connection failed. / 握手失败 (End: ", "Connection failed. (End: "};

}

void report_stop(MainForm& form)
{
    beep(form, 1);
    append_message(form, stop_text);
}

void report_connection_failed(MainForm& form, int beeps)
{
    beep(form, beeps);
    append_with_end_time(form, connection_failed);
}

void append_with_end_time(MainForm& form, const Text& text)
{
    append_message(form, std::string{in_language(form, text)} + clock_now(form) + ")");
}

} // namespace vrk
