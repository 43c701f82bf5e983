// How much of a real-time line the write stage uses, and the host's own share of it. 60 KB go out over a pseudo
// terminal whose far end keeps the pace of a wire and answers at once; beside it a bare poll() loop sends the same
// frames to the same far end. Nothing is pinned to a core.
//   link_bench          the program without a window, as vrk-script runs it; and a whole download
//   link_bench window   in the window, all controls bound, on the screen that DISPLAY names
#include "bench/chip_process.h"
#include "bench/figures.h"
#include "bench/metered_ports.h"
#include "bench/qt_bench.h"
#include "bench/reply_meter.h"
#include "bench/wire_peer.h"

#include "session/frame.h"
#include "session/session.h"
#include "session/write_range.h"
#include "shell/events.h"
#include "shell/make_job.h"
#include "shell/screen_report.h"
#include "window/main_window.h"

#include <QApplication>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace {

constexpr const char* model = "Juniper-60Q"; // long form, even parity
constexpr std::int32_t code_size = 60 * 1024;
constexpr std::size_t reply_size = 10; // with 46 B9
constexpr int settling_ms = 500; // until a new window is painted

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

struct Run {
    bench::WireFigures wire;
    double share_us = 0; // the host's own, per frame
};

Run write_by_program(const std::vector<std::uint8_t>& code, bool in_window)
{
    bench::WirePeer peer;
    vrk::QtPorts ports{{peer.path()}};
    bench::QtBench bench{ports, model};
    std::unique_ptr<vrk::MainWindow> window;
    if (in_window) {
        window = std::make_unique<vrk::MainWindow>(bench.shell);
        window->show();
        vrk::wait_ms(bench.loop, settling_ms);
    }
    const vrk::Job job = vrk::make_job(bench.shell);
    vrk::ScreenReport report(bench.shell);
    vrk::Session session(bench.loop, bench.shell.port, bench.shell.mcu_table, job.model, job.line);
    session.chip.mcu_clock_hz = 11'059'200;
    session.rx.accept_frames = true;
    bench::require(
        session.port.set_line({115200, vrk::Parity::even, 8, 1}) && session.open(), "the port does not open");
    bench::begin_metering();
    const bool written = vrk::write_range(session, report, {true, 0, code_size - 1}, code, false);
    bench::require(written, "the write stage failed");
    const double share_us = bench::end_metering_us();
    session.close();
    return {peer.end(), share_us};
}

Run write_by_poll(const std::vector<std::uint8_t>& code)
{
    bench::WirePeer peer;
    const int port = open(peer.path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    bench::require(port >= 0, "the terminal does not open");
    bench::begin_metering();
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
    const double share_us = bench::end_metering_us();
    close(port);
    return {peer.end(), share_us};
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
    bench.loop.call_at(bench.loop.now_us(), [&bench] { vrk::click(bench.shell, bench.form.button("comDownload", 0)); });
    do
        bench.loop.yield();
    while (shell.running);
    bench::require(shell.succeeded, "the download failed: " + bench.form.text_box("textMsg").text());
    return metered.stage().efficiency_percent();
}

void measure_download(const std::vector<std::uint8_t>& code, double bare)
{
    std::vector<double> efficiency;
    for (int run = 0; run < bench::long_runs; ++run)
        efficiency.push_back(download_by_program(code));
    bench::print({"write stage of a download into a simulated chip", bench::median(efficiency), "%", "bare poll() loop",
        bare, "99.7 % at least"});
}

struct Medians {
    std::vector<double> efficiency, share, share_us, turnaround;

    void add(const Run& run)
    {
        efficiency.push_back(run.wire.efficiency_percent());
        share.push_back(run.wire.percent_of_frame(run.share_us));
        share_us.push_back(run.share_us);
        turnaround.push_back(run.wire.turnaround_us);
    }
};

// The bare loop's efficiency comes back.
double measure_write_stage(const std::vector<std::uint8_t>& code, bool in_window)
{
    Medians ours;
    Medians bare;
    for (int run = 0; run < bench::long_runs; ++run) {
        const Run by_poll = write_by_poll(code);
        const Run by_program = write_by_program(code, in_window);
        bench::require(by_poll.wire.frames == by_program.wire.frames && by_poll.wire.bytes == by_program.wire.bytes,
            "the two sent different frames");
        bare.add(by_poll);
        ours.add(by_program);
    }
    const std::string where = in_window ? ", in the window" : "";
    const auto print = [&](const char* what, std::vector<double> Medians::*values, const char* unit, const char* goal) {
        bench::print(
            {what + where, bench::median(ours.*values), unit, "bare poll() loop", bench::median(bare.*values), goal});
    };
    print("write stage of 60 KB at 115200", &Medians::efficiency, "%", "99.7 % at least");
    print("host's own share of the wire", &Medians::share, "%", "0.2 % at most");
    print("the same per frame", &Medians::share_us, "us", "29 us at most");
    print("from reply to frame, wake-ups included", &Medians::turnaround, "us", "2x at most");
    return bench::median(bare.efficiency);
}

} // namespace

int main(int argc, char** argv)
{
    const bool in_window = argc > 1 && std::string_view{argv[1]} == "window";
    const std::unique_ptr<QCoreApplication> application =
        in_window ? std::make_unique<QApplication>(argc, argv) : std::make_unique<QCoreApplication>(argc, argv);
    const auto code = made_up_code();
    const double bare = measure_write_stage(code, in_window);
    if (!in_window)
        measure_download(code, bare);
}
