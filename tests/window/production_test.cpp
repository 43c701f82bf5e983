// The dump as an editor and the pages of a production run, by mouse and keyboard. With VRK_PICTURES set to a folder,
// each page is left there as a picture.
#include "whole_texts.h"
#include "window_bench.h"

#include "image/dump.h"
#include "shell/buffer_view.h"
#include "shell/events.h"
#include "shell/open_file.h"

#include <QTextBlock>
#include <QWheelEvent>

using namespace vrk;

namespace {

const QString sample = QString(PROJECT_DIR) + "/examples/firmware/terminal.hex";

struct ProductionBench : WindowBench {
    explicit ProductionBench(bool english = true)
        : WindowBench("/dev/null", english)
    {
        choose_node(shell, form.tree("TreeViewDevice"), "Juniper-60Q");
        load_file(shell, sample.toStdString(), shell.code_buffer);
        vrk::scroll_to(shell, form.scroll_bar("vscFile", 0), 0);
        QTest::qWait(100);
        pane = find<QPlainTextEdit>("txtBuffer2");
    }

    // The middle of a digit on the screen.
    QPoint digit(int line, int column, int low = 0) const
    {
        QTextCursor cursor(pane->document()->findBlockByNumber(line));
        cursor.movePosition(
            QTextCursor::NextCharacter, QTextCursor::MoveAnchor, dump_data_column + column * dump_byte_size + low);
        const QRect left = pane->cursorRect(cursor);
        return {left.left() + pane->fontMetrics().horizontalAdvance('0') * 3 / 4, left.center().y()};
    }
    void click_digit(int line, int column, int low = 0)
    {
        QTest::mouseClick(pane->viewport(), Qt::LeftButton, {}, digit(line, column, low));
        QTest::qWait(60);
    }
    void choose_tab(const char* key)
    {
        auto* strip = find<QTabBar>("TabStrip1");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(form.tabs("TabStrip1").find(key)).center());
        QTest::qWait(150);
    }
    // On the mark of a check box or option button: the box may be wider than its text.
    void tick(const char* name)
    {
        auto* button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
    }
    void press(Qt::Key key)
    {
        QTest::keyClick(pane, key);
        QTest::qWait(60);
    }
    QString highlighted() const { return pane->textCursor().selectedText(); }
    QString line(int number) const { return pane->document()->findBlockByNumber(number).text(); }
    int line_count() const { return pane->document()->blockCount(); }

    void keep_picture(const std::string& name) const
    {
        const QString folder = qEnvironmentVariable("VRK_PICTURES");
        if (folder.isEmpty())
            return;
        EXPECT_TRUE(window->grab().save(folder + "/" + QString::fromStdString(name) + ".png"));
    }

    QPlainTextEdit* pane = nullptr;
};

struct PageCase {
    const char* key;
    const char* name;
    bool english;
};

class ProductionPage : public ::testing::TestWithParam<PageCase> { };

} // namespace

TEST(DumpEditor, AClickHighlightsTheDigitUnderThePointer)
{
    ProductionBench bench;
    bench.click_digit(2, 5, 1);
    EXPECT_EQ(bench.highlighted().size(), 1);
    EXPECT_EQ(
        bench.form.text_box("txtBuffer2").sel_start(), 2 * dump_line_size + dump_data_column + 5 * dump_byte_size + 1);
    bench.click_digit(2, 5, 1); // once more into what is highlighted
    EXPECT_EQ(bench.highlighted().size(), 1);
}

TEST(DumpEditor, DigitsTypedOverGoIntoTheBufferAndTheHintComesUp)
{
    ProductionBench bench;
    auto* hint = bench.find<QLabel>("LabEdit_Clew");
    EXPECT_FALSE(hint->isVisible());
    bench.click_digit(1, 3);
    QString question;
    bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
        question = box->text();
        QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    });
    bench.press(Qt::Key_A);
    bench.press(Qt::Key_5);
    EXPECT_EQ(question, "Update the buffer ?");
    EXPECT_EQ(bench.shell.code_buffer.data[0x13], 0xA5);
    EXPECT_EQ(bench.line(1).mid(dump_data_column + 9, 2), "A5");
    EXPECT_EQ(bench.form.text_box("txtBuffer2").sel_start(), dump_line_size + dump_data_column + 4 * dump_byte_size);
    EXPECT_EQ(bench.highlighted().size(), 1);
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), "You can modify any single highlight character in this buffer.");
    bench.keep_picture("dump_edited");
}

