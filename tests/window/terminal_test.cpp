// The terminal and the monitor in the window, by mouse and keyboard, with the test itself as the target on the far end
// of a pseudo terminal. With VRK_PICTURES set to a folder, each page is left there as a picture.
#include "form/main_form.h"
#include "window_bench.h"

#include "shell/events.h"

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace vrk;

namespace {

// Both ends of a pseudo terminal: the program opens one by its path, the test is the other.
struct Line {
    Line()
    {
        termios raw{};
        cfmakeraw(&raw);
        char name[64] = {};
        EXPECT_EQ(openpty(&far, &near, name, &raw, nullptr), 0);
        path = name;
        fcntl(far, F_SETFL, O_NONBLOCK);
    }
    ~Line()
    {
        ::close(far);
        ::close(near);
    }
    void send(const QByteArray& bytes) const
    {
        qint64 sent = 0;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const ssize_t count = ::write(far, bytes.data() + sent, static_cast<size_t>(bytes.size() - sent));
            sent += count > 0 ? count : 0;
            return sent == bytes.size();
        }));
    }
    // Waits until that many bytes have come, and takes them.
    QByteArray receive(qsizetype count) const
    {
        QByteArray bytes;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            char chunk[4096];
            const ssize_t got = ::read(far, chunk, sizeof chunk);
            if (got > 0)
                bytes.append(chunk, got);
            return bytes.size() >= count;
        }));
        return bytes;
    }
    QByteArray receive_all() const
    {
        QTest::qWait(100);
        char chunk[65536];
        const ssize_t got = ::read(far, chunk, sizeof chunk);
        return {chunk, got > 0 ? got : 0};
    }

    int far = -1;
    int near = -1;
    QString path;
};

struct TerminalBench {
    explicit TerminalBench(bool english = true)
        : bench(line.path, english)
    {
        choose_node(bench.shell, bench.form.TreeViewDevice, "Juniper-60Q");
        show_page("Debug_COM");
    }
    void show_page(const char* key)
    {
        auto* strip = bench.find<QTabBar>("TabStrip2");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(bench.form.TabStrip2.find(key)).center());
        QTest::qWait(60);
    }
    void open()
    {
        bench.click("comOpenCOM(0)");
        EXPECT_TRUE(bench.shell.desk.terminal.has_port);
    }
    QString shown() { return bench.find<QPlainTextEdit>("texReceive")->toPlainText(); }
    // A control is drawn a moment after it has changed.
    template <typename Widget> void expect_text(const char* name, const QString& text)
    {
        const auto* widget = bench.find<Widget>(name);
        EXPECT_TRUE(QTest::qWaitFor([&] { return widget->text() == text; }, 1000)) << widget->text().toStdString();
    }
    bool shows(const QString& text)
    {
        return QTest::qWaitFor([&] { return shown() == text; }, 2000);
    }
    void keep_picture(const char* name)
    {
        const QString folder = qEnvironmentVariable("VRK_PICTURES");
        if (folder.isEmpty())
            return;
        EXPECT_TRUE(bench.window->grab().save(folder + "/" + name + ".png"));
    }

    Line line;
    WindowBench bench;
};

} // namespace

TEST(TerminalWindow, ShowsWhatComesInAndSendsWhatIsTyped)
{
    TerminalBench terminal;
    terminal.open();
    terminal.expect_text<QPushButton>("comOpenCOM(0)", "Close COM");
    terminal.line.send("first line\r\nsecond\rthird\n\tfourth \xE4\xBD\xA0\xE5\xA5\xBD \x01");
    EXPECT_TRUE(terminal.shows(QString("first line\nsecond\nthird\n\tfourth 你好 ␁")))
        << terminal.shown().toStdString();
    terminal.bench.find<QLineEdit>("texSend")->setFocus();
    terminal.bench.find<QLineEdit>("texSend")->selectAll();
    QTest::keyClicks(terminal.bench.find<QLineEdit>("texSend"), "AT");
    terminal.bench.click("comDebugSend");
    EXPECT_EQ(terminal.line.receive(2), "AT");
    QTest::keyClicks(terminal.bench.find<QPlainTextEdit>("texReceive"), "ok");
    EXPECT_EQ(terminal.line.receive(2), "ok");
    terminal.expect_text<QLabel>("labSendCount", "Send counter:4");
    terminal.keep_picture("terminal");
}

TEST(TerminalWindow, LooksWholeInChinese)
{
    TerminalBench terminal(false);
    terminal.open();
    terminal.line.send("temperature 23.5\r\ntemperature 23.6\r\n");
    QTest::qWait(200);
    terminal.keep_picture("terminal_zh");
    terminal.show_page("Debug1");
    terminal.keep_picture("registers_zh");
}
