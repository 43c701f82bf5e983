// A line of eight lanes in its window, over pseudo terminals into fixtures at 115200, beside a line of one: how long a
// chip takes from its first answer to its end, and what the window and the lanes' own processes take of a core.
#include "bench/figures.h"
#include "bench/times.h"

#include "lanes/line_window.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <memory>

namespace {

using namespace vrk;

constexpr int chips_of_a_lane = 6;
constexpr int limit_ms = 180'000;

void wait_until(const std::function<bool()>& what)
{
    QEventLoop loop;
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        bench::require(clock.elapsed() < limit_ms, "the line does not come so far");
        if (what())
            loop.quit();
    });
    timer.start(50);
    loop.exec();
}

// Seconds of a processor that a process has used so far.
double cpu_seconds_of(qint64 process)
{
    QFile file("/proc/" + QString::number(process) + "/stat");
    bench::require(file.open(QIODevice::ReadOnly), "a lane's process is gone");
    const QByteArray text = file.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    constexpr int user = 11;
    constexpr int system = 12;
    return (fields[user].toDouble() + fields[system].toDouble()) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double own_cpu_seconds()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return double(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
        double(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
}

struct Measured {
    double chip_s = 0; // median, from the first answer to the end
    double core = 0; // of one, for window and lanes
};

Measured run_line(int lanes, const QString& job)
{
    QTemporaryDir folder;
    std::vector<std::unique_ptr<QProcess>> fixtures;
    QStringList ports;
    for (int lane = 1; lane <= lanes; ++lane) {
        ports << folder.filePath(QString::number(lane));
        fixtures.push_back(std::make_unique<QProcess>());
        fixtures.back()->setStandardOutputFile(QProcess::nullDevice());
        fixtures.back()->start(VRK_TARGET, {"Juniper-60Q", "--fixture", "100", "--link", ports.back()});
    }
    wait_until(
        [&] { return std::all_of(ports.begin(), ports.end(), [](const QString& p) { return QFile::exists(p); }); });

    lanes::LineTerms terms;
    terms.vrk = VRK;
    terms.job = job;
    terms.english = true;
    terms.more = {"--pause", "0"};
    MemoryStore settings;
    lanes::LineWindow window(terms, settings, lanes, ports);
    window.resize(1366, 768);
    window.show();

    std::vector<double> seconds;
    std::vector<std::int64_t> found_at(static_cast<std::size_t>(lanes));
    for (std::size_t i = 0; i < window.tiles().size(); ++i) {
        lanes::Tile& tile = *window.tiles()[i];
        tile.on_change = [&, i, state = VerdictState::ready, redraw = tile.on_change]() mutable {
            const VerdictState now = window.tiles()[i]->lane().state;
            if (now == VerdictState::working && now != state)
                found_at[i] = bench::now_ns();
            if (now == VerdictState::good && now != state)
                seconds.push_back(double(bench::now_ns() - found_at[i]) / 1e9);
            state = now;
            redraw();
        };
    }
    window.start_all();
    wait_until([&] { return seconds.size() >= static_cast<std::size_t>(lanes); }); // each has begun
    seconds.clear();
    const auto used = [&] {
        double sum = own_cpu_seconds();
        for (const auto& tile : window.tiles())
            sum += cpu_seconds_of(tile->process().process_id());
        return sum;
    };
    const double used_before = used();
    const std::int64_t began = bench::now_ns();
    wait_until([&] { return seconds.size() >= static_cast<std::size_t>(lanes * chips_of_a_lane); });
    const double core = (used() - used_before) / (double(bench::now_ns() - began) / 1e9);
    for (const auto& tile : window.tiles())
        bench::require(tile->lane().bad == 0, "a chip was bad");
    window.stop_all();
    wait_until([&] {
        return std::none_of(window.tiles().begin(), window.tiles().end(), [](const auto& t) { return t->lane().runs; });
    });
    for (const auto& fixture : fixtures)
        fixture->kill();
    for (const auto& fixture : fixtures)
        fixture->waitForFinished();
    return {bench::median(seconds), core};
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTemporaryDir folder;
    QFile text(PROJECT);
    bench::require(text.open(QIODevice::ReadOnly), "no project");
    QFile job(folder.filePath("job.VRK"));
    const QByteArray without_number = text.readAll()
                                          .replace("Auto_Increase_Enable: 1", "Auto_Increase_Enable: 0")
                                          .replace("MCU_Type: Juniper-8", "MCU_Type: Juniper-60Q");
    bench::require(job.open(QIODevice::WriteOnly) && job.write(without_number) > 0, "no job");
    job.close();
    constexpr int eight = 8;
    const Measured alone = run_line(1, job.fileName());
    const Measured together = run_line(eight, job.fileName());
    bench::print({"a chip, eight lanes together", together.chip_s, "s", "a lane alone", alone.chip_s, "within 1.03"});
    bench::print({"eight lanes and their window, of one core", 100 * together.core, "%", "one lane and its window",
        100 * alone.core, "under 30 %"});
    return 0;
}
