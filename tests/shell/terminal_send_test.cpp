// What the terminal sends: strings by hand, in a cycle and in turn, and keys as they are typed.
#include "shell/terminal_bench.h"

#include "shell/start_up.h"

using namespace vrk;

namespace {

struct TerminalSend : testing::Test {
    TerminalSend() { echo.power(true); }

    sim::EchoProgram echo{terminal_line};
    TerminalBench bench{echo};
};

struct TerminalSendInChinese : testing::Test {
    TerminalSendInChinese() { echo.power(true); }

    sim::EchoProgram echo{terminal_line};
    TerminalBench bench{echo, false};
};

} // namespace

TEST_F(TerminalSend, OpensThePortByItself)
{
    bench.type("texSend", " two words ");
    bench.press("comDebugSend");
    EXPECT_TRUE(bench.is_open());
    EXPECT_EQ(bench.heard_in_ms(100), " two words ");
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:11");
    EXPECT_EQ(bench.shown(), " two words ");
}

TEST_F(TerminalSend, SendsAndCountsNothingWhereThePortDoesNotOpen)
{
    bench.ports.refuse_open(TerminalBench::program_path);
    bench.type("texSend", "abc");
    bench.press("comDebugSend");
    EXPECT_NE(bench.boxes(), "");
    EXPECT_EQ(bench.heard_in_ms(100), "");
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:0");
}

TEST_F(TerminalSend, SendsHexadecimalStrings)
{
    bench.send_as_hex(true);
    const std::pair<const char*, std::string> strings[] = {{"12 34 AB CD FF", "\x12\x34\xAB\xCD\xFF"},
        {"1 2", "\x01\x02"}, {"FFF", "\xFF\x0F"}, {" abCD ", "\xAB\xCD"}, {"", ""}, {"   ", ""}};
    for (const auto& [typed, sent] : strings) {
        bench.type("texSend", typed);
        bench.press("comDebugSend");
        EXPECT_EQ(bench.heard_in_ms(100), sent) << typed;
    }
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:11");
    EXPECT_EQ(bench.boxes(), "");
}

TEST_F(TerminalSend, SendsUpTo4097HexadecimalPairs)
{
    std::string pairs;
    for (int i = 0; i < 4097; ++i)
        pairs += "5A ";
    bench.send_as_hex(true);
    bench.type("texSend", pairs);
    bench.press("comDebugSend");
    EXPECT_EQ(bench.heard_in_ms(1000), std::string(4097, 'Z'));
    bench.type("texSend", pairs + "5A");
    bench.press("comDebugSend");
    EXPECT_EQ(bench.heard_in_ms(1000), "");
    EXPECT_NE(bench.boxes().find("The HEX data is too long: 4097 bytes at most. Nothing was sent."), std::string::npos);
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:4097");
}

TEST_F(TerminalSend, RefusesWhatIsNoDigit)
{
    bench.send_as_hex(true);
    bench.type("texSend", "12 3g");
    bench.press("comDebugSend");
    EXPECT_NE(bench.boxes().find("Please input HEX format data: 0-9, A-F, a-f, a space between each two charaters."),
        std::string::npos);
    EXPECT_EQ(bench.heard_in_ms(100), "");
    EXPECT_TRUE(bench.is_open()); // as it was opened
}

TEST_F(TerminalSendInChinese, ShowsTheWrongCharacterAsTypedWithItsPlace)
{
    bench.send_as_hex(true);
    bench.type("texSend", "12 3g");
    bench.press("comDebugSend");
    EXPECT_EQ(bench.boxes(),
        "[串口调试助手:十六进制发送]           第 5 个字符有误: g  (计数包括空格数)\n\n"
        "请输入 HEX 格式数据: 0-9, A-F, a-f, 每 2 个字符之间隔 1 个空格，\n\n"
        "                如果自动发送已打开串口将会被关闭。\n");
}

TEST_F(TerminalSendInChinese, EndsBothCyclesAtAWrongCharacter)
{
    bench.type("texSend", "12 xy");
    bench.type("texSendCycle", "100");
    bench.type("texSpreadSendCycle", "30");
    bench.type_row(0, "row");
    bench.press("comAutoSend");
    bench.press("comSpreadAutoSend");
    bench.run_for_ms(250);
    EXPECT_EQ(bench.caption("comAutoSend"), "停止自动发送");
    bench.send_as_hex(true);
    bench.run_for_ms(100);
    EXPECT_EQ(bench.caption("comAutoSend"), "自动发送");
    EXPECT_EQ(bench.caption("comSpreadAutoSend"), "自动循环发送");
    EXPECT_TRUE(bench.is_open());
    bench.heard_in_ms(50);
    EXPECT_EQ(bench.heard_in_ms(5000), "");
}

TEST_F(TerminalSend, SendsInACycle)
{
    bench.type("texSend", "x");
    EXPECT_EQ(bench.form.text_box("texSendCycle").text(), "1000");
    bench.press("comAutoSend");
    EXPECT_EQ(bench.caption("comAutoSend"), "Stop Repeat");
    EXPECT_EQ(bench.heard_in_ms(999), "");
    EXPECT_EQ(bench.heard_in_ms(9002), std::string(10, 'x'));
    bench.press("comAutoSend");
    EXPECT_EQ(bench.caption("comAutoSend"), "Repeat Send");
    EXPECT_EQ(bench.heard_in_ms(5000), "");
}

