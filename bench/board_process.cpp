#include "bench/board_process.h"

#include "bench/figures.h"
#include "bench/wire_peer.h"
#include "sim/posix_loop.h"
#include "sim/pty_target.h"
#include "sim/user_program.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>

namespace bench {

namespace {

constexpr long packet_ns = 1'000'000;

std::int64_t now_us()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
}

void tell(int pipe, const std::string& path)
{
    if (write(pipe, path.data(), path.size()) != static_cast<ssize_t>(path.size()))
        _exit(1);
    close(pipe);
}

void talk_on_a_wire(std::int32_t baud, int tell_path, int begin)
{
    sim::PosixLoop loop;
    sim::StreamProgram program({baud, vrk::Parity::none, 8, 1}, 0);
    sim::PtyTarget target{loop, program};
    if (!target.open())
        _exit(1);
    tell(tell_path, target.path());
    loop.watch(begin, [&] {
        loop.unwatch(begin);
        program.power(true);
    });
    for (;;)
        loop.yield();
}

// Waits for its word, then sends what is due as often as is told, until nothing more ever is.
void talk_from_block(int tell_path, int begin, const std::function<std::uint64_t(std::int64_t passed_us)>& due_bytes)
{
    int master = -1;
    int slave = -1;
    tell(tell_path, make_terminal(master, slave));
    std::array<std::uint8_t, 65536> block{}; // whole lines; each is as good as the one before
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = sim::StreamProgram::byte_at(i);
    char word = 0;
    if (read(begin, &word, 1) != 1)
        _exit(1);
    const std::int64_t began_us = now_us();
    for (std::uint64_t sent = 0;;) {
        const std::uint64_t due = due_bytes(now_us() - began_us);
        while (sent < due) {
            const std::size_t at = sent % block.size();
            const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(due - sent, block.size() - at));
            const ssize_t done = write(master, block.data() + at, count);
            if (done <= 0)
                _exit(1);
            sent += static_cast<std::uint64_t>(done);
        }
        const timespec pause{0, packet_ns};
        nanosleep(&pause, nullptr);
    }
}

} // namespace

BoardProcess::BoardProcess(Handing handing, std::int32_t baud, std::uint64_t bytes)
{
    start([=](int tell_path, int begin) {
        if (handing == Handing::byte_by_byte)
            talk_on_a_wire(baud, tell_path, begin);
        talk_from_block(tell_path, begin, [=](std::int64_t passed_us) {
            const auto paced =
                static_cast<std::uint64_t>(passed_us) * static_cast<std::uint64_t>(baud) / 10 / 1'000'000;
            return handing == Handing::at_once ? bytes : paced;
        });
    });
}

void BoardProcess::start(const std::function<void(int tell_path, int begin)>& serve)
{
    std::array<int, 2> told{};
    std::array<int, 2> begin{};
    require(pipe(told.data()) == 0 && pipe(begin.data()) == 0, "no pipe to be had");
    process_ = fork();
    require(process_ >= 0, "no process to be had");
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        serve(told[1], begin[0]);
        _exit(0);
    }
    close(told[1]);
    close(begin[0]);
    begin_ = begin[1];
    std::array<char, 128> path{};
    const ssize_t count = read(told[0], path.data(), path.size());
    close(told[0]);
    require(count > 0, "the board found no pseudo terminal");
    path_.assign(path.data(), static_cast<std::size_t>(count));
}

BoardProcess::~BoardProcess()
{
    close(begin_);
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

void BoardProcess::begin() { require(write(begin_, "!", 1) == 1, "the board is gone"); }

} // namespace bench
