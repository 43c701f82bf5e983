// The start of the program and the changes that it keeps, with any one call to the outside failing.
#include "failures/failing_line.h"

#include "shell/start_up.h"

using namespace vrk;

namespace {

// The program before its start, with a chip on the wire.
struct Start {
    Start(FailingCalls& calls, SettingsOnDisk& store)
        : chip(setup_of("Hazel-1"))
        , shell(Platform{loop, ports, dialogs, store})
    {
        wire.attach(chip);
        ports.add("simulated", wire);
        ports.fails = [&calls](sim::PortCall call) { return calls.fails(name_of(call)); };
        store.fails = [&calls] { return calls.fails("store settings"); };
        shell.language_is_english = true;
        loop.run_for_ms(1); // nobody plugs anything in from here on
    }
    void download()
    {
        loop.call_at(loop.now_us(), [this] { click(shell, form.button("comDownload", 0)); });
        loop.call_at(loop.now_us() + 500'000, [this] { chip.power_up(); });
        do
            loop.yield();
        while (shell.running);
    }

    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::Chip chip;
    sim::SimPortDriver ports{loop};
    ScriptedDialogs dialogs;
    Shell shell;
    const NamedControls form{shell.controls};
};

void tell_start(FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    Start start(calls, store);
    calls.counting = true;
    start_up(start.shell);
    start.loop.run_for_ms(1000);
    calls.counting = false;
    EXPECT_EQ(calls.failed() == "store settings", !start.dialogs.shown.empty());

    const auto code = Bench::pattern(0x200);
    start.dialogs.choices = {folder.file("code.bin", text_of(code))};
    click(start.shell, start.form.button("comLoadFile"));
    start.download();
    EXPECT_TRUE(start.shell.succeeded) << start.form.text_box("textMsg").text();
    EXPECT_EQ(start.chip.flash(0, code.size() - 1), code);
    EXPECT_EQ(start.form.list("combCommPort").text(), "simulated");
    click(start.shell, start.form.check_box("cheSpreadHex", 3));
    start.loop.run_for_ms(1000);
    EXPECT_EQ(store.on_disk("Settings", "COM_port_path"), "simulated");
    EXPECT_EQ(store.on_disk("Settings", "DeviceProducts"), "Hazel-1");
}

// A change of a kept control, a number that is taken up, a count that is cleared.
void tell_changes(FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    FailingLine line("Juniper-8", calls, store, folder);
    line.open_by_hand("comLoadFile", folder.file("code.bin", text_of(Bench::pattern(0x300))));
    line.form.text_box("txtWrite_OK_Count").set_text("7");
    type_text(line.shell, line.form.text_box("texAuto_Increase", 0), "203");
    line.run_for_ms(1000);
    line.dialogs.shown.clear();

    calls.counting = true;
    click(line.shell, line.form.check_box("cheSpreadHex", 3));
    line.run_for_ms(1000);
    line.dialogs.replies = {Reply::yes};
    click(line.shell, line.form.button("comClear_OK_Count"));
    set_checked(line.shell, line.form.check_box("cheAuto_Increase"), true);
    line.run_for_ms(1000);
    calls.counting = false;
    const bool failed = !calls.failed().empty();
    EXPECT_EQ(line.dialogs.shown.size(), failed ? 2U : 1U) << "one asks whether the count is to be cleared";
    const bool in_use = line.form.check_box("cheAuto_Increase").value();
    EXPECT_EQ(line.shell.code_increase.valid, in_use);
    EXPECT_TRUE(in_use || failed);

    set_checked(line.shell, line.form.check_box("cheAuto_Increase"), true);
    line.run_for_ms(1000);
    EXPECT_TRUE(line.shell.code_increase.valid) << "the next try";
    EXPECT_EQ(store.on_disk("Settings", "cheSpreadHex_3"), "1");
    EXPECT_EQ(store.on_disk("Settings", "Write_OK_Count"), "0");
    EXPECT_EQ(store.on_disk("Auto_Increase", "address"), "203");
}

} // namespace

// With the one list of the start lost, every press ended at a port without a name until a device was plugged in.
TEST(StartWithAFailingCall, EndsInAProgramThatDownloads) { fail_each_call(tell_start, 2); }

TEST(ChangesWithAFailingCall, AreToldOnceAndStoredWithTheNext) { fail_each_call(tell_changes, 3); }
