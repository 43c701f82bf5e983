// A production line's day in the real window: numbers into two chips by Re-Download, the job into a project, and the
// next morning a third chip from that project.
#include "window_bench.h"

#include "host/qt_settings.h"

using namespace vrk;

namespace {

constexpr int number_first = 0x1FC;

void show_page(WindowBench& bench, const char* strip, const TabStrip& control, const char* key)
{
    auto* tabs = bench.find<QTabBar>(strip);
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(control.find(key)).center());
    QTest::qWait(60);
}

void type_into(WindowBench& bench, const char* name, const QString& text)
{
    auto* line = bench.find<QLineEdit>(name);
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, text);
}

QByteArray number_of(const TargetProcess& target) { return target.flash().mid(number_first, 4); }

} // namespace

TEST(ProductionDay, NumbersGoThroughTwoChipsAProjectAndARestartIntoTheThird)
{
    QTemporaryDir folder;
    const std::string store = folder.filePath("settings.ini").toStdString();
    const QString project = folder.filePath("line.VRK");
    QFile file(folder.filePath("code.bin"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(0x200, '\x5A'));
    file.close();

    {
        TargetProcess first({"Juniper-60Q", "--at-once"});
        TargetProcess second({"Juniper-60Q", "--at-once"});
        QtSettings settings(store);
        WindowBench bench({first.link().toStdString(), second.link().toStdString()}, &settings);
        const auto count = [&bench] { return bench.form.text_box("txtWrite_OK_Count").text(); };

        bench.choose_model("Juniper series", "Juniper-60Q");
        bench.type_into_next_dialog(file.fileName());
        bench.click("comLoadFile");
        show_page(bench, "TabStrip1", bench.form.tabs("TabStrip1"), "AUTO_INCREASE");
        type_into(bench, "texAuto_Increase(0)", "1FF");
        type_into(bench, "texAuto_Increase(1)", "4");
        type_into(bench, "texAuto_Increase(2)", "77");
        type_into(bench, "texAuto_Increase(3)", "1");
        auto* hex = bench.find<QRadioButton>("optAuto_Increase(0)");
        QTest::mouseClick(hex, Qt::LeftButton, {}, QPoint(8, hex->height() / 2));
        auto* box = bench.find<QCheckBox>("cheAuto_Increase");
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
        ASSERT_TRUE(box->isChecked());
        bench.form.list("comDalay_ReDownLoad").set_text("1");

        // Chip by chip, each step as soon as its moment has come.
        bench.power_up_when_called(first, [&] { return count() != "1"; });
        bench.when([&] { return count() == "1" && bench.calling(); }, [&] { bench.click("comStop_Download"); });
        bench.click("comDownload(1)");
        QTest::qWait(100);
        auto* ports = bench.find<QComboBox>("combCommPort");
        ports->setFocus();
        QTest::keyClick(ports, Qt::Key_Down);
        bench.power_up_when_called(second, [&] { return count() == "1"; });
        bench.when([&] { return count() == "2" && bench.calling(); }, [&] { bench.click("comStop_Download"); });
        bench.click("comDownload(1)");
        QTest::qWait(100);
        EXPECT_EQ(count(), "2");
        EXPECT_TRUE(first.quit().contains("violations: none"));
        EXPECT_TRUE(second.quit().contains("violations: none"));
        EXPECT_EQ(number_of(first), QByteArray::fromHex("0000004D"));
        EXPECT_EQ(number_of(second), QByteArray::fromHex("0000004E"));

        show_page(bench, "TabStrip2", bench.form.tabs("TabStrip2"), "Batch_quantity");
        bench.type_into_next_dialog(project);
        bench.click("comSaveBatchFile");
        ASSERT_TRUE(QFile::exists(project));
    }

    TargetProcess third({"Juniper-60Q", "--at-once"});
    QtSettings settings(store);
    WindowBench bench({third.link().toStdString()}, &settings);
    EXPECT_EQ(bench.find<QLineEdit>("txtDevice")->text(), "Juniper-60Q") << "the model survives a restart";
    EXPECT_EQ(bench.find<QLineEdit>("txtWrite_OK_Count")->text(), "2");
    EXPECT_EQ(bench.find<QLineEdit>("texAuto_Increase(2)")->text(), "00000000079") << "and so does the next number";

    show_page(bench, "TabStrip2", bench.form.tabs("TabStrip2"), "Batch_quantity");
    bench.type_into_next_dialog(project);
    QString told;
    bench.in_next_modal<QMessageBox>([&](QMessageBox* asked) {
        told = asked->text();
        QTest::keyClick(asked, Qt::Key_Return);
    });
    bench.click("comOpenBatchFile");
    QTest::qWait(100);
    EXPECT_TRUE(told.contains("Please check the next value")) << told.toStdString();
    EXPECT_FALSE(bench.find<QLineEdit>("txtDevice")->isEnabled());
    EXPECT_FALSE(bench.find<QPushButton>("comLoadFile")->isEnabled());
    EXPECT_FALSE(bench.find<QRadioButton>("Option0(0)")->isEnabled());
    EXPECT_FALSE(bench.find<QCheckBox>("cheAuto_Increase")->isEnabled());
    EXPECT_TRUE(bench.find<QPushButton>("comDownload(0)")->isEnabled());
    EXPECT_EQ(bench.find<QLineEdit>("texAuto_Increase(2)")->text(), "00000000079");

    auto* ports = bench.find<QComboBox>("combCommPort"); // the second port of yesterday may not be there
    ports->setFocus();
    QTest::keyClick(ports, Qt::Key_Home);
    bench.power_up_when_called(third);
    bench.click("comDownload(0)");
    QTest::qWait(100);
    EXPECT_EQ(bench.find<QLineEdit>("txtWrite_OK_Count")->text(), "3");
    EXPECT_TRUE(third.quit().contains("violations: none"));
    EXPECT_EQ(number_of(third), QByteArray::fromHex("0000004F"));
    EXPECT_EQ(bench.find<QLineEdit>("texAuto_Increase(2)")->text(), "00000000080");
    EXPECT_FALSE(bench.find<QLineEdit>("txtDevice")->isEnabled()) << "still locked";
}
