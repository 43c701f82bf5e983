// How much of a real-time line the write stage uses. 60 KB go out over a pseudo terminal whose far end keeps the pace
// of a wire and answers at once; beside it a bare poll() loop sends the same frames to the same far end.
#include "bench/chip_process.h"
#include "bench/figures.h"
#include "bench/metered_ports.h"
#include "bench/qt_bench.h"
#include "bench/wire_peer.h"
#include "form/main_form.h"

#include "link/program.h"
#include "session/frame.h"
#include "session/session.h"
#include "shell/events.h"
#include "shell/make_job.h"
#include "shell/screen_report.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr const char* model = "Juniper-60Q"; // long form, even parity
constexpr std::int32_t code_size = 60 * 1024;
constexpr std::size_t reply_size = 10; // with 46 B9

std::vector<std::uint8_t> made_up_code()
{
    std::vector<std::uint8_t> code(code_size);
    std::uint32_t state = 7;
    for (std::uint8_t& byte : code) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return code;
}

bench::WireFigures write_by_program(const std::vector<std::uint8_t>& code)
{
    bench::WirePeer peer;
    vrk::QtPorts ports{{peer.path()}};
    bench::QtBench bench{ports, model};
    const vrk::Job job = vrk::make_job(bench.shell);
    vrk::ScreenReport report(bench.shell);
    vrk::Session session(bench.loop, bench.shell.port, bench.shell.mcu_table, job.model, job.line);
    session.chip.mcu_clock_hz = 11'059'200;
    session.rx.accept_frames = true;
    bench::require(
        session.port.set_line({115200, vrk::Parity::even, 8, 1}) && session.open(), "the port does not open");
    const bool written = vrk::write_range(session, report, {true, 0, code_size - 1}, code, false);
    bench::require(written, "the write stage failed");
    session.close();
    return peer.end();
}

bench::WireFigures write_by_poll(const std::vector<std::uint8_t>& code)
{
    bench::WirePeer peer;
    const int port = open(peer.path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    bench::require(port >= 0, "the terminal does not open");
    for (std::int32_t at = 0; at < code_size; at += 128) {
        const auto frame = vrk::build_data_frame(vrk::command::write_block, static_cast<std::uint32_t>(at),
            std::span{code}.subspan(static_cast<std::size_t>(at), 128), vrk::Check::sum16);
        const ssize_t sent = write(port, frame.bytes.data(), frame.bytes.size());
        bench::require(sent == static_cast<ssize_t>(frame.bytes.size()), "the terminal takes no more");
        for (std::size_t received = 0; received < reply_size;) {
            pollfd waiting{port, POLLIN, 0};
            bench::require(poll(&waiting, 1, 2000) == 1, "no reply");
            std::array<std::uint8_t, 64> bytes{};
            const ssize_t count = read(port, bytes.data(), bytes.size());
            if (count > 0)
                received += static_cast<std::size_t>(count);
        }
    }
    close(port);
    return peer.end();
}

double download_by_program(const std::vector<std::uint8_t>& code)
{
    bench::ChipProcess chip{model};
    vrk::QtPorts ports{{chip.path()}};
    bench::MeteredPorts metered{ports};
    bench::QtBench bench{metered, model};
    vrk::Shell& shell = bench.shell;
    std::copy(code.begin(), code.end(), shell.code_buffer.data.begin());
    shell.code_buffer.high = code_size - 1;
    shell.code_buffer.view_high = code_size - 1;
    shell.code_buffer.loaded = true;
    shell.file_loaded = true;
    bench.loop.call_at(bench.loop.now_us(), [&shell] { vrk::click(shell, shell.form.comDownload[0]); });
    do
        bench.loop.yield();
    while (shell.running);
    bench::require(shell.succeeded, "the download failed: " + shell.form.textMsg.text());
    return metered.stage().efficiency_percent();
}

} // namespace

int main(int argc, char** argv)
{
    bench::stay_on_one_core();
    QCoreApplication application(argc, argv);
    const int runs = argc > 1 ? std::max(std::atoi(argv[1]), 1) : bench::long_runs;
    const auto code = made_up_code();
    std::vector<double> efficiency;
    std::vector<double> turnaround;
    std::vector<double> bare_efficiency;
    std::vector<double> bare_turnaround;
    std::vector<double> download;
    for (int run = 0; run < runs; ++run) {
        const auto bare = write_by_poll(code);
        const auto program = write_by_program(code);
        bench::require(bare.frames == program.frames && bare.bytes == program.bytes, "the two sent different frames");
        bare_efficiency.push_back(bare.efficiency_percent());
        bare_turnaround.push_back(bare.turnaround_us);
        efficiency.push_back(program.efficiency_percent());
        turnaround.push_back(program.turnaround_us);
        download.push_back(download_by_program(code));
    }
    const double bare = bench::median(bare_efficiency);
    bench::print({"write stage of 60 KB at 115200, of the wire", bench::median(efficiency), "%", "bare poll() loop",
        bare, "99.7 % at least"});
    bench::print({"the same within a download into a simulated chip", bench::median(download), "%", "bare poll() loop",
        bare, "99.7 % at least"});
    bench::print({"turnaround of the host per frame", bench::median(turnaround), "us", "bare poll() loop",
        bench::median(bare_turnaround), "2x at most"});
}
