// What goes into a chip is what stood on the screen at the press. Models with fixed options are among them: their panel
// used to stay open during a download, and a hand that picked another model or opened another file in mid-write ended
// in "Program OK", a count of one, and a flash with over 30 000 wrong bytes.
#include "bench.h"

using namespace vrk;

namespace {

struct Sealed : Bench {
    explicit Sealed(const char* model)
        : Bench(model)
    {
        open_code(pattern(0x1000));
        sealed = code(0, 0xFFF);
        press_download();
        power_up_after_ms(300);
    }
    void in_mid_write(std::function<void()> act) { when(sim::Chip::State::writing, std::move(act)); }
    void end_well()
    {
        run_until_idle();
        EXPECT_TRUE(shell.succeeded);
        EXPECT_EQ(count(), 1);
        EXPECT_EQ(flash(0, 0xFFF), sealed);
        EXPECT_EQ(chip.violations(), "");
        EXPECT_TRUE(dialogs.asked.empty()) << "a dialog would have held the chip up";
    }

    std::vector<std::uint8_t> sealed;
    Touch touch = Touch::taken;
};

class SealedJob : public ::testing::TestWithParam<const char*> { };

} // namespace

TEST_P(SealedJob, IsNotChangedByAPickInMidWrite)
{
    Sealed bench(GetParam());
    bench.in_mid_write(
        [&] { bench.touch = choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Juniper-32Q"); });
    bench.end_well();
    EXPECT_EQ(bench.touch, Touch::busy);
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), GetParam());
}

TEST_P(SealedJob, IsNotChangedByAFileOpenedInMidWrite)
{
    Sealed bench(GetParam());
    bench.in_mid_write([&] { bench.touch = click(bench.shell, bench.form.button("comLoadFile")); });
    bench.end_well();
    EXPECT_EQ(bench.touch, Touch::busy);
    EXPECT_TRUE(bench.shell.file_loaded);
}

// Whatever finds a way to the buffers, the model or the lists behind the gate: the chip gets what was sealed.
TEST_P(SealedJob, IsNotChangedByWhatHappensBehindTheGate)
{
    Sealed bench(GetParam());
    bench.in_mid_write([&bench] {
        clear_buffer(bench.shell, 0xEE, bench.shell.code_buffer);
        bench.shell.selected = McuRecord{};
        bench.form.list("cobBaudMax").set_text("2400");
        bench.form.list("cobBaudMin").set_text("9600");
        bench.form.check_box("cheTL").set_value(true);
        bench.form.list("combCommPort").choose(-1);
    });
    bench.end_well();
}

