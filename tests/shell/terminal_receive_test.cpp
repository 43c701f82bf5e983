// The terminal's page in virtual time: the port opened and closed, what a board sends shown and counted.
#include "shell/terminal_bench.h"

using namespace vrk;

namespace {

std::string stream(std::uint64_t first, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += static_cast<char>(sim::StreamProgram::byte_at(first + i));
    return text;
}

} // namespace

TEST(TerminalReceive, OpensAndClosesAndItsCaptionIsTheState)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo);
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(bench.form.button("comOpenCOM", row).caption(), "Open COM");
    EXPECT_TRUE(bench.form.image("imgNotOpen").visible());
    bench.open();
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(bench.form.button("comOpenCOM", row).caption(), "Close COM");
    EXPECT_TRUE(bench.form.image("imgOpen").visible());
    EXPECT_FALSE(bench.form.image("imgNotOpen").visible());
    EXPECT_EQ(bench.shell.port.path, TerminalBench::program_path);
    EXPECT_EQ(bench.shell.port.line(), terminal_line);
    click(bench.shell, bench.form.button("comOpenCOM", 2));
    EXPECT_FALSE(bench.is_open());
    EXPECT_FALSE(bench.shell.port.is_open());
    EXPECT_EQ(bench.caption("comOpenCOM"), "Open COM");
    click(bench.shell, bench.form.image("imgNotOpen"));
    EXPECT_TRUE(bench.is_open());
    click(bench.shell, bench.form.image("imgOpen"));
    EXPECT_FALSE(bench.is_open());
}

TEST(TerminalReceive, HasItsCaptionsInChinese)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo, false);
    EXPECT_EQ(bench.form.button("comOpenCOM", 0).caption(), "打开串口");
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "接收计数:0");
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "发送计数:0");
    bench.open();
    EXPECT_EQ(bench.form.button("comOpenCOM", 0).caption(), "关闭串口");
}

TEST(TerminalReceive, SaysWhyAPortDoesNotOpen)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo, false);
    bench.ports.refuse_open(TerminalBench::program_path);
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    EXPECT_FALSE(bench.is_open());
    EXPECT_EQ(bench.boxes(), "[  串口调试助手     ]board\n串口已被其它程序打开或该串口不存在。\n");
    EXPECT_EQ(bench.caption("comOpenCOM"), "打开串口");
    choose_item(bench.shell, bench.form.list("com_Debug_COM"), 15);
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    EXPECT_EQ(bench.boxes(), "[  串口调试助手     ]没有这个串口。\n");
    bench.choose_port(TerminalBench::program_path);
    bench.open();
    EXPECT_EQ(bench.boxes(), "");
}

TEST(TerminalReceive, ShowsTextAndCountsIt)
{
    sim::StreamProgram board(terminal_line, 5000);
    board.stop_after(64);
    TerminalBench bench(board);
    bench.open();
    board.power(true);
    bench.run_for_ms(200);
    EXPECT_EQ(bench.shown(), stream(0, 64));
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "Receive counter:64");
}

TEST(TerminalReceive, ShowsPairsWhereTheyAreWanted)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo);
    echo.power(true);
    bench.show_as_hex(true);
    bench.send_as_hex(true);
    bench.type("texSend", "00 0A A5 FF");
    bench.press("comDebugSend");
    bench.run_for_ms(100);
    EXPECT_EQ(bench.shown(), "00 0A A5 FF ");
    bench.show_as_hex(false);
    bench.type("texSend", "00 41 0D 0A");
    bench.press("comDebugSend");
    bench.run_for_ms(100);
    EXPECT_EQ(bench.shown(), "00 0A A5 FF \u2400A\r\n"); // a zero is a byte like any other
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "Receive counter:8");
}

TEST(TerminalReceive, ShowsWhatHasComeEach35Milliseconds)
{
    sim::StreamProgram board(terminal_line, 0);
    TerminalBench bench(board);
    bench.open();
    const std::int64_t began_us = bench.loop.now_us();
    std::vector<std::int64_t> shown_at_ms;
    int length = 0;
    bench.loop.call_at(began_us, [&] { board.power(true); });
    for (int tenth_ms = 0; tenth_ms < 5000; ++tenth_ms) {
        bench.loop.run_for_us(100);
        if (const int now = bench.form.text_box("texReceive").length(); now != length) {
            length = now;
            shown_at_ms.push_back((bench.loop.now_us() - began_us) / 1000);
        }
    }
    ASSERT_GE(shown_at_ms.size(), 13U); // of half a second
    EXPECT_EQ(shown_at_ms.front(), 35);
    for (std::size_t i = 1; i < shown_at_ms.size(); ++i) {
        EXPECT_GE(shown_at_ms[i] - shown_at_ms[i - 1], 35);
        EXPECT_LE(shown_at_ms[i] - shown_at_ms[i - 1], 37);
    }
}

