#include "bench/peer_process.h"

#include "bench/figures.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace bench {

PeerProcess::PeerProcess(const std::function<void(const Tell& tell)>& serve)
{
    std::array<int, 2> told{};
    require(pipe(told.data()) == 0, "no pipe to be had");
    process_ = fork();
    require(process_ >= 0, "no process to be had");
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        serve([pipe = told[1]](const std::string& path) {
            if (write(pipe, path.data(), path.size()) != static_cast<ssize_t>(path.size()))
                _exit(1);
            close(pipe);
        });
        _exit(0);
    }
    close(told[1]);
    std::array<char, 128> path{};
    const ssize_t count = read(told[0], path.data(), path.size());
    close(told[0]);
    require(count > 0, "the far end found no pseudo terminal");
    path_.assign(path.data(), static_cast<std::size_t>(count));
}

PeerProcess::~PeerProcess()
{
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

} // namespace bench
