// A target on a pseudo terminal, in real time: any program that opens serial devices finds it there.
//
// Bytes take the time they would take on a line. The speed is the one that the other program has set on the terminal,
// standard or not; where it differs from the target's, bytes are damaged as on copper. What a pseudo terminal cannot
// do: it has no parity (the kernel clears the flag, so the target's own is assumed), and it keeps bytes for a program
// that has closed it and opens it again.
#pragma once

#include "sim/posix_loop.h"
#include "sim/wire.h"

#include <string>

namespace sim {

class PtyTarget {
public:
    PtyTarget(PosixLoop& loop, Target& target);
    ~PtyTarget();
    PtyTarget(const PtyTarget&) = delete;
    PtyTarget& operator=(const PtyTarget&) = delete;

    // Makes the terminal and, where a path is given, a symbolic link to it. A link that stands there already is
    // replaced, anything else is not. False: fault() tells why.
    bool open(const std::string& link = {});
    const std::string& path() const { return path_; } // of the terminal itself
    const std::string& fault() const { return fault_; }
    Wire& wire() { return wire_; }

private:
    bool make_terminal();
    bool make_link(const std::string& link);
    void readable();
    void follow_speed();
    void deliver(std::span<const std::uint8_t> bytes);

    PosixLoop* loop_;
    Target* target_;
    Wire wire_;
    int master_ = -1;
    int slave_ = -1; // kept open, so that the other program can close and open it again
    std::string path_;
    std::string link_;
    std::string fault_;
};

} // namespace sim
