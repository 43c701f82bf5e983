// A worker's window: it holds still, is used by keys alone, and a stray wheel or key changes nothing.
#include "window_bench.h"

#include "shell/device.h"
#include "shell/events.h"
#include "shell/open_file.h"

#include <QRegularExpression>
#include <QToolTip>
#include <QWheelEvent>

#include <map>

using namespace vrk;

namespace {

struct WorkerBench : WindowBench {
    explicit WorkerBench(bool english = true)
        : WindowBench("/dev/null", english)
    {
    }
    void settle() { QTest::qWait(120); } // two redraws
    void show_page(TabStrip& strip, int tab)
    {
        choose_tab(shell, strip, tab);
        settle();
    }
    void choose(const char* model)
    {
        form.text_box("txtDevice").set_text(model);
        ASSERT_TRUE(apply_selected_device(shell));
        settle();
    }
    // Where everything stands that a hand goes to without looking.
    std::vector<QRect> places()
    {
        std::vector<QRect> all{window->geometry()};
        for (const char* name : {"FrameX(0)", "FrameX(1)", "FrameX(2)", "FrameX(3)", "FrameX(4)", "comLoadFile",
                 "comDownload(0)", "comStop_Download", "textMsg", "TabStrip1", "TabStrip2", "Frame16"}) {
            QWidget* widget = find<QWidget>(name);
            all.emplace_back(widget->mapTo(window.get(), QPoint(0, 0)), widget->size());
        }
        return all;
    }
    // The frames of the steps, and in them whatever a hand goes to. Options are lines of text, and lie one behind the
    // other.
    std::map<std::string, QRect> fixed_places()
    {
        std::map<std::string, QRect> all;
        for (const char* part :
            {"FrameX(0)", "FrameX(1)", "FrameX(2)", "FrameX(3)", "FrameX(4)", "TabStrip1", "TabStrip2", "Frame16"}) {
            auto* frame = find<QWidget>(part);
            QList<QWidget*> widgets{frame};
            if (frame->objectName() != "FrameX(3)")
                widgets += frame->findChildren<QWidget*>(QRegularExpression("^(c|t|Com|Progress|opt)"));
            for (const QWidget* widget : widgets)
                all[widget->objectName().toStdString()] = {widget->mapTo(window.get(), QPoint(0, 0)), widget->size()};
        }
        return all;
    }
    void wheel_over(QWidget* widget)
    {
        const QPointF middle = widget->rect().center();
        QWheelEvent event(
            middle, widget->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &event);
    }
};

} // namespace

TEST(WorkersWindow, NothingMovesFromPageToPage)
{
    WorkerBench bench;
    bench.choose("Larch-12V");
    const auto before = bench.places();
    for (TabStrip* strip : {&bench.form.tabs("TabStrip1"), &bench.form.tabs("TabStrip2")}) {
        for (int tab = 0; tab < static_cast<int>(strip->tabs().size()); ++tab) {
            bench.show_page(*strip, tab);
            EXPECT_EQ(bench.places(), before) << strip->tabs()[static_cast<std::size_t>(tab)].key;
        }
    }
}

TEST(WorkersWindow, NothingMovesFromModelToModel)
{
    WorkerBench bench;
    const auto before = bench.places();
    for (const char* model : {"Alder-64", "Birch-32", "Fir-28R", "Hazel-5R", "Juniper-60Q", "Larch-12V", "Oak-20V"}) {
        bench.choose(model);
        EXPECT_EQ(bench.places(), before) << model;
    }
}

// A hand that has learnt the window in one language finds everything in the other.
TEST(WorkersWindow, NothingMovesFromLanguageToLanguage)
{
    for (const QSize screen : {QSize(1024, 708), QSize(1366, 700), QSize(1900, 1000)}) {
        std::map<std::string, QRect> in_english;
        std::map<std::string, QRect> in_chinese;
        for (auto* places : {&in_english, &in_chinese}) {
            WorkerBench bench(places == &in_english);
            bench.choose("Larch-12V");
            bench.window->resize(screen);
            bench.settle();
            *places = bench.fixed_places();
        }
        EXPECT_GT(in_english.size(), 30U);
        EXPECT_LT(in_english["Command3"].width(), 40) << "an arrow has no word in it";
        for (const auto& [name, place] : in_english)
            EXPECT_EQ(in_chinese[name], place) << name << " of " << screen.width();
    }
}

TEST(WorkersWindow, ALongPathWidensNothingAndIsThereAsAHint)
{
    WorkerBench bench;
    const auto before = bench.places();
    const std::string path = "/" + std::string(150, 'd') + "/" + std::string(150, 'f') + ".hex";
    bench.form.frame("Frame7").set_caption("Program File: " + path);
    bench.form.label("Label2", 6).set_caption(path);
    bench.settle();
    EXPECT_EQ(bench.places(), before);
}

