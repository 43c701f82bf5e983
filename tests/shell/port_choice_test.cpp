// Devices come and go, and with them the places in the list: the choice goes by the port's path.
#include "shell/settings_bench.h"

#include "form/main_form.h"
#include "shell/make_job.h"
#include "shell/ports.h"
#include "shell/press.h"
#include "shell/terminal_page.h"

#include <gmock/gmock.h>

using namespace vrk;
using ::testing::HasSubstr;

namespace {

void plug_out(Program& run, const char* path)
{
    run.ports.remove(path);
    run.loop.run_for_ms(1);
}
void plug_in(Program& run, const char* path)
{
    run.ports.add(path, run.wire);
    run.loop.run_for_ms(1);
}

struct Chosen : Program {
    Chosen(SettingsStore& store, int item)
        : Program(store)
    {
        choose_item(shell, form.list("combCommPort"), item);
    }
    std::string shown() const { return form.list("combCommPort").text(); }
};

} // namespace

// The list used to fall to its first port: the next press went to another machine's chip.
TEST(PortChoice, OfAPortThatIsGoneIsNoOtherPort)
{
    MemoryStore store;
    Chosen run(store, 2);
    plug_out(run, "third");
    EXPECT_EQ(run.shown(), "");
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), -1);
    EXPECT_EQ(make_job(run.shell).line.port_path, "");
}

TEST(PortChoice, ComesBackWithItsPort)
{
    MemoryStore store;
    Chosen run(store, 2);
    plug_out(run, "third");
    plug_out(run, "first");
    plug_in(run, "third");
    EXPECT_EQ(run.shown(), "third");
    EXPECT_EQ(make_job(run.shell).line.port_path, "third");
}

TEST(PortChoice, OfAHandWhileThePortWasGoneStands)
{
    MemoryStore store;
    Chosen run(store, 2);
    plug_out(run, "third");
    choose_item(run.shell, run.form.list("combCommPort"), 1);
    plug_in(run, "third");
    EXPECT_EQ(run.shown(), "second");
}

TEST(PortChoice, IsKeptByItsPathWhichWinsOverThePlaceInTheList)
{
    MemoryStore store;
    {
        Chosen run(store, 2);
        run.let_the_save_run();
    }
    EXPECT_EQ(stored(store, "COM_port_path"), "third");
    EXPECT_EQ(stored(store, "COM_port"), "2");
    put(store, "COM_port", "0");
    Program next(store);
    EXPECT_EQ(next.form.list("combCommPort").text(), "third");
}

TEST(PortChoice, OfSettingsWithoutAPathGoesByThePlace)
{
    MemoryStore store;
    put(store, "COM_port", "1");
    Program run(store);
    EXPECT_EQ(run.form.list("combCommPort").text(), "second");
    run.let_the_save_run();
    EXPECT_EQ(stored(store, "COM_port_path"), "second");
}

TEST(PortChoice, OfAPortThatIsNotThereYetWaitsForIt)
{
    MemoryStore store;
    put(store, "COM_port_path", "fifth");
    Program run(store);
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), -1);
    run.let_the_save_run();
    EXPECT_EQ(stored(store, "COM_port_path"), "fifth");
    plug_in(run, "fifth");
    EXPECT_EQ(run.form.list("combCommPort").text(), "fifth");
}

TEST(PortChoice, OfWhoHasNeverChosenIsTheFirstThatIsPluggedIn)
{
    MemoryStore store;
    Program run(store);
    for (const char* path : {"first", "second", "third", "fourth"})
        plug_out(run, path);
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), -1);
    plug_in(run, "first");
    EXPECT_EQ(run.form.list("combCommPort").text(), "first");
}

TEST(PortChoice, TakesAPortThatTheSystemDoesNotList)
{
    MemoryStore store;
    {
        Chosen run(store, 2);
        run.dialogs.choices.push_back("/dev/null"); // a device that is everywhere
        click(run.shell, run.shell.form.comOtherPort);
        EXPECT_EQ(run.dialogs.asked.back().initial_dir, "/dev");
        EXPECT_TRUE(run.dialogs.asked.back().devices);
        EXPECT_EQ(run.shown(), "/dev/null");
        EXPECT_EQ(make_job(run.shell).line.port_path, "/dev/null");
        plug_out(run, "first");
        EXPECT_EQ(run.shown(), "/dev/null") << "it stays in the list";
        run.let_the_save_run();
    }
    Program next(store);
    EXPECT_EQ(next.form.list("combCommPort").text(), "/dev/null") << "and is there at the next start";
    EXPECT_EQ(next.form.list("combCommPort").items().size(), 5U);
}

