// The window is closed while it works: what runs is stopped first, the port is free for the next program, the settings
// are whole on the disk, and the program ends as it does on any other day.
#include "window_bench.h"

#include "host/qt_settings.h"
#include "shell/events.h"
#include "shell/open_file.h"

using namespace vrk;

namespace {

constexpr int too_long_ms = 30'000;

// The settings lie in a file, as those of a user do.
struct ClosingBench {
    ClosingBench(const TargetProcess& target, const char* model, bool english = true)
        : settings(settings_file())
        , bench({target.link().toStdString()}, &settings, english)
    {
        EXPECT_EQ(choose_node(bench.shell, bench.form.tree("TreeViewDevice"), model), Touch::taken);
        const QString path = folder.filePath("code.bin");
        QFile code(path);
        EXPECT_TRUE(code.open(QIODevice::WriteOnly));
        code.write(QByteArray(0x400, 'e'));
        code.close();
        EXPECT_TRUE(load_file(bench.shell, path.toStdString(), bench.shell.code_buffer));
        choose_item(bench.shell, bench.form.list("combCommPort"), 0);
    }
    std::string settings_file() const { return folder.filePath("settings.ini").toStdString(); }
    bool says(const char* text) const { return bench.form.text_box("textMsg").text().find(text) != std::string::npos; }

    // The program from the press of a button to its end: the window is closed once the moment has come, and the
    // question whether that is meant is answered with yes where it is asked. Returns the exit status.
    int run_until_closed(const char* button, std::function<bool()> moment)
    {
        bench.when(std::move(moment), [this] {
            bench.window->close();
            asked = bench.window->findChild<QMessageBox*>("closeQuestion") != nullptr;
            if (asked)
                bench.answer_close_question(QMessageBox::Yes);
        });
        QTimer::singleShot(too_long_ms, bench.window.get(), [] { QApplication::exit(-1); });
        QTimer::singleShot(
            0, bench.window.get(), [this, button] { click(bench.shell, *bench.shell.controls.find_full(button)); });
        return QApplication::exec();
    }

    void expect_all_is_left_in_order(const char* model) const
    {
        EXPECT_TRUE(bench.shell.unloaded);
        EXPECT_FALSE(bench.shell.running);
        EXPECT_FALSE(bench.shell.port.is_open());
        QtSettings next_run(settings_file());
        EXPECT_EQ(next_run.get("Settings", "DeviceProducts", ""), model);
        EXPECT_EQ(next_run.get("Settings", "COM_port", ""), "0");
        EXPECT_EQ(next_run.get("Settings", "texSendCycle", ""), bench.form.text_box("texSendCycle").text());
        EXPECT_NE(next_run.get("Settings", "MainWidth", ""), "");
    }

    QTemporaryDir folder;
    QtSettings settings;
    WindowBench bench;
    bool asked = false;
};

} // namespace

TEST(ClosedWhileItWorks, ADownloadIsStoppedAndTheProgramEnds)
{
    TargetProcess target({"Juniper-60Q"});
    ClosingBench line(target, "Juniper-60Q");
    line.bench.power_up_when_called(target);
    const int status =
        line.run_until_closed("comDownload(0)", [&] { return line.bench.form.progress("ProgressBar1").value() > 0; });
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(line.asked);
    EXPECT_FALSE(line.bench.shell.succeeded);
    EXPECT_EQ(line.bench.form.text_box("txtWrite_OK_Count").text(), "0");
    line.expect_all_is_left_in_order("Juniper-60Q");
}

TEST(ClosedWhileItWorks, ABoardJobIsStoppedAndTheProgramEnds)
{
    TargetProcess board({"--board", "Juniper-60Q"});
    ClosingBench line(board, "Juniper-60Q");
    line.bench.when([&] { return line.bench.calling(); }, [&board] { board.power_on(); });
    const int status =
        line.run_until_closed("comTJXZ", [&] { return line.bench.form.progress("ProgressBar1").value() > 0; });
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(line.asked);
    EXPECT_FALSE(line.says("Download OK."));
    line.expect_all_is_left_in_order("Juniper-60Q");
}

TEST(ClosedWhileItWorks, ADemoThatGoesFromChipToChipIsStoppedAndTheProgramEnds)
{
    TargetProcess target({"--demo"});
    ClosingBench line(target, "Birch-16", false);
    line.bench.form.list("cob_DEMO_DownLoad_Baud").set_text("115200");
    line.bench.form.list("cob_DEMO_DownLoad_Parity").set_text("None");
    target.power_on_and_wait();
    const int status = line.run_until_closed("com_Demo_Re_DownLoad", [&] { return line.says("几秒钟后将继续下载"); });
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(line.asked);
    line.expect_all_is_left_in_order("Birch-16");
}

// Nothing is lost by it, so nothing is asked.
TEST(ClosedWhileItWorks, AStringThatIsSentAgainAndAgainEndsWithTheProgram)
{
    TargetProcess target({"Juniper-60Q"});
    ClosingBench line(target, "Juniper-60Q");
    type_text(line.bench.shell, line.bench.form.text_box("texSendCycle"), "10");
    type_text(line.bench.shell, line.bench.form.text_box("texSend"), "again");
    const int status = line.run_until_closed("comAutoSend", [&] {
        return line.bench.shell.port.is_open() && line.bench.form.label("labSendCount").caption() != "Send counter:0";
    });
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(line.asked);
    line.expect_all_is_left_in_order("Juniper-60Q");
}
