// What waiting for power-up costs: a pair of sync bytes each 10 ms, for as long as the hand at the switch takes. Beside
// it a bare loop that writes the same bytes at the same pace.
#include "bench/figures.h"
#include "bench/peer_process.h"
#include "bench/qt_bench.h"
#include "bench/times.h"
#include "bench/wire_peer.h"

#include "link/handshake.h"
#include "session/frame.h"
#include "shell/make_job.h"
#include "shell/screen_report.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <ctime>

namespace {

constexpr std::int64_t wait_us = 3'000'000;

// A chip without power: what is sent goes nowhere.
void serve_dead_line(const bench::PeerProcess::Tell& tell)
{
    int master = -1;
    int slave = -1;
    tell(bench::make_terminal(master, slave));
    std::array<char, 256> bytes{};
    while (read(master, bytes.data(), bytes.size()) >= 0) { }
}

double share_of_program()
{
    const bench::PeerProcess line(serve_dead_line);
    vrk::QtPorts ports{{line.path()}};
    bench::QtBench bench{ports, "Juniper-60Q"};
    const vrk::Job job = vrk::make_job(bench.shell);
    vrk::ScreenReport report(bench.shell);
    vrk::Session session(bench.loop, bench.shell.port, bench.shell.mcu_table, job.model, job.line);
    const double before = bench::wall_seconds();
    const double share = bench::share_of_core([&] {
        bench.loop.call_at(bench.loop.now_us() + wait_us, [&session] { session.stop_requested = true; });
        vrk::connect_target(session, job, vrk::Purpose::download, report);
    });
    bench::require(bench::wall_seconds() - before > static_cast<double>(wait_us) / 1e6 * 0.9,
        "the call ended early: " + bench.form.text_box("textMsg").text());
    return share;
}

double share_of_bare_loop()
{
    const bench::PeerProcess line(serve_dead_line);
    const int port = open(line.path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    bench::require(port >= 0, "the terminal does not open");
    const double share = bench::share_of_core([&] {
        for (std::int64_t us = 0; us < wait_us; us += 10'000) {
            const ssize_t sent = write(port, vrk::sync_pair.data(), vrk::sync_pair.size());
            bench::require(sent == 2, "the terminal takes no more");
            const timespec pause{0, 10'000'000};
            nanosleep(&pause, nullptr);
        }
    });
    close(port);
    return share;
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
