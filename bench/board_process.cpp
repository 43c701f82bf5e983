#include "bench/board_process.h"

#include "bench/figures.h"
#include "bench/wire_peer.h"
#include "sim/posix_loop.h"
#include "sim/pty_target.h"
#include "sim/user_program.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace bench {

namespace {

void tell(int pipe, const std::string& path)
{
    if (write(pipe, path.data(), path.size()) != static_cast<ssize_t>(path.size()))
        _exit(1);
    close(pipe);
}

void talk_at_pace(std::int32_t baud, int tell_path, int begin)
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

void talk_as_fast_as_may_be(std::uint64_t bytes, int tell_path, int begin)
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
    for (std::uint64_t sent = 0; sent < bytes;) {
        const std::size_t at = sent % block.size();
        const std::uint64_t left = bytes - sent;
        const std::size_t count = left < block.size() - at ? static_cast<std::size_t>(left) : block.size() - at;
        const ssize_t done = write(master, block.data() + at, count);
        if (done <= 0)
            _exit(1);
        sent += static_cast<std::uint64_t>(done);
    }
    for (;;)
        pause(); // the terminal stays, with what it still holds
}

} // namespace

BoardProcess::BoardProcess(std::int32_t baud, std::uint64_t bytes)
{
    start([baud, bytes](int tell_path, int begin) {
        if (baud > 0)
            talk_at_pace(baud, tell_path, begin);
        else
            talk_as_fast_as_may_be(bytes, tell_path, begin);
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
