// What a scroll bar that paints little shows on the screen is what one shows that paints everything.
#include "window/scroll_bar.h"
#include "window_bench.h"

#include <QScreen>

using namespace vrk;

namespace {

struct BarBench {
    BarBench()
    {
        bar.setRange(0, 400);
        bar.setPageStep(46);
        bar.resize(16, 400);
        bar.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&bar));
    }
    // As it stands on the screen, with all that was painted before.
    QImage on_screen()
    {
        QApplication::processEvents();
        QTest::qWait(20); // until the server has it
        return bar.screen()->grabWindow(bar.winId()).toImage();
    }
    QImage all_painted()
    {
        bar.repaint();
        return on_screen();
    }

    SliderScrollBar bar;
};

} // namespace

TEST(ScrollBar, LeavesNoTraceOfItsSlider)
{
    BarBench bench;
    for (const int value : {0, 1, 57, 58, 200, 399, 400, 399, 120, 0, 400, 33}) {
        bench.bar.setValue(value);
        const QImage shown = bench.on_screen();
        ASSERT_FALSE(shown.isNull());
        EXPECT_EQ(shown, bench.all_painted()) << "at " << value;
    }
}

TEST(ScrollBar, LeavesNoTraceWhereItsRangeOrItsHeightHasChanged)
{
    BarBench bench;
    bench.bar.setValue(100);
    bench.on_screen();
    bench.bar.setRange(0, 4000);
    bench.bar.setValue(110);
    EXPECT_EQ(bench.on_screen(), bench.all_painted());
    bench.bar.resize(16, 300);
    bench.bar.setValue(700);
    EXPECT_EQ(bench.on_screen(), bench.all_painted());
    bench.bar.setPageStep(900);
    bench.bar.setValue(710);
    EXPECT_EQ(bench.on_screen(), bench.all_painted());
}

TEST(ScrollBar, MovesItsSliderOnTheScreen)
{
    BarBench bench;
    bench.bar.setValue(100);
    const QImage before = bench.on_screen();
    bench.bar.setValue(300);
    EXPECT_NE(bench.on_screen(), before);
}
