// The terminal and the monitor in the window, by mouse and keyboard, with the test itself as the target on the far end
// of a pseudo terminal. With VRK_PICTURES set to a folder, each page is left there as a picture.
#include "window_bench.h"

#include "shell/events.h"

#include <QListWidget>
#include <QScrollBar>

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
        choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Juniper-60Q");
        show_page("Debug_COM");
    }
    void show_page(const char* key)
    {
        auto* strip = bench.find<QTabBar>("TabStrip2");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(bench.form.tabs("TabStrip2").find(key)).center());
        QTest::qWait(60);
    }
    void open()
    {
        bench.click("comOpenCOM(0)");
        EXPECT_TRUE(bench.shell.desk.terminal.has_port);
    }
    void type(const char* name, const QString& text)
    {
        auto* field = bench.find<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        field->insert(text); // what an input method does with Chinese
        emit field->textEdited(field->text());
    }
    // On the mark of a check box or option button: the box may be wider than its text.
    void tick(const char* name)
    {
        auto* button = bench.find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
    }
    int shown_characters() { return static_cast<int>(shown().remove('\n').size()); }
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

TEST(TerminalWindow, ShowsHexadecimalPairsAndClearsThem)
{
    TerminalBench terminal;
    terminal.open();
    terminal.tick("optReceiveHex(1)");
    terminal.line.send(QByteArray::fromHex("0a00ff41"));
    EXPECT_TRUE(terminal.shows("0A 00 FF 41 "));
    terminal.bench.click("comDebugClear(0)");
    EXPECT_TRUE(terminal.shows(""));
    terminal.expect_text<QLabel>("labReceiveCount", "Receive counter:4");
}

TEST(TerminalWindow, SendsHexadecimalAndRefusesWhatIsNone)
{
    TerminalBench terminal;
    terminal.tick("optHexSend(1)");
    terminal.type("texSend", "12 34 AB CD FF");
    terminal.bench.click("comDebugSend"); // opens the port by itself
    EXPECT_EQ(terminal.line.receive(5), QByteArray::fromHex("1234abcdff"));
    terminal.type("texSend", "12 3G");
    QString said;
    terminal.bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
        said = box->text();
        box->accept();
    });
    terminal.bench.click("comDebugSend");
    EXPECT_EQ(said, "Please input HEX format data: 0-9, A-F, a-f, a space between each two charaters.");
    EXPECT_EQ(terminal.line.receive_all(), "");
    EXPECT_TRUE(terminal.bench.shell.desk.terminal.has_port);
}

TEST(TerminalWindow, SendsTheStringsOfTheListInTurn)
{
    TerminalBench terminal;
    terminal.type("texSpreadSend(0)", "one ");
    terminal.type("texSpreadSend(2)", "03");
    terminal.tick("cheSpreadHex(2)");
    terminal.bench.click("comSpreadSendCom(0)");
    EXPECT_EQ(terminal.line.receive(4), "one ");
    terminal.type("texSpreadSendCycle", "20");
    terminal.bench.click("comSpreadAutoSend");
    EXPECT_EQ(terminal.line.receive(10).left(10), "\x03one \x03one ");
    terminal.expect_text<QPushButton>("comSpreadAutoSend", "Stop Round");
    terminal.bench.click("comSpreadAutoSend");
    terminal.line.receive_all();
    EXPECT_EQ(terminal.line.receive_all(), "");
}

TEST(TerminalWindow, RepeatsAStringEveryTenMilliseconds)
{
    TerminalBench terminal;
    terminal.type("texSend", "x");
    terminal.type("texSendCycle", "10");
    terminal.bench.click("comAutoSend");
    EXPECT_EQ(terminal.line.receive(50).left(50), QByteArray(50, 'x'));
    terminal.bench.click("comAutoSend");
    terminal.line.receive_all();
    EXPECT_EQ(terminal.line.receive_all(), "");
    terminal.expect_text<QPushButton>("comAutoSend", "Repeat Send");
}

TEST(TerminalWindow, ClosesThePortWhereTheDisplayIsFull)
{
    TerminalBench terminal;
    terminal.open();
    QString said;
    terminal.bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
        said = box->text();
        box->accept();
    });
    terminal.line.send(QByteArray(Terminal::display_limit, 'a'));
    EXPECT_TRUE(QTest::qWaitFor([&] { return terminal.shown_characters() == Terminal::display_limit; }, 10000));
    EXPECT_TRUE(terminal.bench.shell.desk.terminal.has_port);
    terminal.line.send("b");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !said.isEmpty(); }, 5000));
    EXPECT_EQ(said, "The display text is too long, please click the Clear Receive button.");
    EXPECT_FALSE(terminal.bench.shell.desk.terminal.has_port);
    EXPECT_EQ(terminal.bench.form.text_box("texReceive").length(), Terminal::display_limit);
    terminal.open();
    EXPECT_EQ(terminal.bench.form.text_box("texReceive").length(), Terminal::display_limit);
}

