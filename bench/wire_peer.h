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
    double turnaround_us =
        0; // median, from a reply to the first byte of the next frame, wake-ups of both ends included

    double wire_seconds() const { return static_cast<double>(bytes) * wire_bits / wire_baud; }
    double efficiency_percent() const { return wire_seconds() / seconds * 100; }
    double percent_of_frame(double us) const // of the time that a frame and its reply take on the wire
    {
        return us * static_cast<double>(frames) / (wire_seconds() * 1e6) * 100;
    }
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

// A pseudo terminal in raw mode, both ends open. Its path comes back.
std::string make_terminal(int& master, int& slave);

} // namespace bench