INSTANTIATE_TEST_SUITE_P(OfAModel, SealedJob,
    ::testing::Values("Juniper-I62Q", "Hazel-5", "Juniper-60Q", "Cedar-4R", "Birch-8", "Alder-64", "Larch-I14"),
    [](const auto& row) {
        std::string name = row.param;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

TEST(Gate, RefusesWhatMakesUpAJobWhileASequenceRuns)
{
    Sealed bench("Juniper-I62Q");
    std::string taken;
    bench.in_mid_write([&] {
        for (Control* control : bench.shell.controls.all()) {
            if (may_touch(bench.shell, *control) == Touch::taken && control->kind != ControlKind::Label &&
                control->kind != ControlKind::Frame && control->index <= 0)
                taken += control->full_name() + " ";
        }
    });
    bench.end_well();
    EXPECT_EQ(taken,
        "comStop_Download textMsg cekReloadFile cekReloadFileWhileFileChange TabStrip1 TabStrip2 txtBuffer txtBuffer2 "
        "txtDataFlash1 tetDataFlash2 vscFile(0) texDumpAddress(0) texDumpFind(0) cekReloadFileWhileFileChange1 "
        "com_Demo_Stop ImgSplitter com_Debug_COM "
        "com_Debug_Baud com_Debug_DataBits com_Debug_ParityCheck com_Debug_StopBits che_AutoOpenPort texReceive "
        "optReceiveHex(0) combDebugCodePage comDebugClear(0) texSend che_DebugTime texDebugFind comDebugFind "
        "optHexSend(0) texSendCycle texSpreadSend(0) cheSpreadHex(0) texSpreadSendCycle ");
}

TEST(Gate, LetsADumpBeReadAndNotBeTypedInto)
{
    Sealed bench("Juniper-60Q");
    TextBox& dump = bench.form.text_box("txtBuffer2");
    bench.in_mid_write([&] {
        EXPECT_EQ(put_caret(bench.shell, dump, 9), Touch::taken);
        EXPECT_EQ(press_key(bench.shell, dump, "PageDown"), Touch::taken);
        EXPECT_EQ(press_key(bench.shell, dump, "A"), Touch::busy);
    });
    bench.end_well();
}

TEST(Gate, IsShutWhileOptionsAreReadToo)
{
    Bench bench("Juniper-60Q");
    bench.after_ms(0, [&bench] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.after_ms(100, [&bench] {
        EXPECT_EQ(choose_item(bench.shell, bench.form.list("cobBaudMax"), 3), Touch::busy);
        EXPECT_EQ(click(bench.shell, bench.form.button("comDownload", 0)), Touch::busy);
        EXPECT_FALSE(bench.form.list("cobBaudMax").enabled());
    });
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_EQ(choose_item(bench.shell, bench.form.list("cobBaudMax"), 3), Touch::taken);
}

namespace {

// What stands to be used in each panel state, by full names.
const char* const off_while_running[] = {"combCommPort", "cobBaudMax", "cobBaudMin", "cheTL", "comb_485_pin",
    "opt_485_pin(0)", "opt_485_logic(0)", "comb_External_WDT", "opt_External_WDT(0)", "opt_ISP_DEMO_WDT(0)", "comb_WDT",
    "com_RC_frequency(0)", "com_RC_frequency(4)", "com_RC_frequency(5)", "comDalay_ReDownLoad", "optBeepYes",
    "comClear_OK_Count", "comStoreFile", "comOpenBatchFile", "comLoadFile", "txtDevice"};
const char* const off_when_locked[] = {"comb_485_pin", "opt_485_pin(0)", "opt_485_logic(0)", "comb_External_WDT",
    "opt_External_WDT(0)", "opt_ISP_DEMO_WDT(0)", "comb_WDT", "com_RC_frequency(0)", "com_RC_frequency(4)",
    "com_RC_frequency(5)", "comLoadFile", "txtDevice"};

std::string enabled_of(const Bench& bench, std::span<const char* const> names)
{
    std::string enabled;
    for (const char* name : names)
        enabled += bench.shell.controls.find_full(name)->enabled() ? std::string{name} + " " : "";
    return enabled;
}

class PanelOf : public ::testing::TestWithParam<const char*> { };

} // namespace

TEST_P(PanelOf, AnyModelIsShutWhileASequenceRunsAndOpenBehindIt)
{
    Sealed bench(GetParam());
    bench.in_mid_write([&] {
        EXPECT_EQ(enabled_of(bench, off_while_running), "");
        EXPECT_TRUE(bench.form.button("comStop_Download").enabled());
    });
    bench.end_well();
    EXPECT_TRUE(bench.form.list("combCommPort").enabled());
    EXPECT_TRUE(bench.form.option("opt_485_pin", 0).enabled());
    EXPECT_TRUE(bench.form.button("comLoadFile").enabled());
}

TEST_P(PanelOf, AnyModelIsLockedWithItsPins)
{
    Bench bench(GetParam());
    click(bench.shell, bench.form.button("comLockOptions"));
    EXPECT_EQ(enabled_of(bench, off_when_locked), "");
    EXPECT_TRUE(bench.form.list("combCommPort").enabled());
    EXPECT_TRUE(bench.form.list("cobBaudMax").enabled());
    EXPECT_TRUE(bench.form.list("comDalay_ReDownLoad").enabled());
    bench.shell.Timer3.start();
    bench.run_for_ms(1000);
    EXPECT_EQ(enabled_of(bench, off_when_locked), "") << "the save of the settings unlocks nothing";
    click(bench.shell, bench.form.button("comUnlockOptions"));
    EXPECT_TRUE(bench.form.option("opt_485_pin", 0).enabled());
}

INSTANTIATE_TEST_SUITE_P(
    Models, PanelOf, ::testing::Values("Juniper-60Q", "Juniper-I62Q", "Birch-8", "Holly-4"), [](const auto& row) {
        std::string name = row.param;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

// ---- every end of a cycle

namespace {

void expect_free(const Bench& bench)
{
    EXPECT_EQ(panel_state(bench.shell), panel::free);
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_TRUE(bench.form.button("comLoadFile").enabled());
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
    EXPECT_TRUE(bench.form.list("combCommPort").enabled());
    EXPECT_FALSE(bench.shell.port.is_open());
    EXPECT_FALSE(bench.form.image("imgOpen_sys").visible());
    EXPECT_TRUE(bench.form.image("imgNotOpen_sys").visible());
}

} // namespace

TEST(EveryEnd, OfAnEraseThatFailsLeavesThePanelFree)
{
    Sealed bench("Juniper-60Q");
    bench.when(sim::Chip::State::speed_set, [&bench] { bench.chip.power_off(); });
    bench.run_until_idle();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Erasing MCU failed."));
    expect_free(bench);
}

TEST(EveryEnd, OfABlockThatFailsLeavesThePanelFree)
{
    Sealed bench("Juniper-60Q");
    bench.in_mid_write([&bench] { bench.chip.power_off(); });
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("Programing failed."));
    expect_free(bench);
}

TEST(EveryEnd, OfAPortThatDoesNotOpenLeavesThePanelFree)
{
    Sealed bench("Juniper-60Q");
    bench.ports.refuse_open(Bench::port_path, 5);
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("Open COM port failed!"));
    expect_free(bench);
}

TEST(EveryEnd, OfAStopLeavesThePanelFree)
{
    Sealed bench("Juniper-60Q");
    bench.press_stop_after_ms(200);
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("Operation stopped. "));
    expect_free(bench);
}

TEST(EveryEnd, OfALockedProjectGoesBackToLocked)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x1000));
    click(bench.shell, bench.form.button("comLockOptions"));
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::writing, [&bench] {
        EXPECT_EQ(panel_state(bench.shell), panel::locked_running);
        bench.chip.power_off();
    });
    bench.run_until_idle();
    EXPECT_EQ(panel_state(bench.shell), panel::locked);
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_FALSE(bench.form.button("comLoadFile").enabled());
    EXPECT_FALSE(bench.shell.port.is_open());
}
