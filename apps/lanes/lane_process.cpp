#include "lanes/lane_process.h"

#include <QSysInfo>

#include <csignal>
#include <sys/prctl.h>

namespace vrk::lanes {

namespace {

constexpr int patience_ms = 3000; // to close a port and end
constexpr Text no_program = {"找不到命令行程序 vrk。", "The program vrk is not there, or cannot be run."};

QStringList arguments(const LineTerms& terms, const QString& port, int number)
{
    const QString station = terms.station.isEmpty() ? QSysInfo::machineHostName() : terms.station;
    return QStringList{"flash", terms.job, "--port", port, "--repeat", "--keep-going", "--json", "--language",
               terms.english ? "en" : "zh", "--station", station + "/" + QString::number(number)} +
        terms.more;
}

} // namespace

LaneProcess::LaneProcess(const LineTerms& terms, int number)
    : terms_(terms)
    , number_(number)
{
    // Without anybody who shows what becomes of its chips a lane is to stop, whatever has ended this program.
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGINT); });
    connect(&process_, &QProcess::readyReadStandardOutput, this, [this] { read(); });
    connect(&process_, &QProcess::readyReadStandardError, this, [this] {
        for (const QByteArray& line : process_.readAllStandardError().split('\n'))
            words_ = line.trimmed().isEmpty() ? words_ : line.trimmed();
    });
    connect(&process_, &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
        ended({how == QProcess::NormalExit, status, words_.toStdString()});
    });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        ended({false, 0, {}});
        lane_.advice = in_language(terms_.english, no_program);
        changed();
    });
}

LaneProcess::~LaneProcess()
{
    on_change = nullptr;
    stop();
    if (!wait_for_end(patience_ms))
        process_.kill();
    process_.waitForFinished(patience_ms);
    process_.disconnect(this);
}

void LaneProcess::start(const QString& port)
{
    if (process_.state() != QProcess::NotRunning)
        return;
    input_.clear();
    words_.clear();
    lane_started(lane_);
    changed();
    process_.start(terms_.vrk, arguments(terms_, port, number_));
}

void LaneProcess::stop()
{
    if (process_.state() != QProcess::NotRunning && process_.processId() > 0)
        ::kill(static_cast<pid_t>(process_.processId()), SIGINT);
}

bool LaneProcess::wait_for_end(int ms)
{
    return process_.state() == QProcess::NotRunning || process_.waitForFinished(ms);
}

// Line by line: a verdict that the next chip follows at once is heard and counted all the same.
void LaneProcess::read()
{
    input_ += process_.readAllStandardOutput();
    bool understood = true;
    for (qsizetype end = input_.indexOf('\n'); end >= 0; end = input_.indexOf('\n')) {
        const Lane before = lane_;
        const std::string_view line(input_.constData(), static_cast<std::size_t>(end));
        understood = understood && lane_told(lane_, line, terms_.english);
        input_.remove(0, end + 1);
        if (lane_ != before)
            changed();
    }
    if (!understood)
        stop();
}

void LaneProcess::ended(Ending ending)
{
    read(); // its last words
    lane_ended(lane_, ending, terms_.english);
    changed();
}

void LaneProcess::changed()
{
    if (on_change)
        on_change();
}

} // namespace vrk::lanes
