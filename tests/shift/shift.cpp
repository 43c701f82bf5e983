// shift CHIPS: a worker's shift in miniature. The window on its real event loop programs so many simulated chips one
// after the other by Re-Download, each with a serial number of its own, at a pace that is so many times the usual one.
// Judged at the end by what the chips held, with the exit status 1 where one was not as it should be; tells what a chip
// took and how much memory was in use, at the begin and at the end of the shift.
#include "host/qt_loop.h"
#include "window_at_socket.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <vector>

using namespace vrk;

namespace {

constexpr int pace = 20; // as fast as a bench
constexpr std::size_t sample = 200; // chips at either end that are compared
constexpr std::size_t program_size = 0x400;
constexpr std::size_t number_at = 0x200; // the highest byte first
constexpr std::size_t number_size = 4;
constexpr int glance_ms = 1;

// The window's loop with a clock that runs ahead: every wait of the tool, of the wire and of the chip is shorter.
class HastyLoop final : public EventLoop {
public:
    HastyLoop()
    {
        loop_.before_sleep = [this] { return before_sleep && before_sleep(); };
    }
    std::int64_t now_us() const override { return loop_.now_us() * pace; }
    WallTime wall_time() const override { return loop_.wall_time(); }
    CallId call_at(std::int64_t at_us, Task task) override
    {
        return loop_.call_at((at_us + pace - 1) / pace, std::move(task)); // never early
    }
    void cancel(CallId id) override { loop_.cancel(id); }
    void yield() override { loop_.yield(); }
    void run_due() override { loop_.run_due(); }

private:
    QtLoop loop_;
};

double resident_megabytes()
{
    std::ifstream pages("/proc/self/statm");
    long all = 0;
    long resident = 0;
    pages >> all >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

double median(std::vector<double>::const_iterator first, std::vector<double>::const_iterator end)
{
    std::vector<double> values(first, end);
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

struct Shift {
    std::size_t chips = 0;
    std::size_t wrong = 0; // did not hold the program, or not the number that was due
    std::vector<double> seconds; // that each chip took, as a clock on the wall tells it
    double megabytes_early = 0;
    double megabytes_late = 0;
};

// The chip comes out when the tool counts down to the next one, and a blank one goes in when it calls. Behind the last
// one the hand stops the repeat, and goes home.
class Hand {
public:
    Hand(WindowAtSocket& line, std::vector<std::uint8_t> program, std::size_t wanted)
        : line_(line)
        , program_(std::move(program))
        , wanted_(wanted)
    {
        clock_.start();
        QObject::connect(&glances_, &QTimer::timeout, &glances_, [this] { look(); });
        glances_.start(glance_ms);
    }

    Shift shift;

private:
    void look()
    {
        const bool in = line_.powered();
        const bool out_with_it = line_.report_says("will continue");
        const bool unheard = line_.chip.state() == sim::Chip::State::user_code && !line_.report_says("Program OK");
        if (in && out_with_it) {
            take_out();
        } else if (in && unheard) {
            line_.chip.power(false); // its short time to listen went by: once more
        } else if (!in && !out_with_it && line_.shell.running && line_.shell.port.is_open()) {
            if (shift.chips < wanted_)
                line_.chip.power(true);
            else
                click(line_.shell, line_.form.button("comStop_Download"));
        }
    }
    void take_out()
    {
        line_.chip.power(false);
        const std::vector<std::uint8_t> flash = line_.chip.flash();
        std::vector<std::uint8_t> wanted = program_;
        for (std::size_t i = 0; i < number_size; ++i)
            wanted[number_at + i] = static_cast<std::uint8_t>(shift.chips >> (8 * (number_size - 1 - i)));
        shift.wrong += std::equal(wanted.begin(), wanted.end(), flash.begin()) ? 0U : 1U;
        ++shift.chips;
        shift.seconds.push_back(static_cast<double>(clock_.restart()) / 1000);
        if (shift.chips == std::min(sample, wanted_ / 2))
            shift.megabytes_early = resident_megabytes();
        shift.megabytes_late = resident_megabytes();
        line_.chip.preset_flash(0, std::vector<std::uint8_t>(flash.size(), 0xA5)); // the next one
    }

    WindowAtSocket& line_;
    std::vector<std::uint8_t> program_;
    std::size_t wanted_;
    QTimer glances_;
    QElapsedTimer clock_;
};

std::vector<std::uint8_t> made_up_program()
{
    std::vector<std::uint8_t> bytes(program_size);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 37 + i / 256);
    return bytes;
}

// True: all chips are as they should be, and counted.
bool tell(const Shift& shift, std::size_t wanted, const std::string& count)
{
    std::cout << shift.chips << " chips, " << shift.wrong << " of them wrong, counted as " << count << "\n";
    const auto part = static_cast<std::ptrdiff_t>(std::min(sample, shift.seconds.size() / 2));
    if (part > 0)
        std::cout << "median of a chip: " << median(shift.seconds.begin(), shift.seconds.begin() + part)
                  << " s of the first " << part << ", " << median(shift.seconds.end() - part, shift.seconds.end())
                  << " s of the last\nresident: " << shift.megabytes_early << " MB behind chip " << part << ", "
                  << shift.megabytes_late << " MB behind the last\n";
    return shift.chips == wanted && shift.wrong == 0 && count == std::to_string(wanted);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    const std::size_t wanted = std::strtoul(argv[1], nullptr, 10);
    const QTemporaryDir folder;
    const std::string code_file = folder.filePath("code.bin").toStdString();
    const std::vector<std::uint8_t> program = made_up_program();
    std::ofstream(code_file, std::ios::binary)
        .write(reinterpret_cast<const char*>(program.data()), static_cast<std::streamsize>(program.size()));

    HastyLoop loop;
    WindowAtSocket line(loop, folder.filePath("settings.ini").toStdString());
    line.set_up_job(code_file, {"203", "4", "0", "1"}); // the address is the number's last
    Hand hand(line, program, wanted);
    QTimer::singleShot(0, &line.window, [&line] {
        line.click_re_download(); // comes back at the end of the shift
        QApplication::quit();
    });
    QApplication::exec();
    return tell(hand.shift, wanted, line.form.text_box("txtWrite_OK_Count").text()) ? 0 : 1;
}
