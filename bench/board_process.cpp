#include "bench/board_process.h"

#include "bench/figures.h"
#include "bench/times.h"
#include "bench/wire_peer.h"
#include "sim/posix_loop.h"
#include "sim/pty_target.h"
#include "sim/user_program.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>

namespace bench {

namespace {

constexpr long packet_ns = 1'000'000;

void talk_on_a_wire(std::int32_t baud, const PeerProcess::Tell& tell, int begin)
{
    sim::PosixLoop loop;
    sim::StreamProgram program({baud, vrk::Parity::none, 8, 1}, 0);
    sim::PtyTarget target{loop, program};
    require(target.open(), "no pseudo terminal to be had");
    tell(target.path());
    loop.watch(begin, [&] {
        loop.unwatch(begin);
        program.power(true);
    });
    for (;;)
        loop.yield();
}

// Waits for its word, then sends what is due as often as is told, until nothing more ever is.
void talk_from_block(
    const PeerProcess::Tell& tell, int begin, const std::function<std::uint64_t(std::int64_t passed_us)>& due_bytes)
{
    int master = -1;
    int slave = -1;
    tell(make_terminal(master, slave));
    std::array<std::uint8_t, 65536> block{}; // whole lines; each is as good as the one before
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = sim::StreamProgram::byte_at(i);
    char word = 0;
    if (read(begin, &word, 1) != 1)
        _exit(1);
    const std::int64_t began_ns = now_ns();
    for (std::uint64_t sent = 0;;) {
        const std::uint64_t due = due_bytes((now_ns() - began_ns) / 1000);
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
    require(pipe(begin_.data()) == 0, "no pipe to be had");
    process_.emplace([=, this](const PeerProcess::Tell& tell) {
        if (handing == Handing::byte_by_byte)
            talk_on_a_wire(baud, tell, begin_[0]);
        talk_from_block(tell, begin_[0], [=](std::int64_t passed_us) {
            const auto paced =
                static_cast<std::uint64_t>(passed_us) * static_cast<std::uint64_t>(baud) / 10 / 1'000'000;
            return handing == Handing::at_once ? bytes : paced;
        });
    });
}

BoardProcess::~BoardProcess()
{
    for (const int end : begin_)
        close(end);
}

void BoardProcess::begin() { require(write(begin_[1], "!", 1) == 1, "the board is gone"); }

} // namespace bench
