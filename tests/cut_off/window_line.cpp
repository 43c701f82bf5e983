// window_line SETTINGS CODE-FILE: the window with a simulated chip in the socket, and a hand that sets the number's
// box, presses Re-Download and puts in chip after chip. Each chip that the report calls good is told on standard output
// with its true flash. Runs until it is cut off.
#include "host/qt_loop.h"
#include "script/values.h"
#include "window_at_socket.h"

#include <QApplication>
#include <QTimer>

#include <iostream>

using namespace vrk;

namespace {

constexpr int glance_ms = 5; // how often the hand looks at the report

// The chip comes out when the tool counts down to the next one, and another goes in when it calls.
class Hand {
public:
    explicit Hand(WindowAtSocket& line)
        : line_(line)
    {
        QObject::connect(&glances_, &QTimer::timeout, &glances_, [this] { look(); });
        glances_.start(glance_ms);
    }

private:
    void look()
    {
        const bool good = line_.report_says("Program OK");
        if (good && !told_)
            std::cout << "{\"flash\":\"" << script::hex_bytes(line_.chip.flash()) << "\"}" << std::endl;
        told_ = good;
        if (line_.report_says("will continue"))
            line_.chip.power(false);
        else if (!good && line_.shell.running && line_.shell.port.is_open() && !line_.powered())
            line_.chip.power(true);
    }
    WindowAtSocket& line_;
    QTimer glances_;
    bool told_ = false;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    QtLoop loop;
    WindowAtSocket line(loop, argv[1]);
    line.set_up_job(argv[2], {"203", "4"});
    const Hand hand(line);
    QTimer::singleShot(0, &line.window, [&line] { line.click_re_download(); });
    return QApplication::exec();
}
