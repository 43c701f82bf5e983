// The record of every chip in a window of its own, and the boxes that ask for it. With VRK_PICTURES set to a folder,
// both are kept there as pictures.
#include "window_bench.h"

#include "form/named_controls.h"
#include "ledger/sql_books.h"
#include "shell/panel_state.h"

#include <QAction>
#include <QDialog>
#include <QTableWidget>

using namespace vrk;

namespace {

void write_down(Books& books, const char* time, const char* result)
{
    ChipRecord record;
    record.at = time;
    record.result = result;
    record.model = "Juniper-8";
    record.number = "00000000041";
    record.station = "left";
    ASSERT_EQ(books.end_chip({{}, record.result == "good", record}).place, EndKept::Place::in_books);
}

} // namespace

TEST(LogWindow, ShowsTheChipsTheYieldAndWhatIsLookedFor)
{
    QTemporaryDir folder;
    SqlBooks books(folder.filePath("ledger.sqlite").toStdString());
    for (int chip = 0; chip < 18; ++chip)
        write_down(books, chip < 10 ? "2025-03-09 16:59:59" : "2025-03-09 17:04:59", "good");
    write_down(books, "2025-03-09 17:05:30", "erase-failed");
    write_down(books, "2025-03-09 18:05:30", "good");

    WindowBench bench("/dev/null");
    EXPECT_FALSE(bench.find<QWidget>("cheLedger")->isEnabled()) << "a program without books";
    bench.shell.books = &books;
    bench.form.text_box("texLedger").set_text(folder.filePath("ledger.sqlite").toStdString());
    bench.find<QAction>("mnuLog")->trigger();
    auto* log = bench.find<QDialog>("LogWindow");
    ASSERT_NE(log, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(log));
    auto* table = log->findChild<QTableWidget*>();
    EXPECT_EQ(table->rowCount(), 20);
    EXPECT_EQ(table->item(0, 0)->text(), "2025-03-09 18:05:30") << "the newest first";
    const auto totals = [log] {
        QString all;
        for (const QLabel* label : log->findChildren<QLabel*>())
            all += label->text() + "\n";
        return all;
    };
    EXPECT_TRUE(totals().contains("20 chips    Good 19    Bad 1    Yield 95.0 %")) << totals().toStdString();

    log->findChild<QComboBox*>()->setCurrentIndex(2);
    QTest::mouseClick(log->findChild<QWidget*>("logShow"), Qt::LeftButton);
    EXPECT_EQ(table->rowCount(), 1);
    EXPECT_EQ(table->item(0, 1)->text(), "erase-failed");
    log->findChild<QComboBox*>()->setCurrentIndex(0);
    QTest::mouseClick(log->findChild<QWidget*>("logShow"), Qt::LeftButton);
    if (const QString folder_of_pictures = qEnvironmentVariable("VRK_PICTURES"); !folder_of_pictures.isEmpty())
        log->grab().save(folder_of_pictures + "/log.png");
}

TEST(LineBoxes, LieBelowTheNumbersAndAskForTheLedger)
{
    QTemporaryDir folder;
    SqlBooks books(folder.filePath("ledger.sqlite").toStdString());
    WindowBench bench("/dev/null");
    bench.shell.books = &books;
    bench.form.text_box("texLedger").set_text(folder.filePath("ledger.sqlite").toStdString());
    show_panel_state(bench.shell);
    auto* tabs = bench.find<QTabBar>("TabStrip1");
    tabs->setCurrentIndex(4);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.find<QWidget>("cheLedger")->isVisible(); }));
    QTest::keyClicks(bench.find<QLineEdit>("texOrder"), "pump");
    QTest::keyClicks(bench.find<QLineEdit>("texStation"), "left");
    for (const char* box : {"cheRecord", "cheLedger"}) // on the box itself: its line is longer than its words
        QTest::mouseClick(
            bench.find<QWidget>(box), Qt::LeftButton, {}, QPoint(10, bench.find<QWidget>(box)->height() / 2));
    EXPECT_TRUE(bench.form.check_box("cheLedger").value());
    EXPECT_TRUE(bench.form.check_box("cheRecord").value());
    EXPECT_EQ(bench.form.text_box("texOrder").text(), "pump");
    if (const QString pictures = qEnvironmentVariable("VRK_PICTURES"); !pictures.isEmpty())
        bench.window->grab().save(pictures + "/line.png");
}
