// The monitor's pages with a program that stops and tells: its frames shown, answered, and asked for again.
#include "shell/terminal_bench.h"

#include "sim/monitor_program.h"

using namespace vrk;

namespace {

using Kind = sim::MonitorProgram::Frame;

constexpr std::uint8_t delivered = 0x50;
constexpr std::uint8_t again = 0x52;
constexpr std::uint8_t run = 0x54;

struct MonitorPages : testing::Test {
    void start()
    {
        bench.open();
        program.power(true);
    }
    void answer_nothing() { set_checked(bench.shell, bench.form.check_box("che_disable_Debug_SFR_232"), true); }
    void press_continue(int row = 1) { click(bench.shell, bench.form.button("comDebugContinue", row)); }
    std::vector<int> commands() const
    {
        std::vector<int> codes;
        for (const auto& heard : program.commands())
            codes.push_back(heard.command);
        return codes;
    }
    const std::vector<std::string>& list(const char* name) const { return bench.list(name); }
    std::string register_line(const std::string& name) const
    {
        for (const std::string& line : list("lst_debug1")) {
            if (line.ends_with("  " + name))
                return line;
        }
        return "no register " + name;
    }

    sim::MonitorProgram program{terminal_line};
    TerminalBench bench{program};
};

} // namespace

TEST_F(MonitorPages, ShowAllFourKindsOfFramesAndAnswerEach)
{
    program.registers[0x90 - 0x80] = 0x5A;
    program.ram[0] = 0xC0;
    program.ram[1] = 0xC1;
    start();
    bench.run_for_ms(2000);
    EXPECT_EQ(commands(), (std::vector<int>{delivered, delivered, delivered, delivered}));
    EXPECT_TRUE(program.waits());
    EXPECT_EQ(register_line("P1"), "             90H  5AH  P1");
    EXPECT_EQ(list("lst_debug2").at(0), "00   C0 C1 02 03 04 05 06 07");
    EXPECT_EQ(list("lst_debug3").at(127), "03F8 F9 FA FB FC FD FE FF 00");
    EXPECT_EQ(list("lst_debug4").at(0), "2000 02 03 04 05 06 07 08 09");
    EXPECT_EQ(program.complaints(), "");
    EXPECT_EQ(bench.boxes(), "");
}

TEST_F(MonitorPages, LetTheProgramRunOnAndShowWhatHasChanged)
{
    start();
    bench.run_for_ms(2000);
    const auto stands_out = [this] {
        const auto& marks = dynamic_cast<ListBox&>(*bench.shell.controls.find("lst_debug2")).stands_out();
        return std::count(marks.begin(), marks.end(), true);
    };
    EXPECT_EQ(stands_out(), 32);
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:0");
    press_continue();
    EXPECT_EQ(bench.form.label("labSendCount").caption(), "Send counter:1");
    bench.run_for_ms(3000);
    EXPECT_EQ(program.times_run_on(), 1);
    EXPECT_EQ(list("lst_debug2").at(6).substr(0, 7), "30   01");
    EXPECT_EQ(stands_out(), 1);
    press_continue(2);
    bench.run_for_ms(3000);
    EXPECT_EQ(program.times_run_on(), 2);
    EXPECT_EQ(list("lst_debug2").at(6).substr(0, 7), "30   02");
}

// Bytes of a frame are bytes of the line, and the display shows the line.
TEST_F(MonitorPages, LeaveTheirBytesToTheTerminalToo)
{
    program.stop = {Kind::registers};
    bench.show_as_hex(true);
    start();
    bench.run_for_ms(500);
    EXPECT_TRUE(bench.shown().starts_with("A5 5A 00 00 91 00 00 00 80 D0 E0 "));
    EXPECT_EQ(bench.form.label("labReceiveCount").caption(), "Receive counter:147");
}

