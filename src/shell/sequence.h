// A press that starts something long: it runs alone, and ends with the panel free and the port closed.
#pragma once

#include "shell/shell.h"

namespace vrk {

// From the press to whatever end it takes. The terminal has given up the port.
class Sequence {
public:
    explicit Sequence(Shell& shell);
    ~Sequence();
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

private:
    void close_port();

    Shell& shell_;
};

// One talk, told to the shell while it goes on: the stop button and whoever looks at the program find it there.
class Talk {
public:
    Talk(Shell& shell, const McuRecord& model, const LineChoice& line);
    ~Talk();
    Talk(const Talk&) = delete;
    Talk& operator=(const Talk&) = delete;

    Session session;

private:
    Shell& shell_;
};

} // namespace vrk