TEST(TerminalReceive, OnlyRefreshesTheCounterWhereNothingIsToBeShown)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo);
    echo.power(true);
    bench.send_as_hex(true);
    bench.type("texSend", "E4 BD");
    bench.press("comDebugSend");
    bench.run_for_ms(100);
    EXPECT_EQ(bench.shown(), "");
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "Receive counter:2");
    bench.type("texSend", "A0");
    bench.press("comDebugSend");
    bench.run_for_ms(100);
    EXPECT_EQ(bench.shown(), "你");
}

TEST(TerminalReceive, ReadsInTheEncodingThatIsChosen)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo);
    echo.power(true);
    EXPECT_EQ(bench.form.list("combDebugCodePage").text(), "UTF-8");
    choose_item(bench.shell, bench.form.list("combDebugCodePage"), 1);
    bench.type("texSend", "温度");
    bench.press("comDebugSend");
    EXPECT_EQ(bench.heard_in_ms(100), "\xCE\xC2\xB6\xC8");
    EXPECT_EQ(bench.shown(), "温度");
    choose_item(bench.shell, bench.form.list("combDebugCodePage"), 2);
    bench.type("texSend", "\u00B0");
    bench.press("comDebugSend");
    EXPECT_EQ(bench.heard_in_ms(100), "\xB0");
    EXPECT_EQ(bench.shown(), "温度\u00B0");
}

TEST(TerminalReceive, ClearsTheDisplayAndKeepsTheCounters)
{
    sim::EchoProgram echo(terminal_line);
    TerminalBench bench(echo);
    echo.power(true);
    bench.type("texSend", "abc");
    bench.press("comDebugSend");
    bench.run_for_ms(100);
    click(bench.shell, bench.form.button("comDebugClear", 0));
    EXPECT_EQ(bench.shown(), "");
    bench.press("comDebugSend");
    bench.run_for_ms(100);
    EXPECT_EQ(bench.shown(), "abc");
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "Receive counter:6");
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:6");
}

TEST(TerminalReceive, PutsNewSettingsInForceAtOnce)
{
    sim::EchoProgram echo({9600, Parity::even, 8, 2});
    TerminalBench bench(echo);
    echo.power(true);
    bench.open();
    bench.type("texSend", "abc");
    bench.press("comDebugSend");
    EXPECT_NE(bench.heard_in_ms(200), "abc");
    const auto choose = [&bench](const char* list, const char* text) {
        auto& box = bench.form.list(list);
        const auto found = std::find(box.items().begin(), box.items().end(), text);
        ASSERT_NE(found, box.items().end()) << text;
        choose_item(bench.shell, box, static_cast<int>(found - box.items().begin()));
        EXPECT_TRUE(bench.is_open());
    };
    choose("com_Debug_Baud", "9600");
    choose("com_Debug_ParityCheck", "Even");
    choose("com_Debug_StopBits", "2");
    EXPECT_EQ(bench.shell.port.line(), (LineSettings{9600, Parity::even, 8, 2}));
    click(bench.shell, bench.form.button("comDebugClear", 0));
    bench.heard_in_ms(100);
    bench.press("comDebugSend");
    EXPECT_EQ(bench.heard_in_ms(200), "abc");
    EXPECT_EQ(bench.shown(), "abc");
}

