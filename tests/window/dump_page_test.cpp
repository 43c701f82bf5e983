// The dump as one looks for something in it, and files that come by a drop or from the menu. With VRK_PICTURES set
// to a folder, the menu is saved there.
#include "window_bench.h"

#include "image/dump.h"
#include "shell/buffer_view.h"
#include "shell/device.h"
#include "shell/events.h"
#include "shell/open_path.h"
#include "shell/panel_state.h"
#include "window/dump_pane.h"

#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QUrl>

#include <array>

using namespace vrk;

namespace {

struct DumpBench : WindowBench {
    DumpBench()
        : WindowBench("/dev/null")
    {
        choose("Juniper-60Q");
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void settle() { QTest::qWait(120); } // two redraws
    void choose(const char* model)
    {
        form.text_box("txtDevice").set_text(model);
        ASSERT_TRUE(apply_selected_device(shell));
        settle();
    }
    QString file(const QString& name, const QByteArray& bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    void open(const QByteArray& bytes)
    {
        open_path(shell, file("code.bin", bytes).toStdString());
        settle();
    }
    DumpPane* pane() { return dynamic_cast<DumpPane*>(find<QPlainTextEdit>("txtBuffer2")); }

    QRect caret_in(int line) { return pane()->cursorRect(QTextCursor(pane()->document()->findBlockByNumber(line))); }
    // The darkest of the pixels in a cell of the text grid, 0 black to 255 white.
    int darkest(int line, int column)
    {
        settle();
        const QImage image = pane()->viewport()->grab().toImage();
        const QRect caret = caret_in(line);
        const qreal digit = QFontMetricsF(pane()->font()).horizontalAdvance('0');
        const int left = caret.left() + static_cast<int>(digit * column);
        int darkest = 255;
        for (int x = left; x < left + static_cast<int>(digit); ++x) {
            for (int y = caret.top(); y < caret.bottom(); ++y)
                darkest = std::min(darkest, qGray(image.pixel(x, y)));
        }
        return darkest;
    }
    // Of the ground beside the digits of a byte.
    QColor ground(int line, int byte)
    {
        settle();
        const QImage image = pane()->viewport()->grab().toImage();
        const QRect caret = caret_in(line);
        const qreal digit = QFontMetricsF(pane()->font()).horizontalAdvance('0');
        return image.pixelColor(
            caret.left() + static_cast<int>(digit * (dump_data_column + byte * dump_byte_size)) + 2, caret.top() + 1);
    }
    // As the hand of another program does it.
    bool drop(const QString& path)
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(path)});
        const QPoint middle = window->rect().center();
        QDragEnterEvent enter(middle, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(window.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(middle, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &event);
        settle();
        return true;
    }

    QTemporaryDir folder;
};

constexpr int first_character = dump_data_column + bytes_per_line * dump_byte_size + 1; // of a line

} // namespace

TEST(DumpPage, ShowsTheBytesAsCharactersBesideThemAndNotInTheirText)
{
    DumpBench bench;
    bench.window->resize(1400, 900);
    bench.open(QByteArray(0x100, ' ') + QByteArray(0x100, 'W'));
    bench.settle();
    ASSERT_TRUE(bench.pane()->shows_characters());
    EXPECT_EQ(bench.darkest(0, first_character), 255) << "blanks";
    scroll_to(bench.shell, bench.form.scroll_bar("vscFile", 0), 16);
    EXPECT_LT(bench.darkest(0, first_character), 128);
    EXPECT_EQ(bench.pane()->document()->findBlockByNumber(0).text().size(), dump_line_size - 2);
}

TEST(DumpPage, InANarrowWindowLeavesTheCharactersOutAndNoByte)
{
    DumpBench bench;
    bench.pane()->window()->resize(bench.window->minimumSizeHint().width(), 720);
    bench.open(QByteArray(0x100, 'W'));
    bench.settle();
    const qreal digit = QFontMetricsF(bench.pane()->font()).horizontalAdvance('0');
    EXPECT_GE(bench.pane()->viewport()->width(), digit * (dump_line_size - 2));
    EXPECT_GE(bench.pane()->minimumWidth(), digit * (dump_line_size - 2));
}

TEST(DumpPage, WhatADownloadLeavesOutStandsBackAndANumberIsMarked)
{
    DumpBench bench;
    bench.open(QByteArray(0x401, 'x')); // to 0400
    bench.shell.code_buffer.view_high = 0x800;
    update_view(bench.shell, bench.shell.code_buffer);
    scroll_to(bench.shell, bench.form.scroll_bar("vscFile", 0), 0x3F);
    const int written = bench.darkest(0, dump_data_column);
    const int left_out = bench.darkest(2, dump_data_column);
    EXPECT_LT(written, left_out);
    EXPECT_LT(left_out, 128) << "and is still read";

    scroll_to(bench.shell, bench.form.scroll_bar("vscFile", 0), 0);
    const std::array<const char*, 4> fields = {"0014", "2", "0001", "1"};
    for (std::size_t i = 0; i < fields.size(); ++i)
        type_text(bench.shell, bench.form.text_box("texAuto_Increase", i), fields[i]);
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    ASSERT_TRUE(bench.shell.code_increase.valid);
    scroll_to(bench.shell, bench.form.scroll_bar("vscFile", 0), 0);
    put_caret(bench.shell, bench.form.text_box("txtBuffer2"), dump_data_column); // the highlight is elsewhere
    EXPECT_NE(bench.ground(1, 3), bench.ground(1, 2));
    EXPECT_EQ(bench.ground(1, 5), bench.ground(1, 2));
}

TEST(DumpPage, ControlGAndControlFLeadToAPlaceAndF3ToTheNext)
{
    DumpBench bench;
    QByteArray bytes(0x1000, '.');
    bytes.replace(0x300, 4, "V1.2");
    bytes.replace(0xA00, 4, "V1.2");
    bench.open(bytes);
    bench.pane()->setFocus();
    QTest::keyClick(bench.pane(), Qt::Key_G, Qt::ControlModifier);
    auto* address = bench.find<QLineEdit>("texDumpAddress(0)");
    ASSERT_EQ(bench.window->focusWidget(), address);
    QTest::keyClicks(address, "7f0");
    QTest::keyClick(address, Qt::Key_Return);
    bench.settle();
    EXPECT_TRUE(bench.pane()->toPlainText().contains("0007F0 "));
    EXPECT_EQ(bench.pane()->textCursor().selectedText(), "2");

    QTest::keyClick(address, Qt::Key_F, Qt::ControlModifier);
    auto* what = bench.find<QLineEdit>("texDumpFind(0)");
    ASSERT_EQ(bench.window->focusWidget(), what);
    QTest::keyClicks(what, "\"V1");
    QTest::keyClick(what, Qt::Key_Return);
    bench.settle();
    EXPECT_EQ(bench.pane()->textCursor().selectedText(), "56 31");
    EXPECT_TRUE(bench.pane()->toPlainText().contains("000A00 "));
    bench.pane()->setFocus();
    QTest::keyClick(bench.pane(), Qt::Key_F3);
    bench.settle();
    EXPECT_TRUE(bench.pane()->toPlainText().contains("000300 "));
    EXPECT_EQ(bench.find<QLabel>("labDumpFound(0)")->text(), "Gone on from the top");
}

TEST(DumpPage, AnEditIsTakenBackAndDoneAgainByKeysAndTheSumFollows)
{
    DumpBench bench;
    bench.open(QByteArray(0x400, '\0'));
    bench.shell.edit_confirmed = true;
    put_caret(bench.shell, bench.form.text_box("txtBuffer2"), dump_data_column);
    bench.settle();
    bench.pane()->setFocus();
    QTest::keyClicks(bench.pane(), "A5");
    bench.settle();
    auto* sum = bench.find<QLabel>("labEditedCheckSum(0)");
    EXPECT_EQ(sum->text(), "Edited: 00000A5H*");
    EXPECT_TRUE(bench.window->windowTitle().contains("code.bin*"));
    QTest::keyClick(bench.pane(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(bench.pane(), Qt::Key_Z, Qt::ControlModifier);
    bench.settle();
    EXPECT_EQ(bench.shell.code_buffer.data[0], 0);
    EXPECT_EQ(sum->text(), "");
    EXPECT_FALSE(bench.window->windowTitle().contains("*"));
    QTest::keyClick(bench.pane(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(bench.shell.code_buffer.data[0], 0xA0);
    QTest::keyClick(bench.pane(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(bench.shell.code_buffer.data[0], 0xA5);
}

TEST(Drop, AFileThatIsDroppedIsOpenedOnceTheDropIsDone)
{
    DumpBench bench;
    EXPECT_TRUE(bench.drop(bench.file("dropped.bin", QByteArray(0x100, 'd'))));
    EXPECT_EQ(bench.shell.code_buffer.data[0], 'd');
    EXPECT_TRUE(bench.window->windowTitle().contains("dropped.bin"));
}

TEST(Drop, IsNotTakenOfOtherFilesNorWhileTheJobIsSealed)
{
    DumpBench bench;
    const QString code = bench.file("code.hex", ":00000001FF\n");
    EXPECT_FALSE(bench.drop(bench.file("readme.txt", "text")));
    set_locked(bench.shell, true);
    EXPECT_FALSE(bench.drop(code));
    set_locked(bench.shell, false);
    bench.shell.running = true;
    EXPECT_FALSE(bench.drop(code));
    bench.shell.running = false;
}

TEST(FileMenu, ShowsTheFilesOfBeforeAndOpensOne)
{
    DumpBench bench;
    const QString one = bench.file("one.bin", QByteArray(0x100, '1'));
    open_path(bench.shell, one.toStdString());
    open_path(bench.shell, bench.file("a&b.bin", QByteArray(0x100, '2')).toStdString());
    auto* menu = bench.find<QMenu>("mnuTitle(3)");
    auto* list = bench.find<QMenu>("mnuRecentTitle(0)");
    emit menu->aboutToShow();
    emit list->aboutToShow();
    EXPECT_TRUE(list->menuAction()->isEnabled());
    EXPECT_FALSE(bench.find<QMenu>("mnuRecentTitle(1)")->menuAction()->isEnabled());
    auto* newest = bench.find<QAction>("mnuRecentFile(0)");
    EXPECT_TRUE(newest->text().contains("a&&b.bin")) << newest->text().toStdString();
    EXPECT_FALSE(bench.find<QAction>("mnuRecentFile(2)")->isVisible());
    bench.find<QAction>("mnuRecentFile(1)")->trigger();
    EXPECT_EQ(bench.shell.code_buffer.data[0], '1');
    bench.shell.running = true;
    emit list->aboutToShow();
    EXPECT_FALSE(newest->isEnabled());
    bench.shell.running = false;
}

TEST(FileMenu, CopiesTheJobAsACommandLineForOtherProgramsToPaste)
{
    DumpBench bench;
    const QString code = bench.file("one.bin", QByteArray(0x100, '1'));
    open_path(bench.shell, code.toStdString());
    auto* menu = bench.find<QMenu>("mnuTitle(3)");
    emit menu->aboutToShow();
    auto* copy = bench.find<QAction>("mnuCopyCommandLine");
    EXPECT_EQ(copy->text(), "Copy as command line");
    EXPECT_TRUE(menu->actions().contains(copy));
    if (const QString folder = qEnvironmentVariable("VRK_PICTURES"); !folder.isEmpty())
        menu->grab().save(folder + "/menu_file.png");
    copy->trigger();
    const QString line = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(line.startsWith("vrk flash ")) << line.toStdString();
    EXPECT_TRUE(line.contains(code)) << line.toStdString();
    bench.shell.running = true;
    emit menu->aboutToShow();
    EXPECT_FALSE(copy->isEnabled());
    bench.shell.running = false;
}
