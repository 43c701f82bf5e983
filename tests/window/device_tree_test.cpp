// The tree of models under real keys: where the focus goes, and what a search says.
#include "window_bench.h"

using namespace vrk;

namespace {

struct TreeBench : WindowBench {
    TreeBench()
        : WindowBench("/dev/null")
        , box(find<QLineEdit>("txtDevice"))
        , tree(find<QTreeWidget>("TreeViewDevice"))
    {
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void open()
    {
        click("txtDevice");
        EXPECT_TRUE(QTest::qWaitFor([this] { return tree->isVisible(); }));
    }
    bool closes()
    {
        return QTest::qWaitFor([this] { return !tree->isVisible(); });
    }
    // To whatever has the focus, as a keyboard does.
    static void type(const QString& keys) { QTest::keyClicks(QApplication::focusWidget(), keys); }
    QString searched() { return tree->isHeaderHidden() ? QString{} : tree->headerItem()->text(0); }

    QLineEdit* box;
    QTreeWidget* tree;
};

} // namespace

// The next keys landed in the start address: "12" made a file load at 0012.
TEST(DeviceTree, APickLeavesTheFocusOnTheModelBox)
{
    TreeBench bench;
    bench.open();
    bench.type("Oak-20V");
    QTest::keyClick(bench.tree, Qt::Key_Return);
    ASSERT_TRUE(bench.closes());
    EXPECT_EQ(bench.box->text(), "Oak-20V");
    EXPECT_EQ(QApplication::focusWidget(), bench.box);
    bench.type("12");
    EXPECT_EQ(bench.form.text_box("txtAP_FileStart").text(), "0000");
}

TEST(DeviceTree, APickByMouseLeavesTheFocusOnTheModelBoxToo)
{
    TreeBench bench;
    bench.choose_model("Juniper series", "Juniper-60Q");
    ASSERT_TRUE(bench.closes());
    EXPECT_EQ(QApplication::focusWidget(), bench.box);
}

TEST(DeviceTree, EscapeLeavesTheFocusOnTheModelBox)
{
    TreeBench bench;
    bench.open();
    QTest::keyClick(bench.tree, Qt::Key_Escape);
    ASSERT_TRUE(bench.closes());
    EXPECT_EQ(QApplication::focusWidget(), bench.box);
}

TEST(DeviceTree, OpenedAgainBeginsANewSearch)
{
    TreeBench bench;
    bench.open();
    bench.type("Oak");
    QTest::keyClick(bench.tree, Qt::Key_Escape);
    ASSERT_TRUE(bench.closes());
    bench.open();
    bench.type("Juniper-60Q"); // within the pause that parts two names
    EXPECT_EQ(bench.tree->currentItem()->text(0), "Juniper-60Q");
}

TEST(DeviceTree, ASearchWithoutAMatchSaysSoAndPicksNothing)
{
    TreeBench bench;
    const QString before = bench.box->text();
    bench.open();
    bench.type("Oak");
    EXPECT_EQ(bench.searched(), "");
    bench.type("zz");
    EXPECT_EQ(bench.searched(), "No MCU type has: Oakzz");
    if (const QString folder = qEnvironmentVariable("VRK_PICTURES"); !folder.isEmpty())
        bench.window->grab().save(folder + "/no_such_model.png");
    QTest::keyClick(bench.tree, Qt::Key_Return);
    EXPECT_TRUE(bench.tree->isVisible());
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), before.toStdString());

    QTest::keyClick(bench.tree, Qt::Key_Backspace);
    QTest::keyClick(bench.tree, Qt::Key_Backspace);
    EXPECT_EQ(bench.searched(), "");
    bench.type("zz");
    QTest::keyClick(bench.tree, Qt::Key_Down); // the highlight moves by hand
    EXPECT_EQ(bench.searched(), "");
    QTest::keyClick(bench.tree, Qt::Key_Escape);
    ASSERT_TRUE(bench.closes());
    bench.open();
    EXPECT_EQ(bench.searched(), "");
}

TEST(DeviceTree, ALetterOnTheClosedBoxOpensItAndBeginsTheSearch)
{
    TreeBench bench;
    bench.box->setFocus();
    QTest::keyClick(bench.box, 'O');
    ASSERT_TRUE(bench.tree->isVisible());
    bench.type("ak-8");
    EXPECT_EQ(bench.tree->currentItem()->text(0), "Oak-8");
}

TEST(DeviceTree, AClickOnAnEmptyPlaceClosesIt)
{
    TreeBench bench;
    bench.open();
    auto* label = bench.find<QLabel>("Label10(0)"); // far from it, and takes no focus
    QTest::mouseClick(label, Qt::LeftButton);
    EXPECT_TRUE(bench.closes());
}
