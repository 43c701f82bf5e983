#include "vrk/interrupts.h"

#include <QSocketNotifier>

#include <csignal>
#include <memory>
#include <unistd.h>

namespace vrk {

namespace {

volatile std::sig_atomic_t interrupted = 0;
int wake_up[2] = {-1, -1}; // a signal ends no sleep of Qt's loop; a byte in this pipe does

void note(int /*signal*/)
{
    interrupted = 1;
    const char byte = 0;
    if (::write(wake_up[1], &byte, 1) < 0) {
        return; // the pipe is full of such bytes
    }
}

} // namespace

void catch_interrupts()
{
    if (::pipe(wake_up) != 0)
        return; // the signals then end the program as they always do
    struct sigaction action { };
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
}

bool was_interrupted() { return interrupted != 0; }

void on_interrupt(std::function<void()> act)
{
    static std::unique_ptr<QSocketNotifier> notifier;
    notifier = std::make_unique<QSocketNotifier>(wake_up[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [act = std::move(act)] {
        notifier->setEnabled(false);
        act();
    });
}

} // namespace vrk
