// One port for the terminal and for downloads: a download takes it from the terminal, and may give it back.
#include "shell/terminal_bench.h"

using namespace vrk;

namespace {

// The terminal on the chip's own line.
struct OneLine : Bench {
    OneLine()
        : Bench("Juniper-60Q")
    {
        open_code(pattern(2000));
        choose_item(shell, form.list("com_Debug_COM"), 0);
    }
    bool terminal_is_open() const { return shell.desk.terminal.has_port; }
    std::string shown_of(std::string_view sent)
    {
        const std::size_t before = form.text_box("texReceive").text().size();
        wire.noise_to_tool(std::vector<std::uint8_t>(sent.begin(), sent.end()));
        run_for_ms(100);
        return form.text_box("texReceive").text().substr(before);
    }
};

} // namespace

TEST(TerminalAndDownload, DownloadClosesTheTerminal)
{
    OneLine bench;
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    type_text(bench.shell, bench.form.text_box("texSendCycle"), "20");
    click(bench.shell, bench.form.button("comAutoSend"));
    EXPECT_EQ(bench.shown_of("before"), "before");
    const std::string received = bench.form.label("labReceiveCount").caption();
    bench.press_download();
    bench.power_up_after_ms(500);
    bench.after_ms(300, [&bench] {
        EXPECT_FALSE(bench.terminal_is_open());
        EXPECT_EQ(bench.form.button("comOpenCOM", 0).caption(), "Open COM");
        EXPECT_EQ(bench.form.button("comAutoSend").caption(), "Repeat Send");
        click(bench.shell, bench.form.button("comOpenCOM", 0)); // refused: the port is the download's
        EXPECT_FALSE(bench.terminal_is_open());
    });
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
    EXPECT_FALSE(bench.terminal_is_open());
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), received); // the boot loader's bytes are none of its
    EXPECT_EQ(bench.form.text_box("texReceive").text(), "before");
}

TEST(TerminalAndDownload, TerminalOpensAgainBehindAGoodDownloadWhereItIsWanted)
{
    OneLine bench;
    set_checked(bench.shell, bench.form.check_box("che_AutoOpenPort"), true);
    bench.download();
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_TRUE(bench.terminal_is_open());
    EXPECT_EQ(bench.form.button("comOpenCOM", 0).caption(), "Close COM");
    EXPECT_EQ(bench.shell.port.line(), terminal_line); // with settings of its own
    EXPECT_EQ(bench.shown_of("hello from the new code"), "hello from the new code");
    EXPECT_TRUE(bench.buttons_are_free());
    bench.chip.power_off();
    bench.download(); // takes the port again
    EXPECT_EQ(bench.count(), 2);
    EXPECT_TRUE(bench.terminal_is_open());
}

TEST(TerminalAndDownload, TerminalStaysClosedBehindOneThatFailed)
{
    OneLine bench;
    set_checked(bench.shell, bench.form.check_box("che_AutoOpenPort"), true);
    bench.press_download();
    bench.press_stop_after_ms(1000);
    bench.run_until_idle();
    EXPECT_FALSE(bench.terminal_is_open());
}

// What is compared is what came since the port was opened: an older dump is another chip's.
TEST(TerminalAndDownload, DumpOfTheChipBeforeIsForgotten)
{
    OneLine bench;
    const auto code = bench.code(0, 1999);
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    bench.shown_of(std::string(code.begin(), code.end()));
    bench.download();
    set_checked(bench.shell, bench.form.check_box("che_AutoOpenPort"), true);
    bench.chip.power_off();
    bench.download();
    EXPECT_TRUE(bench.terminal_is_open());
    EXPECT_TRUE(bench.shell.desk.terminal.to_compare.empty());
    click(bench.shell, bench.form.button("comComp"));
    EXPECT_FALSE(bench.report_says("MCU AP 区的内容与程序文件缓冲区一致。"));
}
