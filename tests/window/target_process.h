// A simulated target in a process of its own, on a pseudo terminal.
#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace vrk {

// vrk-target, its supply and what it holds in the end.
class TargetProcess {
public:
    explicit TargetProcess(const QStringList& arguments)
    {
        process_.start(VRK_TARGET, arguments + QStringList{"--link", link(), "--flash", flash_file()});
        process_.waitForStarted();
        EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(link()); }, 5000));
    }
    ~TargetProcess() { quit(); }

    QString link() const { return folder_.filePath("line"); }
    QString file(const char* name) const { return folder_.filePath(name); }
    void program_next_chip() { process_.write("program\n"); } // of an off-line board
    void power_on() { process_.write("on\n"); }
    // A command to user code goes out once, so there has to be somebody to hear it.
    void power_on_and_wait()
    {
        power_on();
        EXPECT_TRUE(QTest::qWaitFor([this] { return said().contains("power: on"); }, 5000));
    }
    QString said()
    {
        said_ += QString::fromUtf8(process_.readAllStandardOutput());
        return said_;
    }
    void power_off() { process_.write("off\n"); }
    void power_cycle() { process_.write("cycle\n"); }
    // What it wrote to its standard output, and its flash.
    QString quit()
    {
        if (process_.state() == QProcess::Running) {
            process_.write("quit\n");
            process_.waitForFinished();
        }
        return said();
    }
    QByteArray flash() const
    {
        QFile file(flash_file());
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

private:
    QString flash_file() const { return folder_.filePath("flash"); }

    QTemporaryDir folder_;
    QProcess process_;
    QString said_;
};

} // namespace vrk