TEST(TerminalWindow, ReadsChineseInTheEncodingThatIsChosen)
{
    TerminalBench terminal;
    terminal.open();
    terminal.bench.find<QComboBox>("combDebugCodePage")->setFocus();
    QTest::keyClick(terminal.bench.find<QComboBox>("combDebugCodePage"), Qt::Key_Down);
    EXPECT_EQ(terminal.bench.form.list("combDebugCodePage").text(), "GBK");
    terminal.line.send("\xCE\xC2\xB6"); // cut off in the second character
    EXPECT_TRUE(terminal.shows("温"));
    terminal.line.send("\xC8");
    EXPECT_TRUE(terminal.shows("温度"));
    terminal.type("texSend", "度");
    terminal.bench.click("comDebugSend");
    EXPECT_EQ(terminal.line.receive(2), "\xB6\xC8");
}

TEST(TerminalWindow, FindsTheNextPlaceAndBeginsAgainAtTheTop)
{
    TerminalBench terminal;
    terminal.open();
    terminal.line.send("alpha\r\nbeta\r\nalpha\r\n");
    EXPECT_TRUE(terminal.shows("alpha\nbeta\nalpha\n"));
    terminal.type("texDebugFind", "alpha");
    const auto line_found = [&terminal] {
        terminal.bench.click("comDebugFind");
        QTest::qWait(60); // the selection is drawn a moment later
        const QTextCursor cursor = terminal.bench.find<QPlainTextEdit>("texReceive")->textCursor();
        EXPECT_EQ(cursor.selectedText(), "alpha");
        return cursor.blockNumber();
    };
    const int first = line_found();
    EXPECT_NE(line_found(), first);
    EXPECT_EQ(line_found(), first);
    terminal.type("texDebugFind", "gamma");
    terminal.bench.click("comDebugFind");
    terminal.expect_text<QLabel>("labDebugFound", "×");
}

TEST(TerminalWindow, FollowsTheEndUnlessTheUserHasScrolledUp)
{
    TerminalBench terminal;
    terminal.open();
    QByteArray lines;
    for (int i = 0; i < 200; ++i)
        lines += "line " + QByteArray::number(i) + "\r\n";
    terminal.line.send(lines);
    auto* bar = terminal.bench.find<QPlainTextEdit>("texReceive")->verticalScrollBar();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->maximum() > 100 && bar->value() == bar->maximum(); }, 3000));
    bar->setValue(50);
    terminal.line.send("more\r\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return terminal.shown().endsWith("more\n"); }, 3000));
    EXPECT_EQ(bar->value(), 50);
}

TEST(TerminalWindow, ShowsTheMonitorsRegistersAndThoseThatChangedStandOut)
{
    TerminalBench terminal;
    terminal.open();
    terminal.show_page("Debug1");
    const auto frame = [](char acc) {
        QByteArray bytes(16, 0);
        bytes[2] = 17; // with its check
        bytes[8] = acc;
        int sum = 0;
        for (const char byte : bytes)
            sum += static_cast<unsigned char>(byte);
        return QByteArray::fromHex("a55a") + bytes + static_cast<char>(sum);
    };
    auto* list = terminal.bench.find<QListWidget>("lst_debug1");
    terminal.line.send(frame(0x11));
    EXPECT_EQ(terminal.line.receive(4), QByteArray::fromHex("feaa50fa"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->item(0)->text().trimmed() == "E0H  11H  ACC"; }, 2000));
    terminal.line.send(frame(0x22));
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->item(0)->text().trimmed() == "E0H  22H  ACC"; }, 2000));
    EXPECT_TRUE(list->item(0)->font().bold());
    EXPECT_FALSE(list->item(5)->font().bold());
    terminal.keep_picture("registers");
    terminal.bench.click("comDebugContinue(1)");
    EXPECT_EQ(terminal.line.receive(8).right(4), QByteArray::fromHex("feaa54fe"));
    terminal.show_page("Debug2");
    terminal.keep_picture("memory");
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
