// What waiting for power-up costs: a pair of sync bytes each 10 ms, for as long as the hand at the switch takes. Beside
// it a bare loop that writes the same bytes at the same pace.
#include "bench/figures.h"
#include "bench/qt_bench.h"
#include "bench/wire_peer.h"

#include "link/handshake.h"
#include "session/frame.h"
#include "shell/make_job.h"
#include "shell/screen_report.h"

#include <QCoreApplication>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <ctime>

namespace {

constexpr std::int64_t wait_us = 3'000'000;

double seconds_of(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processor_seconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime);
}

double wall_seconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

// A chip without power: what is sent goes nowhere.
struct DeadLine {
    int master = -1;
    int slave = -1;
    std::string path = bench::make_terminal(master, slave);
    int process = fork();

    DeadLine()
    {
        if (process != 0)
            return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::array<char, 256> bytes{};
        for (;;) {
            if (read(master, bytes.data(), bytes.size()) < 0)
                _exit(0);
        }
    }
    ~DeadLine()
    {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        close(master);
        close(slave);
    }
    DeadLine(const DeadLine&) = delete;
    DeadLine& operator=(const DeadLine&) = delete;
};

// Percent of one core.
double share_of(const std::function<void()>& act)
{
    const double processor = processor_seconds();
    const double wall = wall_seconds();
    act();
    return (processor_seconds() - processor) / (wall_seconds() - wall) * 100;
}

double share_of_program()
{
    DeadLine line;
    vrk::QtPorts ports{{line.path}};
    bench::QtBench bench{ports, "Juniper-60Q"};
    const vrk::Job job = vrk::make_job(bench.shell);
    vrk::ScreenReport report(bench.shell);
    vrk::Session session(bench.loop, bench.shell.port, bench.shell.mcu_table, job.model, job.line);
    const double before = wall_seconds();
    const double share = share_of([&] {
        bench.loop.call_at(bench.loop.now_us() + wait_us, [&session] { session.stop_requested = true; });
        vrk::connect_target(session, job, vrk::Purpose::download, report);
    });
    bench::require(wall_seconds() - before > static_cast<double>(wait_us) / 1e6 * 0.9,
        "the call ended early: " + bench.form.text_box("textMsg").text());
    return share;
}

double share_of_bare_loop()
{
    DeadLine line;
    return share_of([&] {
        for (std::int64_t us = 0; us < wait_us; us += 10'000) {
            const ssize_t sent = write(line.slave, vrk::sync_pair.data(), vrk::sync_pair.size());
            bench::require(sent == 2, "the terminal takes no more");
            const timespec pause{0, 10'000'000};
            nanosleep(&pause, nullptr);
        }
    });
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::vector<double> shares;
    std::vector<double> bare;
    for (int run = 0; run < bench::long_runs; ++run) {
        bare.push_back(share_of_bare_loop());
        shares.push_back(share_of_program());
    }
    bench::print({"waiting for power-up, of one core", bench::median(shares), "%", "bare loop", bench::median(bare),
        "below 2 %"});
}
