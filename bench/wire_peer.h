// The far end of a pseudo terminal as the figures of the link need it: it keeps the pace of a wire, answers every data
// frame the moment that the wire allows, and takes the times. It runs in a process of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

constexpr int wire_baud = 115200;
constexpr int wire_bits = 11; // a byte with its parity bit

struct WireFigures {
    std::int64_t frames = 0;
    std::int64_t bytes = 0; // both ways
    double seconds = 0; // from the first byte of the first frame to the last reply, less what the peer itself was late
    double turnaround_us = 0; // median, from a reply to the first byte of the next frame

    double efficiency_percent() const { return static_cast<double>(bytes) * wire_bits / wire_baud / seconds * 100; }
};

class WirePeer {
public:
    WirePeer(); // makes the terminal and starts the process, which serves `figures_of` once
    ~WirePeer();
    WirePeer(const WirePeer&) = delete;
    WirePeer& operator=(const WirePeer&) = delete;

    const std::string& path() const { return path_; }
    // Tells the process that this was the last frame, and takes what it measured.
    WireFigures end();

private:
    struct Shared;
    [[noreturn]] static void serve(int master, Shared& shared);

    std::string path_;
    int master_ = -1;
    int slave_ = -1; // keeps the terminal alive between two owners
    int process_ = -1;
    Shared* shared_ = nullptr;
};

// Keeps this process and those it starts on one core. Host and far end never work at the same time, and to wake up a
// second core that has gone to sleep can cost more than all that is measured here, above all in a virtual machine.
void stay_on_one_core();

// A pseudo terminal in raw mode, both ends open. Its path comes back.
std::string make_terminal(int& master, int& slave);

} // namespace bench
