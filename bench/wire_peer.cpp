#include "bench/wire_peer.h"

#include "bench/figures.h"
#include "bench/times.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>

namespace bench {

namespace {

constexpr std::int64_t ns_per_byte = 1'000'000'000LL * wire_bits / wire_baud;
constexpr std::size_t most_frames = 4096;
constexpr std::size_t header_size = 5; // 46 B9 6A and the length, which counts from 6A on
constexpr std::size_t data_at = 12; // behind code, address(4) and count(2)

// A sleeper wakes up late by as much as a host's whole turnaround, which is not the host's fault: so the peer sleeps up
// to shortly before its moment and spends the rest awake.
constexpr std::int64_t awake_before_ns = 300'000;

void wait_until(std::int64_t at_ns)
{
    const std::int64_t awake_ns = at_ns - awake_before_ns;
    const timespec at{static_cast<std::time_t>(awake_ns / 1'000'000'000), static_cast<long>(awake_ns % 1'000'000'000)};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &at, nullptr);
    while (now_ns() < at_ns) { }
}

bool something_to_read(int descriptor, int timeout_ms)
{
    pollfd waiting{descriptor, POLLIN, 0};
    return poll(&waiting, 1, timeout_ms) > 0;
}

std::size_t frame_size(const std::vector<std::uint8_t>& bytes)
{
    return bytes.size() < header_size ? SIZE_MAX : bytes[3] * 256U + bytes[4] + 2U;
}

// "Taken", with the sum of the data and a check of two bytes.
std::vector<std::uint8_t> reply_to(const std::vector<std::uint8_t>& frame)
{
    unsigned data_sum = 0;
    for (std::size_t i = data_at; i + 3 < frame.size(); ++i)
        data_sum += frame[i];
    std::vector<std::uint8_t> reply = {0x46, 0xB9, 0x68, 0x00, 0x08, 0x00, static_cast<std::uint8_t>(data_sum & 0xFF)};
    unsigned check = 0;
    for (std::size_t i = 2; i < reply.size(); ++i)
        check += reply[i];
    reply.insert(reply.end(),
        {static_cast<std::uint8_t>(check >> 8), static_cast<std::uint8_t>(check & 0xFF), std::uint8_t{0x16}});
    return reply;
}

} // namespace

struct WirePeer::Shared {
    std::atomic<bool> over;
    std::int64_t bytes;
    std::int64_t began_ns;
    std::int64_t peer_late_ns;
    std::int64_t ended_ns;
    std::size_t frames;
    std::array<std::int64_t, most_frames> turnaround_ns;
};

std::string make_terminal(int& master, int& slave)
{
    std::array<char, 128> name{};
    master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    const bool made = master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0 &&
        ptsname_r(master, name.data(), name.size()) == 0;
    slave = made ? open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC) : -1;
    termios raw{};
    require(slave >= 0 && tcgetattr(slave, &raw) == 0, "no pseudo terminal to be had");
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);
    return name.data();
}

WirePeer::WirePeer()
{
    path_ = make_terminal(master_, slave_);
    void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    require(memory != MAP_FAILED, "no shared memory to be had");
    shared_ = new (memory) Shared{};
    process_ = fork();
    require(process_ >= 0, "no process to be had");
    if (process_ == 0)
        serve(master_, *shared_);
}

WirePeer::~WirePeer()
{
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    munmap(shared_, sizeof(Shared));
    close(master_);
    close(slave_);
}

void WirePeer::serve(int master, Shared& shared)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
    std::vector<std::uint8_t> frame;
    std::int64_t frame_began_ns = 0;
    while (!shared.over) {
        if (!something_to_read(master, 100))
            continue;
        std::array<std::uint8_t, 1024> bytes{};
        const ssize_t count = read(master, bytes.data(), bytes.size());
        const std::int64_t came_ns = now_ns();
        if (count <= 0)
            continue;
        if (frame.empty())
            frame_began_ns = came_ns;
        frame.insert(frame.end(), bytes.begin(), bytes.begin() + count);
        if (frame.size() < frame_size(frame))
            continue;

        const auto reply = reply_to(frame);
        if (shared.frames == 0)
            shared.began_ns = frame_began_ns;
        else if (shared.frames < most_frames)
            shared.turnaround_ns[shared.frames] = frame_began_ns - shared.ended_ns;
        const auto both_ways = static_cast<std::int64_t>(frame.size() + reply.size());
        wait_until(frame_began_ns + both_ways * ns_per_byte);
        const std::int64_t late_ns = now_ns() - frame_began_ns - both_ways * ns_per_byte;
        shared.peer_late_ns += late_ns;
        // Taken before the write: where host and peer share a core, the host may have answered before it returns.
        shared.ended_ns = frame_began_ns + both_ways * ns_per_byte + late_ns;
        if (write(master, reply.data(), reply.size()) != static_cast<ssize_t>(reply.size()))
            _exit(1);
        shared.bytes += both_ways;
        ++shared.frames;
        frame.clear();
    }
    _exit(0);
}

WireFigures WirePeer::end()
{
    shared_->over = true;
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    require(status == 0, "the peer could not answer");
    require(shared_->frames > 1, "no frames came");
    WireFigures figures;
    figures.frames = static_cast<std::int64_t>(shared_->frames);
    figures.bytes = shared_->bytes;
    figures.seconds = static_cast<double>(shared_->ended_ns - shared_->began_ns - shared_->peer_late_ns) / 1e9;
    std::vector<double> turnarounds;
    for (std::size_t i = 1; i < std::min(shared_->frames, most_frames); ++i)
        turnarounds.push_back(static_cast<double>(shared_->turnaround_ns[i]) / 1000);
    figures.turnaround_us = median(std::move(turnarounds));
    return figures;
}

} // namespace bench
