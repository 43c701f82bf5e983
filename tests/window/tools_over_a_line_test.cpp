// The tools in the window, over a pseudo terminal and in real time: the off-line board and the chips that it programs
// then, the command to user code, the downloader of user code's own.
#include "window_bench.h"

#include "shell/events.h"

#include <QRandomGenerator>

using namespace vrk;

namespace {

QByteArray pattern(int size, quint32 seed = 1)
{
    QRandomGenerator source(seed);
    QByteArray bytes(size, 0);
    for (char& byte : bytes)
        byte = static_cast<char>(source.bounded(256));
    return bytes;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

struct ToolBench : WindowBench {
    ToolBench(const TargetProcess& target, const char* model, bool english = true)
        : WindowBench(target.link(), english)
    {
        EXPECT_EQ(choose_node(shell, form.tree("TreeViewDevice"), model), Touch::taken);
    }
    QString code_path() const { return folder.filePath("code.bin"); }
    void write_code(const QByteArray& code) const
    {
        QFile file(code_path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(code) == code.size());
    }
    void open_code(const QByteArray& code)
    {
        write_code(code);
        type_into_next_dialog(code_path());
        click("comLoadFile");
        EXPECT_TRUE(shell.file_loaded);
    }
    void show_page(const char* key)
    {
        auto* strip = find<QTabBar>("TabStrip1");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(form.tabs("TabStrip1").find(key)).center());
        QTest::qWait(60);
    }
    void type(const char* name, const QString& text)
    {
        auto* field = find<QLineEdit>(name);
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    void pick(const char* name, const QString& item)
    {
        auto* list = find<QComboBox>(name);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < list->count() && list->currentText() != item; ++i)
            QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(list->currentText(), item);
    }
    QString report() { return find<QPlainTextEdit>("textMsg")->toPlainText(); }
    bool says(const char* text) const { return form.text_box("textMsg").text().find(text) != std::string::npos; }
    // A button that starts a sequence; returns when it has ended, stopped if it takes too long.
    void press(const char* name)
    {
        QTimer::singleShot(40'000, window.get(), [this] { click("comStop_Download"); });
        click(name);
        QTest::qWait(100);
        EXPECT_FALSE(shell.running);
        EXPECT_TRUE(find<QPushButton>("comDownload(0)")->isEnabled());
    }

    QTemporaryDir folder;
};

struct Form {
    const char* model;
    bool english; // the older families are in the Chinese tree alone
    int code_size;
    int quantity;
    std::vector<std::size_t> option_rows; // that a board keeps of such a model
};

class BoardOverALine : public ::testing::TestWithParam<Form> { };

} // namespace

TEST_P(BoardOverALine, HoldsTheImageAndProgramsAChipWithIt)
{
    const Form& form = GetParam();
    QTemporaryDir folder;
    const QString held = folder.filePath("held");
    TargetProcess board({"--board", form.model, "--image", held});
    ToolBench bench(board, form.model, form.english);
    const QByteArray code = pattern(form.code_size);
    bench.open_code(code);
    bench.show_page("TJXZ");
    bench.type("txt_download_max", QString::number(form.quantity));
    bench.when([&] { return bench.calling(); }, [&board] { board.power_on(); });
    bench.press("comTJXZ");
    EXPECT_TRUE(bench.says("Download OK.")) << bench.report().toStdString();

    board.program_next_chip();
    if (form.quantity == 1)
        board.program_next_chip();
    const QString said = board.quit();
    EXPECT_TRUE(said.contains("violations: none")) << said.toStdString();
    EXPECT_TRUE(said.contains("chip: programmed"));
    EXPECT_EQ(said.contains("chip: used up"), form.quantity == 1);
    EXPECT_TRUE(said.contains(QString("chips left: %1\n").arg(form.quantity - 1))) << said.toStdString();
    EXPECT_TRUE(board.flash().startsWith(code));

    const QByteArray image(
        reinterpret_cast<const char*>(bench.shell.board_image.data()), static_cast<qsizetype>(0x10000));
    EXPECT_EQ(contents(held).mid(0x4000, 0xB800), image.mid(0x4000, 0xB800));
    const QString options = said.section("options: ", 1).trimmed();
    for (const std::size_t row : form.option_rows)
        EXPECT_EQ(options.section(' ', static_cast<int>(row), static_cast<int>(row)).toInt(nullptr, 16),
            bench.shell.options.wanted()[row])
            << "option row " << row;
}

INSTANTIATE_TEST_SUITE_P(OfEachHeaderForm, BoardOverALine,
    ::testing::Values(Form{"Aspen-8", false, 0x2000, 10, {}}, Form{"Birch-16", false, 0x3F00, 1, {1}},
        Form{"Fir-16", true, 0x4000, 2048, {2, 3, 8, 10, 11, 0}},
        Form{"Juniper-32", true, 0x8000, 1000000, {0, 1, 2, 3, 8, 9}}),
    [](const auto& test) { return QString(test.param.model).remove('-').toStdString(); });

TEST(BoardOverALine, ItsSerialMemoryFillsTheCodeBuffer)
{
    QTemporaryDir folder;
    const QByteArray serial = pattern(0x10000, 7);
    QFile file(folder.filePath("serial"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(serial) == serial.size());
    file.close();
    TargetProcess board({"--board", "Juniper-32", "--serial", file.fileName()});
    ToolBench bench(board, "Juniper-32");
    bench.open_code(pattern(0x1000));
    bench.show_page("TJXZ");
    bench.when([&] { return bench.calling(); }, [&board] { board.power_on(); });
    bench.press("Read24C512");
    EXPECT_TRUE(bench.says("读 24C512 OK")) << bench.report().toStdString();
    const auto& data = bench.shell.code_buffer.data;
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(data.data()), serial.size()), serial);
    EXPECT_TRUE(board.quit().contains("violations: none"));
}