TEST_F(MonitorPages, AskThreeTimesForAFrameThatComesBadThreeTimes)
{
    program.stop = {Kind::ram};
    program.damaged = 3;
    start();
    bench.run_for_ms(10'000);
    EXPECT_EQ(commands(), (std::vector<int>{again, again, again, delivered}));
    for (std::size_t i = 0; i < 3; ++i) {
        const std::int64_t pause_ms = (program.commands()[i].at_ns - program.sendings()[i]) / 1'000'000;
        EXPECT_GE(pause_ms, 1000);
        EXPECT_LE(pause_ms, 1005);
    }
    EXPECT_EQ(list("lst_debug2").at(31), "F8   F8 F9 FA FB FC FD FE FF");
    EXPECT_EQ(bench.boxes(), "");
}

TEST_F(MonitorPages, AskAgainForAFrameWhoseTailIsMissing)
{
    program.stop = {Kind::external_ram};
    program.cut_off = 2;
    start();
    bench.run_for_ms(10'000);
    EXPECT_EQ(commands(), (std::vector<int>{again, again, delivered}));
    EXPECT_EQ(list("lst_debug3").at(0), "0000 01 02 03 04 05 06 07 08");
}

TEST_F(MonitorPages, GiveUpAfterThreeRequestsWithoutAnAnswer)
{
    start();
    bench.run_for_ms(2000);
    const auto before = list("lst_debug1");
    program.cut_off = 1;
    for (int sending = 2; sending <= 10; ++sending)
        bench.board.lose_reply(sending);
    press_continue();
    bench.run_for_ms(30'000);
    const std::vector<int> all = commands();
    EXPECT_EQ(std::vector<int>(all.begin() + 5, all.end()), (std::vector<int>{again, again, again}));
    EXPECT_EQ(program.complaints(), "");
    EXPECT_EQ(list("lst_debug1"), before);
    EXPECT_EQ(bench.boxes(), "");
}

TEST_F(MonitorPages, SendNothingWhereTheyAreToldSo)
{
    answer_nothing();
    start();
    bench.run_for_ms(10'000);
    EXPECT_EQ(commands(), std::vector<int>{});
    EXPECT_TRUE(program.waits());
    EXPECT_EQ(register_line("B"), "             F0H  F0H  B"); // shown all the same
    press_continue();
    bench.run_for_ms(100);
    EXPECT_EQ(commands(), std::vector<int>{run});
    EXPECT_EQ(program.times_run_on(), 1);
}

TEST_F(MonitorPages, AskForNothingAgainWhereTheyAreToldSo)
{
    answer_nothing();
    program.damaged = 1;
    start();
    bench.run_for_ms(10'000);
    EXPECT_EQ(commands(), std::vector<int>{});
    EXPECT_EQ(program.sendings().size(), 1U);
}

TEST_F(MonitorPages, ClearTheirLists)
{
    start();
    bench.run_for_ms(2000);
    click(bench.shell, bench.form.button("comDebugClear", 1));
    EXPECT_EQ(register_line("B"), "             F0H       B");
    EXPECT_EQ(list("lst_debug2").at(1), "08" + std::string(26, ' '));
    EXPECT_EQ(list("lst_debug3").at(1), "0008" + std::string(24, ' '));
    EXPECT_EQ(list("lst_debug4").at(0), "0000" + std::string(24, ' '));
    EXPECT_NE(bench.shown(), ""); // the display has a button of its own
}

TEST_F(MonitorPages, HaveTheRegistersOfTheModel)
{
    EXPECT_EQ(list("lst_debug1").size(), 67U);
    bench.select("Alder-64");
    EXPECT_EQ(list("lst_debug1").size(), registers_of(bench.shell.selected.series).size());
    EXPECT_NE(list("lst_debug1").size(), 67U);
}

TEST_F(MonitorPages, ForgetHalfAFrameWhenThePortIsClosed)
{
    program.stop = {Kind::ram};
    program.cut_off = 1;
    start();
    bench.run_for_ms(500);
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    bench.run_for_ms(5000);
    EXPECT_EQ(commands(), std::vector<int>{});
    program.power(false);
    bench.open();
    program.power(true);
    bench.run_for_ms(500);
    EXPECT_EQ(commands(), std::vector<int>{delivered});
}