TEST_F(TerminalSend, IsLeftWhileItSendsInACycle)
{
    bench.type("texSend", "abc");
    bench.press("comAutoSend");
    EXPECT_NE(bench.heard_in_ms(3000), "");
    ASSERT_TRUE(bench.is_open());
    close_request(bench.shell);
    while (!bench.shell.unloaded)
        bench.loop.yield();
    EXPECT_FALSE(bench.is_open());
    EXPECT_FALSE(bench.shell.port.is_open());
    EXPECT_EQ(bench.caption("comAutoSend"), "Repeat Send");
    bench.heard_in_ms(100);
    EXPECT_EQ(bench.heard_in_ms(3000), "") << "nothing goes out any more";
}

TEST_F(TerminalSend, SendsEachMillisecondButNotFaster)
{
    bench.type("texSend", "x");
    for (const char* refused : {"0", "-5", "", "abc", "0.4"}) {
        bench.type("texSendCycle", refused);
        bench.press("comAutoSend");
        EXPECT_EQ(bench.caption("comAutoSend"), "Repeat Send") << refused;
        EXPECT_NE(bench.boxes().find("The interval is too small."), std::string::npos) << refused;
    }
    bench.type("texSendCycle", "1");
    bench.press("comAutoSend");
    EXPECT_EQ(bench.boxes(), "");
    EXPECT_NEAR(static_cast<double>(bench.heard_in_ms(1000).size()), 1000, 1);
}

TEST_F(TerminalSend, TakesANewCycleWhileItSends)
{
    bench.type("texSend", "x");
    bench.type("texSendCycle", "1000");
    bench.press("comAutoSend");
    bench.run_for_ms(1500);
    bench.heard_in_ms(0);
    bench.type("texSendCycle", "10");
    EXPECT_NEAR(static_cast<double>(bench.heard_in_ms(1000).size()), 100, 1);
}

TEST_F(TerminalSend, EndsItsCycleWhenThePortIsClosed)
{
    bench.type("texSend", "x");
    bench.type("texSendCycle", "10");
    bench.press("comAutoSend");
    bench.run_for_ms(100);
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    EXPECT_EQ(bench.caption("comAutoSend"), "Repeat Send");
    bench.heard_in_ms(10);
    EXPECT_EQ(bench.heard_in_ms(1000), "");
    EXPECT_FALSE(bench.is_open());
}

TEST_F(TerminalSend, EndsItsCycleWhereThePortDoesNotOpen)
{
    bench.ports.refuse_open(TerminalBench::program_path);
    bench.type("texSend", "x");
    bench.type("texSendCycle", "10");
    bench.press("comAutoSend");
    bench.run_for_ms(1000);
    EXPECT_EQ(bench.caption("comAutoSend"), "Repeat Send");
    const std::string boxes = bench.boxes();
    EXPECT_EQ(std::count(boxes.begin(), boxes.end(), '['), 1) << boxes; // not one a cycle
}

TEST_F(TerminalSend, SendsARowByItsButton)
{
    bench.type_row(0, "first");
    bench.type_row(24, "4C 41 53 54", true);
    EXPECT_EQ(bench.form.button("comSpreadSendCom", 24).caption(), "25");
    click(bench.shell, bench.form.button("comSpreadSendCom", 24));
    EXPECT_EQ(bench.heard_in_ms(100), "LAST");
    click(bench.shell, bench.form.button("comSpreadSendCom", 0));
    EXPECT_EQ(bench.heard_in_ms(100), "first");
}

TEST_F(TerminalSend, SendsTheRowsInTurnAndPassesOverEmptyOnes)
{
    bench.type_row(1, "b");
    bench.type_row(4, "45", true);
    bench.type_row(5, "   ");
    bench.type_row(24, "y");
    bench.type("texSpreadSendCycle", "10");
    bench.press("comSpreadAutoSend");
    EXPECT_EQ(bench.caption("comSpreadAutoSend"), "Stop Round");
    EXPECT_EQ(bench.heard_in_ms(75).substr(0, 7), "bEybEyb");
    bench.press("comSpreadAutoSend");
    EXPECT_EQ(bench.caption("comSpreadAutoSend"), "Round Send");
}

TEST_F(TerminalSend, GoesOnInTurnBehindTheRowThatWasPressed)
{
    bench.type_row(0, "a");
    bench.type_row(3, "d");
    bench.type_row(7, "h");
    click(bench.shell, bench.form.button("comSpreadSendCom", 3));
    EXPECT_EQ(bench.heard_in_ms(10), "d");
    bench.type("texSpreadSendCycle", "10");
    bench.press("comSpreadAutoSend");
    EXPECT_EQ(bench.heard_in_ms(35), "had");
}

TEST_F(TerminalSend, SendsNothingInTurnWhereAllRowsAreEmpty)
{
    bench.type("texSpreadSendCycle", "10");
    bench.press("comSpreadAutoSend");
    EXPECT_EQ(bench.heard_in_ms(500), "");
    EXPECT_EQ(bench.boxes(), "");
    bench.type_row(12, "m");
    EXPECT_EQ(bench.heard_in_ms(25).substr(0, 2), "mm");
}

TEST_F(TerminalSend, RefusesAPauseBelowAMillisecond)
{
    bench.type("texSpreadSendCycle", "0");
    bench.press("comSpreadAutoSend");
    EXPECT_NE(bench.boxes().find("The interval too short"), std::string::npos);
    EXPECT_EQ(bench.caption("comSpreadAutoSend"), "Round Send");
}

TEST_F(TerminalSend, SendsKeysWhereThePortIsOpen)
{
    auto& display = bench.form.text_box("texReceive");
    press_key(bench.shell, display, "a");
    EXPECT_FALSE(bench.is_open());
    EXPECT_EQ(bench.heard_in_ms(50), "");
    bench.open();
    for (const char* key : {"a", " ", "Enter", "B", "度"})
        press_key(bench.shell, display, key);
    EXPECT_EQ(bench.heard_in_ms(50), "a B");
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:3");
}
