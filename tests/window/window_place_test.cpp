// The window comes up where it stood, and tells the settings where it stands.
#include "form/main_form.h"
#include "window_bench.h"

#include "shell/events.h"

using namespace vrk;

namespace {

struct PlaceBench {
    void open()
    {
        start_up(shell);
        window = std::make_unique<MainWindow>(shell);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void put(const char* key, const char* value) { settings.set("Settings", key, value); }
    int stored(const char* key) { return QString::fromStdString(settings.get("Settings", key, "-1")).toInt(); }

    QtLoop loop;
    QtPorts ports{{}};
    QtDialogs dialogs;
    MemoryStore settings;
    Shell shell{Platform{loop, ports, dialogs, settings}};
    MainForm& form = shell.form;
    std::unique_ptr<MainWindow> window;
};

constexpr int units_per_pixel = 15; // a pixel

} // namespace

TEST(WindowPlace, IsTheOneStored)
{
    PlaceBench bench;
    bench.put("MainLeft", "1500");
    bench.put("MainTop", "450");
    bench.put("MainWidth", "18750");
    bench.put("MainHeight", "14250");
    bench.open();
    EXPECT_EQ(bench.window->pos(), QPoint(100, 30));
    EXPECT_EQ(bench.window->size(), QSize(1250, 950).expandedTo(bench.window->minimumSizeHint()));
}

TEST(WindowPlace, IsNeverTooSmallForItsContents)
{
    PlaceBench bench;
    bench.put("MainWidth", "0");
    bench.put("MainHeight", "nonsense");
    bench.open();
    EXPECT_GE(bench.window->width(), bench.window->minimumSizeHint().width());
    EXPECT_GE(bench.window->height(), bench.window->minimumSizeHint().height());
}

TEST(WindowPlace, HasRoomForAReportTheFirstTime)
{
    PlaceBench bench;
    bench.open();
    EXPECT_GE(bench.window->width(), 800);
    EXPECT_GE(bench.window->height(), 603);
    EXPECT_GE(bench.window->height(), bench.window->minimumSizeHint().height());
}

TEST(WindowPlace, SurvivesNonsense)
{
    PlaceBench bench;
    bench.put("MainLeft", "1e300");
    bench.put("MainTop", "-1e300");
    bench.put("MainWidth", "1e300");
    bench.put("MainHeight", "1e300");
    bench.open();
    EXPECT_LE(bench.window->width(),
        std::max(bench.window->screen()->virtualSize().width(), bench.window->minimumSizeHint().width()));
}

TEST(WindowPlace, IsStoredHalfASecondAfterAResize)
{
    PlaceBench bench;
    bench.open();
    const QSize wider = bench.window->size() + QSize(40, 8);
    bench.window->resize(wider);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.stored("MainWidth") == wider.width() * units_per_pixel; }, 3000));
    EXPECT_EQ(bench.stored("MainHeight"), wider.height() * units_per_pixel);
}

TEST(WindowPlace, IsStoredAtTheEnd)
{
    PlaceBench bench;
    bench.open();
    bench.window->move(60, 40);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.form.window.left == 60.0F * units_per_pixel; }, 3000));
    bench.window->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.shell.unloaded; }, 3000));
    EXPECT_EQ(bench.stored("MainLeft"), 60 * units_per_pixel);
    EXPECT_EQ(bench.stored("MainTop"), 40 * units_per_pixel);
}

// A second screen was unplugged, or the store holds what no screen shows: the window could not be reached.
TEST(WindowPlace, IsBroughtBackFromOutsideOfAllScreens)
{
    for (const auto& [left, top] : {std::pair{"60000", "30000"}, std::pair{"-60000", "0"}, std::pair{"0", "-3000"}}) {
        PlaceBench bench;
        bench.put("MainLeft", left);
        bench.put("MainTop", top);
        bench.open();
        const QRect area = bench.window->screen()->availableGeometry();
        EXPECT_TRUE(area.contains(bench.window->pos())) << left << ", " << top;
        EXPECT_GE(area.right() - bench.window->x(), 59);
    }
}

TEST(WindowPlace, IsThatOfTheWholeWindowAlsoWhileItIsShrunk)
{
    PlaceBench bench;
    bench.open();
    bench.window->resize(bench.window->minimumSizeHint() + QSize(220, 20));
    QTest::qWait(50);
    const int width = bench.window->width();
    click(bench.shell, bench.form.comMastWindow);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.window->width() < width / 2 + width / 4; }, 3000));
    EXPECT_FALSE(bench.window->findChild<QTabBar*>("TabStrip1")->isVisible());
    EXPECT_FALSE(bench.window->findChild<QGroupBox*>("FrameX(0)")->isVisible());
    EXPECT_TRUE(bench.window->findChild<QPushButton*>("comDownload(0)")->isVisible());
    EXPECT_TRUE(bench.window->findChild<QPushButton*>("comMastWindow")->isVisible());
    EXPECT_EQ(pixels(bench.form.window.width), width);
    if (const QString folder = qEnvironmentVariable("VRK_PICTURES"); !folder.isEmpty())
        bench.window->grab().save(folder + "/shrunk.png");
    click(bench.shell, bench.form.comMastWindow);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.window->width() == width; }, 3000));
    EXPECT_TRUE(bench.window->findChild<QTabBar*>("TabStrip1")->isVisible());
    if (const QString folder = qEnvironmentVariable("VRK_PICTURES"); !folder.isEmpty())
        bench.window->grab().save(folder + "/whole_again.png");
}
