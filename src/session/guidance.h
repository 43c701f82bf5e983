// The page of advice for a chip that does not answer: two beeps and the page, once, four seconds after the calling has
// begun. The calling goes on.
#pragma once

#include "session/session.h"

#include "report/report.h"

namespace vrk {

class Guidance {
public:
    Guidance(Session& session, Report& report);
    ~Guidance(); // an answer or a stop has come first
    Guidance(const Guidance&) = delete;
    Guidance& operator=(const Guidance&) = delete;

private:
    void speak_up();

    Session& session_;
    Report& report_;
    EventLoop::CallId call_;
};

} // namespace vrk
