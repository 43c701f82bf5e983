// in_application command|demo LINK: makes a pseudo terminal, its far end under the name, waits for a line on its input,
// and then talks to the user program on that end with the engine's own routines: sends the command, or sends it and
// downloads a kilobyte through the program's downloader. Says what the engine says; ends with 0 where all was good.
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "inapp/demo.h"
#include "inapp/hex_pairs.h"
#include "sim/posix_loop.h"
#include "written_report.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <string>

using namespace vrk;

namespace {

constexpr LineSettings firmware_line{9600, Parity::none, 8, 1};
constexpr const char* command_text = "12 34 AB";
constexpr std::int64_t seconds_of_a_second = 10;
constexpr std::int64_t patience_ms = 12'000; // of the talk's own time

// The clock of the talk. A simulated core gets on as far as the machine lets it, which may be a few hundredths of what
// a chip would do when others are at work; its answers are then too late for a chip. So the talk's second is longer.
class PatientLoop final : public EventLoop {
public:
    explicit PatientLoop(sim::PosixLoop& loop)
        : loop_(loop)
    {
    }
    std::int64_t now_us() const override { return loop_.now_us() / seconds_of_a_second; }
    WallTime wall_time() const override { return loop_.wall_time(); }
    CallId call_at(std::int64_t at_us, Task task) override
    {
        return loop_.call_at(at_us * seconds_of_a_second, std::move(task));
    }
    void cancel(CallId id) override { loop_.cancel(id); }
    void yield() override { loop_.yield(); }
    void run_due() override { loop_.run_due(); }

private:
    sim::PosixLoop& loop_;
};

// The near end of a pseudo terminal as a serial port. It stays open over closings: a line has no plug.
class NearEnd final : public SerialPort {
public:
    NearEnd(sim::PosixLoop& loop, int descriptor)
        : loop_(loop)
        , descriptor_(descriptor)
    {
    }
    ~NearEnd() override { close(); }

    bool open(const LineSettings&) override
    {
        loop_.watch(descriptor_, [this] { readable(); });
        return open_ = true;
    }
    void close() override
    {
        if (open_)
            loop_.unwatch(descriptor_);
        open_ = false;
        input_.clear();
    }
    bool is_open() const override { return open_; }
    bool gone() const override { return false; }
    bool set_line(const LineSettings&) override { return true; }
    std::size_t bytes_available() const override { return input_.size(); }
    std::size_t read(std::span<std::uint8_t> into) override
    {
        const std::size_t count = std::min(into.size(), input_.size());
        std::copy_n(input_.begin(), count, into.begin());
        input_.erase(input_.begin(), input_.begin() + static_cast<std::ptrdiff_t>(count));
        return count;
    }
    std::size_t bytes_to_write() const override { return 0; }
    void write(std::span<const std::uint8_t> bytes) override
    {
        while (!bytes.empty()) {
            const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
            if (count <= 0)
                return;
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        }
    }
    void discard() override { input_.clear(); }

private:
    void readable()
    {
        std::uint8_t bytes[4096];
        const ssize_t count = ::read(descriptor_, bytes, sizeof bytes);
        if (count <= 0)
            return;
        input_.insert(input_.end(), bytes, bytes + count);
        if (on_receive)
            on_receive();
    }

    sim::PosixLoop& loop_;
    int descriptor_;
    bool open_ = false;
    std::vector<std::uint8_t> input_;
};

class OneTerminal final : public PortDriver {
public:
    OneTerminal(sim::PosixLoop& loop, int descriptor)
        : loop_(loop)
        , descriptor_(descriptor)
    {
    }
    std::vector<PortInfo> list() override { return {}; }
    std::unique_ptr<SerialPort> make(const std::string&) override
    {
        return std::make_unique<NearEnd>(loop_, descriptor_);
    }

private:
    sim::PosixLoop& loop_;
    int descriptor_;
};

// Its near end; the far one, raw, under the name. -1: there is none.
int make_terminal(const char* link)
{
    const int near = posix_openpt(O_RDWR | O_NOCTTY);
    char name[128] = {};
    if (near < 0 || grantpt(near) != 0 || unlockpt(near) != 0 || ptsname_r(near, name, sizeof name) != 0)
        return -1;
    const int far = open(name, O_RDWR | O_NOCTTY); // stays open, so that the core may come later
    termios raw{};
    if (far < 0 || tcgetattr(far, &raw) != 0)
        return -1;
    cfmakeraw(&raw);
    return tcsetattr(far, TCSANOW, &raw) == 0 && symlink(name, link) == 0 ? near : -1;
}

// A kilobyte of bytes below 80H, no two neighbours the same.
DemoJob demo_job(const McuTable& catalogue)
{
    DemoJob job;
    const auto found = locate_mcu_by_name(catalogue, "Birch-16");
    job.model = read_mcu_row(catalogue, found->series, found->row);
    for (std::size_t i = 0; i < 1024; ++i)
        job.code.bytes.push_back(static_cast<std::uint8_t>(((i >> 8) * 16 + i * 5 + 7) & 0x7F));
    job.code.loaded = true;
    job.line = firmware_line;
    return job;
}

Result talk(Session& session, const std::string& what, const DemoJob& job, Report& report)
{
    if (what == "command")
        return send_user_command(session, *job.command, report);
    if (const Result entered = enter_demo(session, job, report); entered != Result::good)
        return entered;
    return program_by_demo(session, job, report);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string what = argc == 3 ? argv[1] : "";
    if (what != "command" && what != "demo") {
        std::fprintf(stderr, "usage: in_application command|demo LINK\n");
        return 2;
    }
    const int near = make_terminal(argv[2]);
    if (near < 0) {
        std::perror("in_application");
        return 1;
    }
    char line[16];
    if (std::fgets(line, sizeof line, stdin) == nullptr)
        return 1;

    static McuTable catalogue;
    load_mcu_tables(catalogue, false);
    DemoJob job = demo_job(catalogue);
    job.command = UserCommand{firmware_line, parse_hex_pairs(command_text)};
    sim::PosixLoop machine;
    PatientLoop loop(machine);
    OneTerminal ports(machine, near);
    Port port(ports);
    LineChoice choice;
    choice.port_path = "core";
    Session session(loop, port, catalogue, job.model, choice);
    loop.call_at(loop.now_us() + patience_ms * 1000, [&session] { session.stop_requested = true; });
    WrittenReport report;
    const Result result = talk(session, what, job, report);
    for (const std::string& one : report.lines)
        std::printf("%s\n", one.c_str());
    std::printf("%s\n", std::string(word_of(result)).c_str());
    std::fflush(stdout);
    while (std::fgets(line, sizeof line, stdin) != nullptr) // the terminal stays until the core has been looked at
        ;
    return result == Result::good ? 0 : 1;
}
