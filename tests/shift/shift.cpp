// shift CHIPS: a worker's shift in miniature. The window on its real event loop programs so many simulated chips one
// after the other by Re-Download, each with a serial number of its own, at a pace that is so many times the usual one.
// Judged at the end by what the chips held, with the exit status 1 where one was not as it should be; tells what a chip
// took and how much memory was in use, at the begin and at the end of the shift.
#include "form/named_controls.h"
#include "host/qt_dialogs.h"
#include "host/qt_loop.h"
#include "host/qt_settings.h"
#include "rehearsal/chip_of_model.h"
#include "shell/events.h"
#include "shell/open_file.h"
#include "shell/start_up.h"
#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/wire.h"
#include "window/main_window.h"

#include <QAbstractButton>
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

constexpr const char* model = "Juniper-8";
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
    Hand(Shell& shell, sim::Chip& chip, std::vector<std::uint8_t> program, std::size_t wanted)
        : shell_(shell)
        , report_(NamedControls{shell.controls}.text_box("textMsg"))
        , chip_(chip)
        , program_(std::move(program))
        , wanted_(wanted)
    {
        clock_.start();
        QObject::connect(&glances_, &QTimer::timeout, &glances_, [this] { look(); });
        glances_.start(glance_ms);
    }

    Shift shift;

private:
    bool says(const char* text) const { return report_.text().find(text) != std::string::npos; }
    void look()
    {
        const bool in = chip_.state_name() != "off";
        const bool out_with_it = says("will continue");
        const bool unheard = chip_.state() == sim::Chip::State::user_code && !says("Program OK");
        if (in && out_with_it) {
            take_out();
        } else if (in && unheard) {
            chip_.power(false); // its short time to listen went by: once more
        } else if (!in && !out_with_it && shell_.running && shell_.port.is_open()) {
            if (shift.chips < wanted_)
                chip_.power(true);
            else
                click(shell_, NamedControls{shell_.controls}.button("comStop_Download"));
        }
    }
    void take_out()
    {
        chip_.power(false);
        const std::vector<std::uint8_t> flash = chip_.flash();
        std::vector<std::uint8_t> wanted = program_;
        for (std::size_t i = 0; i < number_size; ++i)
            wanted[number_at + i] = static_cast<std::uint8_t>(shift.chips >> (8 * (number_size - 1 - i)));
        shift.wrong += std::equal(wanted.begin(), wanted.end(), flash.begin()) ? 0U : 1U;
        ++shift.chips;
        shift.seconds.push_back(static_cast<double>(clock_.restart()) / 1000);
        if (shift.chips == std::min(sample, wanted_ / 2))
            shift.megabytes_early = resident_megabytes();
        shift.megabytes_late = resident_megabytes();
        chip_.preset_flash(0, std::vector<std::uint8_t>(flash.size(), 0xA5)); // the next one
    }

    Shell& shell_;
    const TextBox& report_;
    sim::Chip& chip_;
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

void set_up_job(Shell& shell, const std::string& code_file)
{
    const NamedControls form{shell.controls};
    choose_node(shell, form.tree("TreeViewDevice"), model);
    take_path(shell, BufferKind::code, code_file);
    load_file(shell, code_file, shell.code_buffer);
    const char* fields[] = {"203", "4", "0", "1"}; // the address is the number's last
    for (std::size_t field = 0; field < std::size(fields); ++field)
        type_text(shell, form.text_box("texAuto_Increase", field), fields[field]);
    choose_option(shell, form.option("optAuto_Increase", 0));
    const ComboBox& delays = form.list("comDalay_ReDownLoad");
    choose_item(shell, form.list("comDalay_ReDownLoad"), static_cast<int>(delays.items().size()) - 1); // the shortest
    set_checked(shell, form.check_box("cheAuto_Increase"), true);
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
    QtDialogs dialogs;
    QtSettings settings(folder.filePath("settings.ini").toStdString());
    sim::SimPortDriver ports(loop);
    Shell shell(Platform{loop, ports, dialogs, settings});
    shell.language_is_english = true;
    sim::Wire wire(loop, sim::Wire::Waking::each_run);
    ports.add("socket", wire);
    start_up(shell);
    auto setup = chip_setup_of(shell.mcu_table, model).value();
    setup.answers_at_once();
    sim::Chip chip(setup);
    wire.attach(chip);

    MainWindow window(shell);
    dialogs.parent = &window;
    window.show();
    set_up_job(shell, code_file);
    Hand hand(shell, chip, program, wanted);
    QTimer::singleShot(0, &window, [&window] {
        window.findChild<QAbstractButton*>("comDownload(1)")->click(); // comes back at the end of the shift
        QApplication::quit();
    });
    QApplication::exec();
    return tell(hand.shift, wanted, NamedControls{shell.controls}.text_box("txtWrite_OK_Count").text()) ? 0 : 1;
}
