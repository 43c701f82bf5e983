// What the terminal takes in, and what that costs: at the full speed of a pseudo terminal, and at the pace of a line.
//   terminal_bench          the program without a window, as vrk-script runs it
//   terminal_bench window   in the window, on the screen that DISPLAY names
#include "bench/board_process.h"
#include "bench/figures.h"
#include "bench/qt_bench.h"
#include "bench/times.h"

#include "shell/events.h"
#include "shell/terminal_page.h"
#include "sim/user_program.h"
#include "window/main_window.h"

#include <QApplication>

#include <unistd.h>

#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <string_view>

namespace {

constexpr std::uint64_t megabyte = 1'000'000;
constexpr std::uint64_t full_speed_bytes = 64 * megabyte;
constexpr std::int64_t second_us = 1'000'000;
constexpr std::int64_t share_us = 5 * second_us;
constexpr std::int64_t long_run_us = 60 * second_us;
constexpr std::int64_t clear_us = 5 * second_us; // the display is cleared before it is full
constexpr std::int64_t probe_us = 5'000;

double resident_megabytes()
{
    std::ifstream statistics("/proc/self/statm");
    double size = 0;
    double resident = 0;
    statistics >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

// The program with its terminal open to the board.
struct OpenTerminal {
    vrk::QtPorts ports;
    bench::QtBench bench;
    vrk::Shell& shell = bench.shell;
    std::unique_ptr<vrk::MainWindow> window;
    std::string seen; // what the display held when it was cleared
    double longest_wait_ms = 0; // of a hand's event for its turn
    std::int64_t probe_due_us = 0;

    OpenTerminal(const bench::BoardProcess& board, const char* baud, bool in_window)
        : ports({board.path()})
        , bench(ports, "Juniper-60Q")
    {
        if (in_window) {
            window = std::make_unique<vrk::MainWindow>(shell);
            vrk::choose_tab(shell, bench.form.tabs("TabStrip2"), bench.form.tabs("TabStrip2").find("Debug_COM"));
            window->show();
            run_for_us(second_us / 2);
        }
        vrk::choose_item(shell, bench.form.list("com_Debug_COM"), 0);
        const auto& bauds = bench.form.list("com_Debug_Baud").items();
        const auto item = std::find(bauds.begin(), bauds.end(), baud) - bauds.begin();
        vrk::choose_item(shell, bench.form.list("com_Debug_Baud"), static_cast<int>(item));
        vrk::click(shell, bench.form.button("comOpenCOM", 0));
        bench::require(shell.desk.terminal.has_port, "the terminal does not open");
    }
    ~OpenTerminal() { vrk::terminal_close(shell); }
    OpenTerminal(const OpenTerminal&) = delete;
    OpenTerminal& operator=(const OpenTerminal&) = delete;

    std::uint64_t received() const { return static_cast<std::uint32_t>(shell.desk.terminal.rx_count); }
    void run_for_us(std::int64_t us)
    {
        bool over = false;
        bench.loop.call_at(bench.loop.now_us() + us, [&over] { over = true; });
        while (!over)
            bench.loop.yield();
    }
    void clear_now_and_then()
    {
        bench.loop.call_at(bench.loop.now_us() + clear_us, [this] {
            seen += bench.form.text_box("texReceive").text();
            vrk::click(shell, bench.form.button("comDebugClear", 0));
            clear_now_and_then();
        });
    }
    // A click would come at any moment: how long would it wait?
    void probe()
    {
        const std::int64_t now_us = bench.loop.now_us();
        if (probe_due_us > 0)
            longest_wait_ms = std::max(longest_wait_ms, static_cast<double>(now_us - probe_due_us) / 1000);
        probe_due_us = now_us + probe_us;
        bench.loop.call_at(probe_due_us, [this] { probe(); });
    }
};

// The display is taken at each tick and thrown away: full, it would close the port.
double full_speed_of_program(bool in_window, double& grown_megabytes)
{
    bench::BoardProcess board(bench::Handing::at_once, 0, full_speed_bytes);
    OpenTerminal terminal(board, "256000", in_window);
    vrk::Terminal& state = terminal.shell.desk.terminal;
    terminal.shell.desk.TimerDebugDisplay.on_tick = [&state] { state.take_text(false); };
    board.begin();
    while (terminal.received() < full_speed_bytes / 8)
        terminal.bench.loop.yield(); // by then every buffer has its size
    const double resident = resident_megabytes();
    const std::uint64_t before = terminal.received();
    const double began = bench::wall_seconds();
    while (terminal.received() < full_speed_bytes)
        terminal.bench.loop.yield();
    const double seconds = bench::wall_seconds() - began;
    grown_megabytes = resident_megabytes() - resident;
    return static_cast<double>(full_speed_bytes - before) / 1e6 / seconds;
}

double full_speed_of_bare_loop()
{
    bench::BoardProcess board(bench::Handing::at_once, 0, full_speed_bytes);
    const int port = open(board.path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    bench::require(port >= 0, "the terminal does not open");
    std::array<std::uint8_t, 65536> bytes{};
    std::uint64_t received = 0;
    board.begin();
    const double began = bench::wall_seconds();
    while (received < full_speed_bytes) {
        pollfd waiting{port, POLLIN, 0};
        bench::require(poll(&waiting, 1, 5000) == 1, "the board has fallen silent");
        const ssize_t count = read(port, bytes.data(), bytes.size());
        if (count > 0)
            received += static_cast<std::uint64_t>(count);
    }
    const double seconds = bench::wall_seconds() - began;
    close(port);
    return static_cast<double>(received) / 1e6 / seconds;
}

void measure_full_speed(bool in_window, const std::string& where)
{
    std::vector<double> ours;
    std::vector<double> bare;
    std::vector<double> grown;
    for (int run = 0; run < bench::long_runs; ++run) {
        double grown_megabytes = 0;
        bare.push_back(full_speed_of_bare_loop());
        ours.push_back(full_speed_of_program(in_window, grown_megabytes));
        grown.push_back(grown_megabytes);
    }
    bench::print({"into both rings at full speed" + where, bench::median(ours), "MB/s", "bare poll() loop",
        bench::median(bare), "20 MB/s at least"});
    bench::print({"memory grown by 56 MB that came" + where, bench::median(grown), "MB", "", 0, "1 MB at most"});
}

double share_at_115200(bench::Handing handing, bool in_window)
{
    bench::BoardProcess board(handing, 115200);
    OpenTerminal terminal(board, "115200", in_window);
    board.begin();
    terminal.run_for_us(second_us / 2);
    const std::uint64_t before = terminal.received();
    const double share = bench::share_of_core([&terminal] { terminal.run_for_us(share_us); });
    bench::require(terminal.received() - before > 11520 * 9 / 2, "the board has paused");
    return share;
}

void measure_share(bool in_window, const std::string& where)
{
    std::vector<double> packets;
    std::vector<double> bytes;
    for (int run = 0; run < bench::long_runs; ++run) {
        packets.push_back(share_at_115200(bench::Handing::by_packet, in_window));
        bytes.push_back(share_at_115200(bench::Handing::byte_by_byte, in_window));
    }
    bench::print({"115200 baud, a packet each ms, of one core" + where, bench::median(packets), "%", "byte by byte",
        bench::median(bytes), "below 2 %"});
}

void measure_long_run(bool in_window, const std::string& where)
{
    bench::BoardProcess board(bench::Handing::byte_by_byte, 256000);
    OpenTerminal terminal(board, "256000", in_window);
    terminal.clear_now_and_then();
    board.begin();
    terminal.probe();
    terminal.run_for_us(long_run_us);
    const double wait_ms = terminal.longest_wait_ms;
    const std::uint64_t received = terminal.received();
    terminal.run_for_us(100'000); // the display's last tick
    const std::string text = terminal.seen + terminal.bench.form.text_box("texReceive").text();
    bench::require(terminal.shell.desk.terminal.has_port, "the terminal has closed");
    bench::require(received > 25600 * 59, "only " + std::to_string(received) + " bytes have come");
    std::uint64_t right = 0;
    while (right < text.size() && static_cast<std::uint8_t>(text[right]) == sim::StreamProgram::byte_at(right))
        ++right;
    bench::require(right == text.size() && right >= received,
        "byte " + std::to_string(right) + " of " + std::to_string(text.size()) + " is lost or damaged");
    bench::print({"256000 baud for 60 s, bytes lost" + where, 0, "", "", 0, "none"});
    bench::print({"the longest that a click would wait then" + where, wait_ms, "ms", "", 0, "50 ms at most"});
}

} // namespace

int main(int argc, char** argv)
{
    const bool in_window = argc > 1 && std::string_view{argv[1]} == "window";
    const std::unique_ptr<QCoreApplication> application =
        in_window ? std::make_unique<QApplication>(argc, argv) : std::make_unique<QCoreApplication>(argc, argv);
    const std::string where = in_window ? ", in the window" : "";
    measure_full_speed(in_window, where);
    measure_share(in_window, where);
    measure_long_run(in_window, where);
}