TEST(TerminalReceive, ListensAtTheHighestBaud)
{
    constexpr LineSettings fast{256000, Parity::none, 8, 1};
    sim::StreamProgram board(fast, 0);
    board.stop_after(100'000);
    TerminalBench bench(board);
    choose_item(bench.shell, bench.form.list("com_Debug_Baud"), 0);
    bench.open();
    EXPECT_EQ(bench.shell.port.line(), fast);
    board.power(true);
    bench.run_for_ms(5000);
    EXPECT_EQ(bench.shown(), stream(0, 100'000));
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "Receive counter:100000");
}

TEST(TerminalReceive, EndsAtTheLimitOfTheDisplayAndGoesOnWhenItIsCleared)
{
    constexpr LineSettings fast{256000, Parity::none, 8, 1};
    sim::StreamProgram board(fast, 0);
    TerminalBench bench(board);
    choose_item(bench.shell, bench.form.list("com_Debug_Baud"), 0);
    bench.type("texSend", "");
    bench.open();
    bench.press("comAutoSend");
    board.power(true);
    bench.run_for_ms(10'000);
    EXPECT_FALSE(bench.is_open());
    EXPECT_FALSE(bench.shell.port.is_open());
    EXPECT_EQ(bench.caption("comOpenCOM"), "Open COM");
    EXPECT_EQ(bench.caption("comAutoSend"), "Repeat Send");
    EXPECT_TRUE(bench.boxes().ends_with("]The display text is too long, please click the Clear Receive button.\n"));
    EXPECT_EQ(bench.form.text_box("texReceive").length(), Terminal::display_limit);
    EXPECT_EQ(bench.shown(), stream(0, Terminal::display_limit));

    bench.open(); // the text is still there, and the next byte is one too many again
    bench.run_for_ms(100);
    EXPECT_FALSE(bench.is_open());
    EXPECT_EQ(bench.form.text_box("texReceive").length(), Terminal::display_limit);
    bench.boxes();

    board.power(false);
    bench.run_for_ms(10);
    click(bench.shell, bench.form.button("comDebugClear", 0));
    bench.open();
    board.stop_after(32);
    board.power(true);
    bench.run_for_ms(200);
    EXPECT_TRUE(bench.is_open());
    EXPECT_EQ(bench.shown(), stream(0, 32));
    EXPECT_EQ(bench.boxes(), "");
}

TEST(TerminalReceive, HoldsExactlyAsManyCharactersAsTheLimit)
{
    sim::StreamProgram board(terminal_line, 0);
    board.stop_after(Terminal::display_limit);
    TerminalBench bench(board, false);
    bench.open();
    board.power(true);
    bench.run_for_ms(30'000);
    EXPECT_EQ(bench.form.text_box("texReceive").length(), Terminal::display_limit);
    EXPECT_TRUE(bench.is_open());
    EXPECT_EQ(bench.boxes(), "");
    bench.board.noise_to_tool(std::vector<std::uint8_t>{'!'});
    bench.run_for_ms(100);
    EXPECT_FALSE(bench.is_open());
    EXPECT_EQ(bench.form.text_box("texReceive").length(), Terminal::display_limit);
    const std::string boxes = bench.boxes();
    EXPECT_NE(boxes.find("]   显示文本太大，请点击串口调试助手‘清接收区’按钮。\n                     串口已关闭。\n"),
        std::string::npos)
        << boxes;
}

TEST(TerminalReceive, ComparesADumpWithTheCode)
{
    const auto code = Bench::pattern(3000);
    sim::DumpProgram board(terminal_line, code);
    TerminalBench bench(board, false);
    bench.press("comComp");
    EXPECT_TRUE(bench.boxes().ends_with("]    Please open code file./请打开文件。    \n"));
    bench.open_code(code);
    bench.boxes();
    bench.press("comComp");
    EXPECT_NE(bench.boxes().find("    串口缓冲区里没有数据。    "), std::string::npos);
    board.power(true);
    bench.type("texSend", "d");
    bench.press("comDebugSend");
    bench.run_for_ms(2000);
    bench.press("comComp");
    EXPECT_TRUE(bench.report_says("比较完毕，比较范围: 0000H -- 0BB7H"));
    EXPECT_TRUE(bench.report_says("MCU AP 区的内容与程序文件缓冲区一致。"));

    auto other = code;
    for (std::size_t i = 0; i < 150; ++i)
        other[i * 2] ^= 0xFF;
    bench.open_code(other);
    bench.dialogs.replies = {Reply::yes};
    bench.boxes();
    bench.press("comComp");
    EXPECT_EQ(bench.times_said("地址: "), 150);
    EXPECT_TRUE(bench.report_says("MCU AP 区的内容与程序文件缓冲区不相等。"));
    bench.press("comComp"); // nobody answers: that is a No
    EXPECT_EQ(bench.times_said("地址: "), 101);
}
