// The process of a lane: `vrk flash` in JSON. A process of its own, so that no adapter's fault reaches another lane.
#pragma once

#include "lanes/lane.h"

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QStringList>

#include <functional>

namespace vrk::lanes {

// What is the same for all lanes.
struct LineTerms {
    QString vrk; // the command line's program
    QString job; // a project
    bool english = false;
    QString station; // empty: the machine's name
    QStringList more; // options that go through to each lane
};

class LaneProcess final : public QObject {
public:
    LaneProcess(const LineTerms& terms, int number); // 1, 2, ...: it is also said in the record
    ~LaneProcess() override; // ends it, in the way that costs no chip more than needed

    const Lane& lane() const { return lane_; }
    int number() const { return number_; }
    qint64 process_id() const { return process_.processId(); } // 0: it does not run

    void start(const QString& port); // nothing happens while it runs
    void stop(); // as the stop button does: the port is closed, the chip in hand is not good
    bool wait_for_end(int ms);

    std::function<void()> on_change;

private:
    void read();
    void ended(Ending ending);
    void changed();

    const LineTerms& terms_;
    int number_;
    Lane lane_;
    QProcess process_;
    QByteArray input_;
    QByteArray words_; // of its last line to standard error
};

} // namespace vrk::lanes
