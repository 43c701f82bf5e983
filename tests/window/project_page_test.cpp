#include "window_bench.h"

#include "shell/open_file.h"

using namespace vrk;

TEST(ProjectPage, SavesAJobAndOpensItLocked)
{
    WindowBench bench("/dev/null");
    QTemporaryDir folder;
    const QString project = folder.filePath("lamp.VRK");
    bench.shell.loader.application_dir = folder.path().toStdString();
    bench.choose_model("Juniper series", "Juniper-60Q");
    ASSERT_TRUE(
        load_file(bench.shell, std::string(PROJECT_DIR) + "/examples/firmware/blink.hex", bench.shell.code_buffer));
    const auto code = bench.shell.code_buffer.data;

    auto* tabs = bench.find<QTabBar>("TabStrip2");
    tabs->setCurrentIndex(tabs->count() - 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.find<QWidget>("fra_Batch_quantity")->isVisible(); }));
    bench.type_into_next_dialog(project);
    bench.click("comSaveBatchFile");
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.find<QLineEdit>("texBatchFileName")->text() == project; }));
    EXPECT_TRUE(QFile::exists(project));

    bench.choose_model("Hazel series", "Hazel-1");
    bench.type_into_next_dialog(project);
    bench.click("comOpenBatchFile");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.find<QWidget>("txtDevice")->isEnabled(); }));
    EXPECT_EQ(bench.find<QLineEdit>("txtDevice")->text(), "Juniper-60Q");
    EXPECT_EQ(bench.find<QLabel>("Label2(6)")->text(), "MCU Type: Juniper-60Q");
    EXPECT_FALSE(bench.find<QPushButton>("comLoadFile")->isEnabled());
    EXPECT_TRUE(bench.find<QPushButton>("comDownload(0)")->isEnabled());
    EXPECT_EQ(bench.shell.code_buffer.data, code);

    bench.click("FrameX(0)"); // beside the box: no way round the lock
    bench.click("comUnlockOptions");
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.find<QWidget>("txtDevice")->isEnabled(); }));
}
