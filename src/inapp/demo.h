// A download through a small downloader that a user has linked into his own code: connect, identity, erase, write, on a
// line of the user's choice and in 5A A5 frames. The chip is not power-cycled and its boot loader has no part in it.
#pragma once

#include "inapp/user_command.h"

#include "report/report.h"
#include "session/image_job.h"
#include "session/result.h"
#include "session/session.h"

#include <optional>

namespace vrk {

struct DemoJob : ImageJob {
    LineChoice port; // its path; the speeds of the boot loader play no part
    std::optional<LineSettings> line; // of the downloader, by user_line
    std::optional<UserCommand>
        command; // that leads the running user code into the downloader; once, before the first chip
};

// Leads user code into the downloader, where the job wants it. Good: it has been sent, or is not wanted.
Result enter_demo(Session& session, const DemoJob& job, Report& report);

// One chip. Good: it holds the job and has been told to run it; report_demo_success says so, when the caller has put
// its books in order. Whatever else has been said. The port stays as the last stage left it.
Result program_by_demo(Session& session, const DemoJob& job, Report& report);
void report_demo_success(Session& session, Report& report);

// The time to change chips, told second by second. False: the talk is over.
bool count_down_to_next_demo(Session& session, Report& report, int seconds);

// How long the downloader may take to answer the first frame, ms. It is called until it does.
int demo_connect_ms(std::int32_t baud);
// What it reports as the model's code: the id of the model, four digits. Empty: no such code.
std::string demo_model_id(std::uint16_t code);

} // namespace vrk