TEST(PortChoice, StaysWhenNoOtherPortIsNamed)
{
    MemoryStore store;
    Chosen run(store, 2);
    click(run.shell, run.shell.form.comOtherPort); // the dialog is cancelled
    EXPECT_EQ(run.shown(), "third");
    EXPECT_EQ(run.form.list("combCommPort").items().size(), 4U);
}

TEST(PortChoice, TakesAPortOfTheListByItsNameOnce)
{
    MemoryStore store;
    Chosen run(store, 0);
    add_port(run.shell, "second");
    EXPECT_EQ(run.shown(), "second");
    EXPECT_EQ(run.form.list("combCommPort").items().size(), 4U);
}

TEST(PortList, SaysWhatEachDeviceIsBesideItsCaption)
{
    MemoryStore store;
    Program run(store);
    run.ports.add("fifth", run.wire, "", "USB Serial, A50285BI");
    run.loop.run_for_ms(1);
    const ComboBox& list = run.form.list("combCommPort");
    EXPECT_EQ(list.items().back(), "fifth") << "scripts choose it by its caption";
    ASSERT_EQ(list.notes().size(), 5U);
    EXPECT_EQ(list.notes().front(), "");
    EXPECT_EQ(list.notes().back(), "USB Serial, A50285BI");
}

namespace {

// A press on a port that is refused for that reason, and what the report then ends with.
std::string report_of_refusal(bool english, const PortRefusal& why)
{
    MemoryStore store;
    Program run(store, english);
    run.ports.refuse_open("first", 9, why); // it tries more than once
    click(run.shell, run.shell.form.comReadChipLock);
    return run.shell.form.textMsg.text();
}

} // namespace

// "Opened by another program or does not exist" left it to the user to find out which.
TEST(RefusedPort, NamesTheGroupThatMayOpenIt)
{
    const PortRefusal why{PortRefusal::Kind::no_permission, "dialout", ""};
    EXPECT_THAT(report_of_refusal(true, why),
        HasSubstr("Open COM port failed!\n"
                  "The COM port is opened by another Program or the COM port does not exist.\n"
                  "No permission to open first. Put the user into the group dialout and log in anew: "
                  "sudo usermod -aG dialout $USER\n"));
    EXPECT_THAT(report_of_refusal(false, why),
        HasSubstr("Chinese:串口已被其它程序打开或该串口不存在。\n没有权限打开 first。请把用户加入 dialout "
                  "组, 然后重新登录: sudo usermod -aG dialout $USER\n"));
}

TEST(RefusedPort, NamesTheProgramThatHoldsIt)
{
    const PortRefusal why{PortRefusal::Kind::in_use, "", "minicom (PID 4711)"};
    EXPECT_THAT(report_of_refusal(true, why), HasSubstr("\nfirst is in use by minicom (PID 4711)\n"));
    EXPECT_THAT(report_of_refusal(false, why), HasSubstr("\nfirst 正被使用: minicom (PID 4711)\n"));
    const PortRefusal unknown{PortRefusal::Kind::in_use, "", ""};
    EXPECT_THAT(report_of_refusal(true, unknown), HasSubstr("\nfirst is in use by another program\n"));
}

TEST(RefusedPort, SaysNoMoreThanTheSystemTells)
{
    EXPECT_THAT(
        report_of_refusal(true, {}), ::testing::EndsWith("or the COM port does not exist.\nReading Options failed!."));
}

TEST(RefusedPort, IsToldInTheTerminalsBoxToo)
{
    MemoryStore store;
    Program run(store, true);
    run.ports.refuse_open("first", 9, {PortRefusal::Kind::in_use, "", "minicom (PID 4711)"});
    terminal_open(run.shell);
    ASSERT_EQ(run.dialogs.shown.size(), 1U);
    EXPECT_THAT(run.dialogs.shown[0].box.text, ::testing::EndsWith("\nfirst is in use by minicom (PID 4711)"));
}
