// Around the terminal's talk: the log, times before lines, an adapter that is pulled out and comes back.
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"

#include "catalog/ranges.h"
#include "shell/events.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace vrk;

namespace {

sim::ChipSetup any_chip()
{
    McuTable table;
    load_mcu_tables(table, false);
    return *chip_setup_of(table, "Juniper-60Q");
}

struct TerminalBench : Rehearsal {
    TerminalBench()
        : Rehearsal(any_chip(), nullptr, true)
    {
        std::filesystem::create_directories(folder);
    }
    ~TerminalBench() { std::filesystem::remove_all(folder); }

    void come_in(std::string_view text)
    {
        wire.noise_to_tool({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        loop.run_for_ms(100);
    }
    void open()
    {
        click(shell, form.button("comOpenCOM", 0));
        ASSERT_TRUE(shell.desk.terminal.has_port);
    }
    void begin_log(const std::string& path, int kind)
    {
        choose_option(shell, form.option("optDebugLog", kind));
        dialogs.choices.push_back(path);
        click(shell, form.button("comDebugLog"));
    }
    static std::string contents(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    const std::string& shown() const { return form.text_box("texReceive").text(); }

    const std::string folder = testing::TempDir() + "vrk_terminal_" + std::to_string(getpid());
};

} // namespace

TEST(TerminalLog, KeepsTheBytesAsTheyAreWhateverTheDisplayShows)
{
    TerminalBench bench;
    bench.open();
    bench.come_in("before ");
    bench.begin_log(bench.folder + "/a.log", 0);
    EXPECT_EQ(bench.form.button("comDebugLog").caption(), "Stop Log");
    choose_option(bench.shell, bench.form.option("optReceiveHex", 1));
    bench.come_in("one\r\n\xFFtwo");
    click(bench.shell, bench.form.button("comDebugClear", 0));
    bench.come_in("three");
    click(bench.shell, bench.form.button("comDebugLog"));
    bench.come_in("behind");
    EXPECT_EQ(bench.contents(bench.folder + "/a.log"), "one\r\n\xFFtwothree");
    EXPECT_EQ(bench.form.button("comDebugLog").caption(), "Log to File...");
}

TEST(TerminalLog, OfLinesHasATimeBeforeEach)
{
    TerminalBench bench;
    bench.open();
    bench.begin_log(bench.folder + "/a.log", 1);
    bench.come_in("on");
    bench.come_in("e\r");
    bench.come_in("\ntwo\n\nfour");
    const std::string log = bench.contents(bench.folder + "/a.log");
    EXPECT_EQ(log, "08:00:00 one\r\n08:00:00 two\n08:00:00 \n08:00:00 four");
}

TEST(TerminalLog, GoesOnBehindWhatTheFileHeld)
{
    TerminalBench bench;
    std::ofstream{bench.folder + "/a.log"} << "yesterday ";
    bench.open();
    bench.begin_log(bench.folder + "/a.log", 0);
    bench.come_in("today");
    EXPECT_EQ(bench.contents(bench.folder + "/a.log"), "yesterday today");
}

TEST(TerminalLog, IsNotCutWhereTheDisplayIsFull)
{
    TerminalBench bench;
    bench.open();
    bench.begin_log(bench.folder + "/a.log", 0);
    bench.form.text_box("texReceive").set_text(std::string(Terminal::display_limit, 'x'));
    bench.come_in("whole");
    EXPECT_EQ(bench.contents(bench.folder + "/a.log"), "whole");
    EXPECT_EQ(bench.form.text_box("texReceive").length(), Terminal::display_limit);
}

TEST(TerminalLog, ThatCannotBeBegunIsToldAndStaysOff)
{
    TerminalBench bench;
    bench.open();
    bench.begin_log(bench.folder + "/nowhere/a.log", 0);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_TRUE(bench.dialogs.shown[0].box.text.starts_with("The file cannot be written."));
    EXPECT_EQ(bench.form.button("comDebugLog").caption(), "Log to File...");
}

TEST(TerminalLog, ThatCannotBeWrittenIsToldOnceAndReceivingGoesOn)
{
    TerminalBench bench;
    bench.open();
    bench.begin_log("/dev/full", 0); // opens, and takes no byte
    bench.come_in("one ");
    bench.come_in("two");
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_TRUE(bench.dialogs.shown[0].box.text.starts_with("The file cannot be written."));
    EXPECT_FALSE(bench.shell.desk.terminal.log.is_on());
    EXPECT_EQ(bench.form.button("comDebugLog").caption(), "Log to File...");
    EXPECT_EQ(bench.shown(), "one two");
    EXPECT_TRUE(bench.shell.desk.terminal.has_port);
}

TEST(TerminalTimes, StandBeforeEachLineOfTheDisplay)
{
    TerminalBench bench;
    bench.open();
    set_checked(bench.shell, bench.form.check_box("che_DebugTime"), true);
    bench.come_in("one\r\ntw");
    bench.come_in("o\r\n");
    EXPECT_EQ(bench.shown(), "08:00:00 one\r\n08:00:00 two\r\n");
}

// The place stands in the control, so whoever shows it, reads it or drives the program finds it there.
TEST(Search, SelectsPlaceAfterPlaceAndBeginsAgainAtTheTop)
{
    TerminalBench bench;
    const auto& display = bench.form.text_box("texReceive");
    const auto finds_at = [&](int place) {
        click(bench.shell, bench.form.button("comDebugFind"));
        return display.sel_start() == place && display.sel_length() == 2;
    };
    bench.open();
    bench.come_in("度 ab\r\nAB ab");
    type_text(bench.shell, bench.form.text_box("texDebugFind"), "ab");
    EXPECT_TRUE(finds_at(2));
    EXPECT_TRUE(finds_at(6));
    EXPECT_EQ(press_key(bench.shell, bench.form.text_box("texDebugFind"), "Enter"), Touch::taken);
    EXPECT_EQ(display.sel_start(), 9);
    EXPECT_TRUE(finds_at(2));
    bench.come_in(" and ab"); // what comes meanwhile takes the selection away and leaves the place
    EXPECT_TRUE(finds_at(6));
}

TEST(Search, MarksWhatIsNowhere)
{
    TerminalBench bench;
    const auto& mark = bench.form.label("labDebugFound");
    bench.open();
    bench.come_in("alpha");
    type_text(bench.shell, bench.form.text_box("texDebugFind"), "beta");
    click(bench.shell, bench.form.button("comDebugFind"));
    EXPECT_EQ(mark.caption(), "×");
    type_text(bench.shell, bench.form.text_box("texDebugFind"), "pha");
    click(bench.shell, bench.form.button("comDebugFind"));
    EXPECT_EQ(mark.caption(), "");
    click(bench.shell, bench.form.button("comDebugClear", 0));
    click(bench.shell, bench.form.button("comDebugFind"));
    EXPECT_EQ(mark.caption(), "×") << "nothing is left";
}

TEST(PulledAdapter, IsToldOnceAndWhatWasReceivedStays)
{
    TerminalBench bench;
    bench.open();
    bench.come_in("kept");
    bench.ports.remove(Rehearsal::port_path);
    bench.loop.run_for_ms(3000);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "The serial port is gone.");
    EXPECT_FALSE(bench.shell.desk.terminal.has_port);
    EXPECT_EQ(bench.form.button("comOpenCOM", 0).caption(), "Open COM");
    EXPECT_EQ(bench.shown(), "kept");
}

TEST(PulledAdapter, IsOpenedAgainWhenItComesBack)
{
    TerminalBench bench;
    bench.open();
    bench.ports.remove(Rehearsal::port_path);
    bench.loop.run_for_ms(3000);
    bench.ports.add(Rehearsal::port_path, bench.wire);
    bench.loop.run_for_ms(1000);
    EXPECT_TRUE(bench.shell.desk.terminal.has_port);
    bench.come_in("again");
    EXPECT_EQ(bench.shown(), "again");
    EXPECT_EQ(bench.dialogs.shown.size(), 1U) << "told once";
}

TEST(PulledAdapter, StaysClosedWhereTheUserHadClosedIt)
{
    TerminalBench bench;
    bench.open();
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    bench.ports.remove(Rehearsal::port_path);
    bench.loop.run_for_ms(1000);
    bench.ports.add(Rehearsal::port_path, bench.wire);
    bench.loop.run_for_ms(1000);
    EXPECT_FALSE(bench.shell.desk.terminal.has_port);
}

TEST(PulledAdapter, IsNeverAnotherOneThatStandsInItsPlace)
{
    TerminalBench bench;
    sim::Wire other_wire(bench.loop);
    bench.open();
    bench.ports.add("another", other_wire);
    bench.loop.run_for_ms(100);
    bench.ports.remove(Rehearsal::port_path); // the other one moves up in the list
    bench.loop.run_for_ms(1000);
    click(bench.shell, bench.form.button("comOpenCOM", 0));
    EXPECT_FALSE(bench.shell.desk.terminal.has_port);
    EXPECT_EQ(bench.dialogs.shown.back().box.text, "There is no such COM port.");
}