TEST(DumpEditor, EnterOnTheQuestionLeavesTheByte)
{
    ProductionBench bench;
    bench.click_digit(1, 3);
    const auto before = bench.shell.code_buffer.data;
    bench.in_next_modal<QMessageBox>([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
    bench.press(Qt::Key_A);
    EXPECT_EQ(bench.shell.code_buffer.data, before);
}

TEST(DumpEditor, AStretchDrawnOverIsNoDigitToTypeOver)
{
    ProductionBench bench;
    const auto before = bench.shell.code_buffer.data;
    bench.shell.edit_confirmed = true;
    QTest::mousePress(bench.pane->viewport(), Qt::LeftButton, {}, bench.digit(1, 2));
    QTest::mouseMove(bench.pane->viewport(), bench.digit(1, 4));
    QTest::mouseMove(bench.pane->viewport(), bench.digit(1, 6));
    QTest::mouseRelease(bench.pane->viewport(), Qt::LeftButton, {}, bench.digit(1, 6));
    QTest::qWait(60);
    EXPECT_GT(bench.form.text_box("txtBuffer2").sel_length(), 1);
    bench.press(Qt::Key_A);
    EXPECT_EQ(bench.shell.code_buffer.data, before);
}

TEST(DumpEditor, ArrowsAndPagesMoveThroughTheBuffer)
{
    ProductionBench bench;
    bench.click_digit(5, 3);
    bench.press(Qt::Key_Right);
    bench.press(Qt::Key_Right);
    EXPECT_EQ(
        bench.form.text_box("txtBuffer2").sel_start(), 5 * dump_line_size + dump_data_column + 4 * dump_byte_size);
    bench.press(Qt::Key_PageDown);
    EXPECT_EQ(bench.find<QScrollBar>("vscFile(0)")->value(), 16);
    EXPECT_EQ(bench.line(0).left(6), "000100");
    EXPECT_EQ(
        bench.form.text_box("txtBuffer2").sel_start(), 5 * dump_line_size + dump_data_column + 4 * dump_byte_size);
}

TEST(DumpView, ShowsAWholeNumberOfLinesAndFollowsItsHeight)
{
    ProductionBench bench;
    EXPECT_EQ(bench.line_count(), bench.shell.view_lines[0]);
    const int before = bench.line_count();
    bench.window->resize(bench.window->width(), bench.window->height() + 150);
    QTest::qWait(100);
    EXPECT_EQ(bench.line_count(), bench.shell.view_lines[0]);
    EXPECT_GT(bench.line_count(), before);
}

TEST(DumpView, ShowsTheTextOfTheBoxHoweverItIsScrolled)
{
    ProductionBench bench;
    const auto scroll_to = [&bench](int line) {
        vrk::scroll_to(bench.shell, bench.form.scroll_bar("vscFile", 0), line);
        QTest::qWait(60);
    };
    const auto box = [&bench] { return to_qt(bench.form.text_box("txtBuffer2").text()).remove('\r'); };
    const auto shown = [&bench] { return bench.pane->toPlainText() + '\n'; };
    const int lowest = bench.form.scroll_bar("vscFile", 0).max(); // where the last lines leave room below them
    scroll_to(5);
    EXPECT_EQ(shown(), box());
    scroll_to(2);
    EXPECT_EQ(shown(), box());
    scroll_to(lowest);
    EXPECT_EQ(shown(), box());
    scroll_to(lowest - 1);
    EXPECT_EQ(shown(), box());
    scroll_to(0);
    EXPECT_EQ(shown(), box());
    bench.window->resize(bench.window->width(), bench.window->height() + 150);
    scroll_to(1);
    EXPECT_EQ(shown(), box());
    bench.window->resize(bench.window->width(), bench.window->height() - 150);
    scroll_to(0);
    EXPECT_EQ(shown(), box());
}

TEST(DumpView, TheWheelScrollsThreeLinesANotch)
{
    ProductionBench bench;
    const QPointF middle = bench.pane->viewport()->rect().center();
    QWheelEvent down(middle, bench.pane->viewport()->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QApplication::sendEvent(bench.pane->viewport(), &down);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 3);
    QTest::qWait(60);
    EXPECT_EQ(bench.line(0).left(6), "000030");
}

TEST(DumpEditor, HomeAndEndActInTheLineAndWithControlInTheBuffer)
{
    ProductionBench bench;
    bench.click_digit(1, 5);
    bench.press(Qt::Key_End);
    EXPECT_EQ(bench.pane->textCursor().selectionStart(), bench.pane->document()->findBlockByNumber(2).position() - 3);
    EXPECT_EQ(bench.highlighted(), bench.line(1).trimmed().right(1));
    bench.press(Qt::Key_Home);
    EXPECT_EQ(bench.highlighted(), bench.line(1).mid(dump_data_column, 1));
    QTest::keyClick(bench.pane, Qt::Key_End, Qt::ControlModifier);
    QTest::qWait(60);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), bench.form.scroll_bar("vscFile", 0).max());
    QTest::keyClick(bench.pane, Qt::Key_Home, Qt::ControlModifier);
    QTest::qWait(60);
    EXPECT_EQ(bench.line(0).left(6), "000000");
}

