#include "lanes/headless.h"

#include "host/end_signals.h"
#include "lanes/texts.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

namespace vrk::lanes {

namespace {

constexpr int look_ms = 50; // whether all have ended
constexpr int interrupted_status = 130;

// One line for a change of what a worker would see.
void tell(const LaneProcess& process, const QString& port, const Lane& before, bool english)
{
    const Lane& now = process.lane();
    if (now.state == before.state && now.advice == before.advice)
        return;
    QString line = QString::number(process.number()) + "  " + port + "  " + said(english, word_of(now.state));
    if (!now.number.empty())
        line += "  " + said(english, number_text).arg(QString::fromStdString(now.number));
    line += "  (" + said(english, counts_text).arg(now.good).arg(now.bad) + ")";
    if (!now.advice.empty())
        line += "  " + QString::fromStdString(now.advice);
    std::cout << line.toStdString() << std::endl;
}

} // namespace

int run_headless(const LineTerms& terms, const QStringList& ports)
{
    std::vector<std::unique_ptr<LaneProcess>> lanes;
    std::vector<Lane> seen(static_cast<std::size_t>(ports.size()));
    for (int i = 0; i < ports.size(); ++i) {
        lanes.push_back(std::make_unique<LaneProcess>(terms, i + 1));
        LaneProcess& lane = *lanes.back();
        Lane& before = seen[static_cast<std::size_t>(i)];
        lane.on_change = [&lane, &before, &terms, port = ports[i]] {
            tell(lane, port, before, terms.english);
            before = lane.lane();
        };
    }
    bool interrupted = false;
    const EndSignals ended_from_outside([&] {
        interrupted = true;
        for (const auto& lane : lanes)
            lane->stop();
    });
    for (int i = 0; i < ports.size(); ++i)
        lanes[static_cast<std::size_t>(i)]->start(ports[i]);

    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (std::none_of(lanes.begin(), lanes.end(), [](const auto& lane) { return lane->lane().runs; }))
            QCoreApplication::quit();
    });
    timer.start(look_ms);
    QCoreApplication::exec();
    const bool all_well = std::none_of(
        lanes.begin(), lanes.end(), [](const auto& lane) { return lane->lane().state == VerdictState::not_done; });
    return interrupted ? interrupted_status : all_well ? 0 : 1;
}

} // namespace vrk::lanes