TEST(WorkersWindow, GoesIntoASmallScreen)
{
    for (const bool english : {true, false}) {
        WorkerBench bench(english);
        bench.choose("Larch-12V");
        EXPECT_LE(bench.window->minimumSizeHint().width(), 1024) << english;
        EXPECT_LE(bench.window->minimumSizeHint().height(), 768 - 60) << english; // a bar and a title above it
    }
}

TEST(WorkersWindow, TheWheelChangesNoClosedList)
{
    WorkerBench bench;
    bench.choose("Juniper-60Q");
    const std::string baud = bench.form.list("cobBaudMax").text();
    const std::string delay = bench.form.list("comDalay_ReDownLoad").text();
    bench.wheel_over(bench.find<QComboBox>("cobBaudMax"));
    bench.wheel_over(bench.find<QComboBox>("comDalay_ReDownLoad"));
    bench.settle();
    EXPECT_EQ(bench.form.list("cobBaudMax").text(), baud);
    EXPECT_EQ(bench.form.list("comDalay_ReDownLoad").text(), delay);
}

TEST(WorkersWindow, AGroupOfChoicesIsOneStopAndTheArrowsChoose)
{
    WorkerBench bench;
    auto* yes = bench.find<QRadioButton>("optBeepYes");
    auto* no = bench.find<QRadioButton>("optBeepNo");
    ASSERT_TRUE(bench.form.option("optBeepYes").value());
    EXPECT_EQ(yes->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(no->focusPolicy(), Qt::ClickFocus);
    yes->setFocus();
    QTest::keyClick(yes, Qt::Key_Right);
    EXPECT_TRUE(bench.form.option("optBeepNo").value());
    EXPECT_EQ(bench.window->focusWidget(), no);
    EXPECT_EQ(no->focusPolicy(), Qt::StrongFocus);
    QTest::keyClick(no, Qt::Key_Right); // round and round
    EXPECT_TRUE(bench.form.option("optBeepYes").value());
}

TEST(WorkersWindow, ANumberFieldTakesNothingElseAndSaysWhy)
{
    WorkerBench bench;
    auto* start = bench.find<QLineEdit>("txtAP_FileStart");
    start->setFocus();
    start->selectAll();
    QTest::keyClicks(start, "1z");
    EXPECT_EQ(bench.form.text_box("txtAP_FileStart").text(), "1");
    EXPECT_EQ(QToolTip::text(), "Only 0 to 9 and A to F");
}

TEST(WorkersWindow, F5DownloadsEscapeStopsAndTheFocusIsBackOnTheButton)
{
    TargetProcess target({"Juniper-60Q"});
    WindowBench line(target.link());
    line.form.text_box("txtDevice").set_text("Juniper-60Q");
    ASSERT_TRUE(apply_selected_device(line.shell));
    QTemporaryDir folder;
    const QString file = folder.filePath("code.bin");
    QFile code(file);
    ASSERT_TRUE(code.open(QIODevice::WriteOnly));
    code.write(QByteArray(0x400, 'c'));
    code.close();
    ASSERT_TRUE(load_file(line.shell, file.toStdString(), line.shell.code_buffer));
    line.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(line.window.get()));
    auto* download = line.find<QPushButton>("comDownload(0)");
    auto* stop = line.find<QPushButton>("comStop_Download");
    QWidget* in_between = nullptr;
    line.when([&] { return line.calling(); },
        [&] {
            in_between = line.window->focusWidget();
            QTest::keyClick(in_between, Qt::Key_Space); // leant on once more: nothing is stopped by it
            EXPECT_TRUE(stop->isEnabled());
            EXPECT_FALSE(line.shell.stop_requested);
            QTest::keyClick(line.window.get(), Qt::Key_Escape);
        });
    QTest::keyClick(line.window.get(), Qt::Key_F5); // comes back when the sequence has ended
    EXPECT_FALSE(line.shell.running);
    EXPECT_EQ(line.form.label("labVerdict").caption(), "STOPPED");
    EXPECT_EQ(in_between, line.find<QWidget>("textMsg"));
    EXPECT_EQ(line.window->focusWidget(), download);
}

TEST(WorkersWindow, EnterPressesAButtonOnceHoweverLongItIsHeld)
{
    WorkerBench bench;
    auto* shrink = bench.find<QPushButton>("comMastWindow");
    shrink->setFocus();
    QTest::keyClick(shrink, Qt::Key_Return);
    EXPECT_TRUE(bench.shell.shrunk);
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(shrink, &again);
    EXPECT_TRUE(bench.shell.shrunk);
    QTest::keyClick(shrink, Qt::Key_Return);
    EXPECT_FALSE(bench.shell.shrunk);
}