TEST(SerialNumberPage, TheCheckBoxStampsAndTheNumberStandsOut)
{
    ProductionBench bench;
    bench.choose_tab("AUTO_INCREASE");
    const auto type = [&bench](const char* name, const QString& text) {
        auto* field = bench.find<QLineEdit>(name);
        field->selectAll();
        QTest::keyClicks(field, text);
    };
    type("texAuto_Increase(0)", "0203");
    type("texAuto_Increase(1)", "4");
    type("texAuto_Increase(2)", "1234");
    type("texAuto_Increase(3)", "1");
    bench.tick("optAuto_Increase(0)");
    bench.tick("cheAuto_Increase");
    QTest::qWait(100);

    EXPECT_EQ(bench.shell.code_buffer.data[0x202], 0x04);
    EXPECT_EQ(bench.shell.code_buffer.data[0x203], 0xD2);
    EXPECT_EQ(bench.highlighted(), "00 00 04 D2");
    EXPECT_FALSE(bench.find<QLineEdit>("texAuto_Increase(2)")->isEnabled());
    bench.keep_picture("number_stamped");

    bench.tick("cheAuto_Increase");
    QTest::qWait(60);
    EXPECT_TRUE(bench.find<QLineEdit>("texAuto_Increase(2)")->isEnabled());
}

TEST(SerialNumberPage, AFailedCheckIsABoxAndTheTickComesOffAgain)
{
    ProductionBench bench;
    bench.choose_tab("AUTO_INCREASE");
    QString text;
    QString title;
    bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
        text = box->text();
        title = box->windowTitle();
        QTest::keyClick(box, Qt::Key_Return);
    });
    bench.tick("cheAuto_Increase"); // FFFF by default
    EXPECT_EQ(title, "Set Program Automatic Increment");
    EXPECT_EQ(text, "The address of auto increament in the data buffer is too big.");
    EXPECT_FALSE(bench.shell.code_increase.valid);
    auto* tick = bench.find<QCheckBox>("cheAuto_Increase");
    EXPECT_TRUE(QTest::qWaitFor([tick] { return !tick->isChecked(); }, 2000));
    EXPECT_TRUE(bench.find<QLineEdit>("texAuto_Increase(0)")->isEnabled()) << "the address can be put right";
}

TEST_P(ProductionPage, ShowsAllItsTextsWhole)
{
    ProductionBench bench(GetParam().english);
    bench.choose_tab(GetParam().key);
    bench.keep_picture(std::string{GetParam().name} + (GetParam().english ? "_English" : "_Chinese"));
    EXPECT_EQ(cut_off(*bench.window), "");
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, ProductionPage,
    ::testing::Values(PageCase{"AUTO_INCREASE", "numbers", false}, PageCase{"AUTO_INCREASE", "numbers", true},
        PageCase{"store_buffer", "store", false}, PageCase{"store_buffer", "store", true}),
    [](const auto& row) { return std::string{row.param.name} + (row.param.english ? "InEnglish" : "InChinese"); });