TEST(CommandOverALine, IsFollowedByADownloadAndSoIsAChangeOfTheFile)
{
    TargetProcess target({"Juniper-32", "--at-once", "--command", "12 34 AB", "--baud", "19200"});
    ToolBench bench(target, "Juniper-32");
    const QByteArray code = pattern(0x1800);
    bench.open_code(code);
    bench.show_page("user_code");
    bench.type("txtUserCode", "12 34 AB");
    bench.pick("cobUserCodeBaud", "19200");
    bench.pick("cobUserCodeParity", "None");
    target.power_on_and_wait();
    bench.press("comSendUserCode");
    EXPECT_TRUE(bench.says("Program OK")) << bench.report().toStdString();
    EXPECT_EQ(bench.find<QLineEdit>("txtWrite_OK_Count")->text(), "1");

    target.power_cycle(); // the user code runs again
    auto* watch = bench.find<QCheckBox>("cekReloadFileWhileFileChange1");
    QTest::mouseClick(watch, Qt::LeftButton, {}, QPoint(10, watch->height() / 2));
    QTest::qWait(1500); // the watch has seen the file as it is
    const QByteArray changed = pattern(0x1900, 9);
    bench.write_code(changed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.find<QLineEdit>("txtWrite_OK_Count")->text() == "2"; }, 30'000))
        << bench.report().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.shell.running; }, 5000));

    const QString said = target.quit();
    EXPECT_TRUE(said.contains("commands heard: 2")) << said.toStdString();
    EXPECT_TRUE(said.contains("violations: none")) << said.toStdString();
    EXPECT_TRUE(target.flash().startsWith(changed));
}

TEST(DemoOverALine, ProgramsAChipBehindACommand)
{
    TargetProcess target({"--demo", "--command", "12 34"});
    ToolBench bench(target, "Birch-16", false);
    const QByteArray code = pattern(0x1000);
    bench.open_code(code);
    bench.show_page("ISP_DEMO");
    auto* command = bench.find<QCheckBox>("che_Demo_DownLoad");
    QTest::mouseClick(command, Qt::LeftButton, {}, QPoint(10, command->height() / 2));
    bench.type("txt_DEMO_UserCode", "12 34");
    for (const char* list : {"cob_DEMO_UserCode_Baud", "cob_DEMO_DownLoad_Baud"})
        bench.pick(list, "115200");
    for (const char* list : {"cob_DEMO_UserCode_Parity", "cob_DEMO_DownLoad_Parity"})
        bench.pick(list, "None");
    target.power_on_and_wait();
    bench.press("com_Demo_DownLoad");
    EXPECT_TRUE(bench.says("Program OK / 下载 OK")) << bench.report().toStdString();
    const QString said = target.quit();
    EXPECT_TRUE(said.contains("commands heard: 1") && said.contains("runs the code: yes")) << said.toStdString();
    EXPECT_TRUE(target.flash().startsWith(code));
}

TEST(DemoOverALine, ProgramsOneChipAfterTheOtherUntilItIsStopped)
{
    TargetProcess target({"--demo"});
    ToolBench bench(target, "Birch-16", false);
    bench.open_code(pattern(0x400));
    bench.show_page("ISP_DEMO");
    bench.pick("cob_DEMO_DownLoad_Baud", "115200");
    bench.pick("cob_DEMO_DownLoad_Parity", "None");
    bench.pick("comDalay_ReDownLoad", "1");
    target.power_on();
    int chips = 0;
    bool counting_down = false;
    QTimer bench_hand; // the next chip comes into the socket while the tool counts down
    QObject::connect(&bench_hand, &QTimer::timeout, &bench_hand, [&] {
        const bool was_counting_down = std::exchange(counting_down, bench.says("几秒钟后将继续下载"));
        if (was_counting_down || !counting_down)
            return;
        if (++chips == 2)
            bench.click("com_Demo_Stop");
        else
            target.power_cycle();
    });
    bench_hand.start(20);
    bench.press("com_Demo_Re_DownLoad");
    EXPECT_EQ(chips, 2);
    EXPECT_TRUE(bench.says("操作被停止.")) << bench.report().toStdString();
    EXPECT_FALSE(bench.find<QPushButton>("com_Demo_Stop")->isEnabled());
}

// The other stages fail on virtual time: their tries take a quarter of a minute.
TEST(DemoOverALine, AStageThatFailsIsToldAndThePanelIsFree)
{
    TargetProcess target({"--demo", "--deaf-to", "B5"});
    ToolBench bench(target, "Birch-16", false);
    bench.open_code(pattern(0x400));
    bench.show_page("ISP_DEMO");
    bench.pick("cob_DEMO_DownLoad_Baud", "115200");
    bench.pick("cob_DEMO_DownLoad_Parity", "None");
    target.power_on();
    bench.press("com_Demo_DownLoad");
    EXPECT_TRUE(bench.says("读 Option 失败 (End: ")) << bench.report().toStdString();
    EXPECT_FALSE(bench.says("Program OK"));
    EXPECT_TRUE(target.quit().contains("runs the code: no"));
}
