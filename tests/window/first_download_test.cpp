#include "window_bench.h"

#include "image/hex_loader.h"

using namespace vrk;

namespace {

// What the file holds, read without the program's loader.
QByteArray bytes_of_hex(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes;
    while (!file.atEnd()) {
        const QByteArray record = QByteArray::fromHex(file.readLine().mid(1).trimmed());
        if (record.size() < 5 || record[3] != 0)
            continue;
        const int at = static_cast<std::uint8_t>(record[1]) * 256 + static_cast<std::uint8_t>(record[2]);
        const QByteArray data = record.mid(4, record.size() - 5);
        if (bytes.size() < at + data.size())
            bytes.append(QByteArray(at + data.size() - bytes.size(), '\0'));
        bytes.replace(at, data.size(), data);
    }
    return bytes;
}

const QString sample = QString(PROJECT_DIR) + "/examples/firmware/terminal.hex";

} // namespace

TEST(FirstDownload, ByMouseAndKeyboardOverAPseudoTerminalPutsTheFileIntoTheChip)
{
    TargetProcess target({"Juniper-60Q"});
    WindowBench bench(target.link());

    bench.choose_model("Juniper series", "Juniper-60Q");
    EXPECT_EQ(bench.find<QLineEdit>("txtDevice")->text(), "Juniper-60Q");

    bench.type_into_next_dialog(sample);
    bench.click("comLoadFile");

    auto* ports = bench.find<QComboBox>("combCommPort");
    ports->setFocus();
    QTest::keyClick(ports, Qt::Key_Home);
    EXPECT_EQ(ports->currentText(), target.link());

    bench.power_up_when_called(target);
    bench.click("comDownload(0)"); // returns when the sequence has ended
    QTest::qWait(100);

    const QString report = bench.find<QPlainTextEdit>("textMsg")->toPlainText();
    EXPECT_TRUE(report.contains("Program OK")) << report.toStdString();
    EXPECT_EQ(bench.find<QLineEdit>("txtWrite_OK_Count")->text(), "1");
    EXPECT_TRUE(bench.find<QPushButton>("comDownload(0)")->isEnabled());
    EXPECT_FALSE(bench.find<QPushButton>("comStop_Download")->isEnabled());

    EXPECT_TRUE(target.quit().contains("violations: none"));
    const QByteArray wanted = bytes_of_hex(sample);
    EXPECT_EQ(target.flash().left(wanted.size()), wanted);
}

TEST(Window, StopEndsACallThatNobodyAnswers)
{
    TargetProcess target({"Juniper-60Q"});
    WindowBench bench(target.link());
    bench.choose_model("Juniper series", "Juniper-60Q");
    bench.type_into_next_dialog(sample);
    bench.click("comLoadFile");

    bench.when([&] { return bench.calling(); }, [&] { bench.click("comStop_Download"); });
    bench.click("comDownload(0)");
    QTest::qWait(100);

    EXPECT_TRUE(bench.find<QPlainTextEdit>("textMsg")->toPlainText().contains("Operation stopped. "));
    EXPECT_TRUE(bench.find<QPushButton>("comDownload(0)")->isEnabled());
}

TEST(Window, WithoutAFileDownloadAsksForOne)
{
    WindowBench bench("/dev/null");
    QString text;
    bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
        text = box->text();
        QTest::keyClick(box, Qt::Key_Return);
    });
    bench.click("comDownload(0)");
    EXPECT_EQ(text, "    Please open code file.   ");
    EXPECT_FALSE(bench.find<QPushButton>("comStop_Download")->isEnabled());
}

TEST(Window, ClosedDuringACallStopsItFirstAndGoesThen)
{
    TargetProcess target({"Juniper-60Q"});
    WindowBench bench(target.link());
    bench.choose_model("Juniper series", "Juniper-60Q");
    bench.type_into_next_dialog(sample);
    bench.click("comLoadFile");

    bench.when([&] { return bench.calling(); },
        [&] {
            bench.window->close();
            bench.answer_close_question(QMessageBox::Yes);
        });
    bench.click("comDownload(0)");
    EXPECT_TRUE(bench.shell.closing);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.window->isVisible(); }, 3000));
    EXPECT_TRUE(bench.shell.unloaded);
}

// It used to end the program, and leave half a program in the chip.
TEST(Window, AsksBeforeItIsClosedOverAChipThatIsBeingWritten)
{
    TargetProcess target({"Juniper-60Q"});
    WindowBench bench(target.link());
    bench.choose_model("Juniper series", "Juniper-60Q");
    bench.type_into_next_dialog(sample);
    bench.click("comLoadFile");

    bench.power_up_when_called(target);
    bench.when([&] { return bench.form.progress("ProgressBar1").value() > 0; },
        [&] {
            bench.window->close();
            bench.window->close(); // an impatient hand: one question is enough
            EXPECT_EQ(bench.window->findChildren<QMessageBox*>("closeQuestion").size(), 1);
            EXPECT_FALSE(bench.shell.closing);
            bench.answer_close_question(QMessageBox::No);
        });
    bench.click("comDownload(0)");
    EXPECT_FALSE(bench.shell.closing);
    EXPECT_TRUE(bench.shell.succeeded) << "the chip was written underneath the question";
    bench.window->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.shell.unloaded; }, 3000)) << "nothing runs: nothing is asked";
}

TEST(DeviceTree, EscapeClosesItWithoutAChange)
{
    WindowBench bench("/dev/null");
    const QString before = bench.find<QLineEdit>("txtDevice")->text();
    bench.click("txtDevice");
    auto* tree = bench.find<QTreeWidget>("TreeViewDevice");
    ASSERT_TRUE(QTest::qWaitFor([&] { return tree->isVisible(); }));
    QTest::keyClick(tree, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !tree->isVisible(); }));
    EXPECT_EQ(bench.find<QLineEdit>("txtDevice")->text(), before);
}

// Every control of the form can be found in the window by its name, but for those of which it shows nothing.
TEST(Controls, AllBearTheirNamesInTheWindow)
{
    const QSet<QString> not_shown = {"Frame15", "Frame20", "Frame23", "Label20", "Label7(0)", "LabUserCode(5)",
        "com_RC_frequency(1)", "com_RC_frequency(2)", "com_RC_frequency(3)", "txt_RC_frequency", "Label8(1)",
        "Label8(2)", // of families that the tree does not offer
        "txtBuffer", "txtDataFlash1", // twins of the dumps
        "ImgSplitter", // the splitter between the terminal's panes is a handle of its own
        "labLastVerdict", // drawn below the verdict
        "comDebugContinue(0)", "Text1", "optFillbyte(0)", "optFillbyte(1)"};
    WindowBench bench("/dev/null");
    QStringList missing;
    for (const Control* control : bench.shell.controls.all()) {
        const QString name = to_qt(control->full_name());
        if (bench.window->findChild<QObject*>(name) == nullptr && !not_shown.contains(name))
            missing << name;
    }
    EXPECT_EQ(missing.join(" ").toStdString(), "");
}

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS(); // no screen is needed to say what there is
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
