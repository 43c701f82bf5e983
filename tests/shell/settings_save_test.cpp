// When the settings are written, and what of them is not just a control's state.
#include "form/main_form.h"
#include "shell/settings_bench.h"

#include "shell/device.h"

using namespace vrk;

namespace {

// A run whose first save, that of the start, is over.
struct QuietProgram : Program {
    explicit QuietProgram(SettingsStore& store, bool english = false)
        : Program(store, english)
    {
        let_the_save_run();
        EXPECT_FALSE(shell.Timer3.enabled());
    }
    // Whether what a hand does to a control has armed the save; takes it back.
    bool armed()
    {
        const bool armed = shell.Timer3.enabled();
        shell.Timer3.stop();
        return armed;
    }
};

struct List {
    const char* name;
    int index = Control::no_index;
};
std::ostream& operator<<(std::ostream& out, const List& list) { return out << list.name; }

class ArmingList : public testing::TestWithParam<List> { };
class ArmingButton : public testing::TestWithParam<List> { };
class ArmingText : public testing::TestWithParam<List> { };

} // namespace

TEST(Saving, OfABurstIsOneWriteHalfASecondAfterTheFirstChange)
{
    CountingStore store;
    QuietProgram run(store);
    store.writes.clear();
    for (int row = 0; row < 25; ++row) {
        ASSERT_EQ(click(run.shell, run.form.check_box("cheSpreadHex", row)), Touch::taken);
        run.loop.run_for_ms(19);
    }
    EXPECT_TRUE(store.writes.empty()) << "475 ms after the first click";
    run.loop.run_for_ms(25);
    EXPECT_EQ(store.writes["cheSpreadHex_0"], 1);
    EXPECT_EQ(store.writes["DeviceProducts"], 1);
    EXPECT_EQ(stored(store.inner, "cheSpreadHex_24"), "1");
    run.loop.run_for_ms(10'000);
    EXPECT_EQ(store.writes["cheSpreadHex_0"], 1);
}

TEST(Saving, OfAChangeAfterASaveIsAnother)
{
    CountingStore store;
    QuietProgram run(store);
    store.writes.clear();
    click(run.shell, run.form.check_box("cheSpreadHex", 0));
    run.let_the_save_run();
    click(run.shell, run.form.check_box("cheSpreadHex", 0));
    run.let_the_save_run();
    EXPECT_EQ(store.writes["cheSpreadHex_0"], 2);
    EXPECT_EQ(stored(store.inner, "cheSpreadHex_0"), "0");
}

TEST(Saving, FollowsTheStartAndEverySelectionOfAModel)
{
    MemoryStore store;
    Program run(store);
    EXPECT_TRUE(run.shell.Timer3.enabled());
    run.let_the_save_run();
    EXPECT_EQ(stored(store, "DeviceProducts"), "Hazel-1");
    choose_node(run.shell, run.form.tree("TreeViewDevice"), "Juniper-60Q");
    run.let_the_save_run();
    EXPECT_EQ(stored(store, "DeviceProducts"), "Juniper-60Q");
}

TEST(Saving, SetsTheFirstModelOfBirchWhereNoModelIsSelected)
{
    MemoryStore store;
    QuietProgram run(store);
    run.form.tree("TreeViewDevice").select("FamilyJuniper");
    save_settings(run.shell);
    EXPECT_EQ(stored(store, "DeviceProducts"), "Birch-4");
    run.form.tree("TreeViewDevice").set_nodes({});
    ASSERT_EQ(run.form.tree("TreeViewDevice").selected_key(), "");
    put(store, "DeviceProducts", "something else");
    save_settings(run.shell);
    EXPECT_EQ(stored(store, "DeviceProducts"), "Birch-4");
}

// English users have no Birch in their tree.
TEST(Saving, SetsBirchInEnglishTooAndTheNextStartFallsBack)
{
    MemoryStore store;
    QuietProgram run(store, true);
    run.form.tree("TreeViewDevice").select("FamilyJuniper");
    save_settings(run.shell);
    EXPECT_EQ(stored(store, "DeviceProducts"), "Birch-4");
    EXPECT_EQ(Program(store, true).form.text_box("txtDevice").text(), "Hazel-1");
    put(store, "DeviceProducts", "Birch-4");
    EXPECT_EQ(Program(store, false).form.text_box("txtDevice").text(), "Birch-4");
}

TEST(Saving, NotesTheFirstThreeOptionsAsANumber)
{
    MemoryStore store;
    QuietProgram run(store);
    run.form.option("Option0", 0).set_value(true);
    run.form.option("Option1", 1).set_value(true);
    run.form.option("Option2", 0).set_value(true);
    save_settings(run.shell);
    EXPECT_EQ(stored(store, "安全锁"), "5");
    run.form.option("Option0", 1).set_value(true);
    run.form.option("Option1", 0).set_value(true);
    run.form.option("Option2", 1).set_value(true);
    save_settings(run.shell);
    EXPECT_EQ(stored(store, "安全锁"), "2");
    EXPECT_EQ(stored(store, "fillbyte"), "00");
}

TEST(Saving, WritesAnswersAsWordsAndChecksAsDigits)
{
    MemoryStore store;
    QuietProgram run(store);
    run.form.option("optBeepNo").set_value(true);
    run.form.check_box("che_AutoOpenPort").set_value(true);
    run.form.option("opt_485_pin", 0).set_value(true);
    save_settings(run.shell);
    EXPECT_EQ(stored(store, "BeepYesNo"), "False");
    EXPECT_EQ(stored(store, "DebugAutoOpenPort"), "1");
    EXPECT_EQ(stored(store, "pin_for_485"), "0");
    EXPECT_EQ(stored(store, "optHexSend_0"), "True");
    EXPECT_EQ(stored(store, "optHexSend_1"), "False");
    EXPECT_FALSE(Program(store).form.option("optBeepYes").value());
}

TEST(Saving, OfTheWindowAloneLeavesTheRestAlone)
{
    CountingStore store;
    QuietProgram run(store);
    store.writes.clear();
    run.shell.form.window.left = 1500;
    save_window(run.shell);
    EXPECT_EQ(stored(store.inner, "MainLeft"), "1500");
    EXPECT_EQ(store.writes.size(), 5U);
}

TEST(Saving, OfTheWindowIsPartOfTheEnd)
{
    MemoryStore store;
    QuietProgram run(store);
    run.shell.form.window.top = 450;
    close_request(run.shell);
    run.loop.run_for_ms(1000);
    EXPECT_TRUE(run.shell.unloaded);
    EXPECT_EQ(stored(store, "MainTop"), "450");
}

TEST(Saving, OfTheLastChangeComesBeforeTheEnd)
{
    MemoryStore store;
    QuietProgram run(store);
    choose_item(run.shell, run.form.list("cobBaudMin"), 2);
    close_request(run.shell);
    while (!run.shell.unloaded)
        run.loop.yield();
    EXPECT_EQ(stored(store, "BaudMin"), "2");
}

TEST(Saving, IsNotArmedByWhatIsNotKept)
{
    MemoryStore store;
    QuietProgram run(store);
    type_text(run.shell, run.form.text_box("txtAP_FileStart"), "0100");
    choose_item(run.shell, run.form.list("cobBaudMax"), 1);
    choose_tab(run.shell, run.form.tabs("TabStrip2"), 0);
    click(run.shell, run.form.check_box("cekReloadFile"));
    EXPECT_FALSE(run.armed());
}

TEST(Saving, IsNotArmedByADisabledControl)
{
    MemoryStore store;
    QuietProgram run(store);
    run.form.list("cobBaudMin").set_enabled(false);
    EXPECT_EQ(choose_item(run.shell, run.form.list("cobBaudMin"), 2), Touch::disabled);
    EXPECT_EQ(press_key(run.shell, run.form.list("cobBaudMin"), "Down"), Touch::disabled);
    EXPECT_FALSE(run.armed());
}

TEST_P(ArmingList, ArmsTheSaveWhenAnItemIsChosenAndWhenAKeyIsPressed)
{
    MemoryStore store;
    QuietProgram run(store);
    auto& list = run.control<ComboBox>(GetParam().name, GetParam().index);
    list.set_enabled(true);
    EXPECT_EQ(choose_item(run.shell, list, 1), Touch::taken);
    EXPECT_TRUE(run.armed());
    EXPECT_EQ(press_key(run.shell, list, "Down"), Touch::taken);
    EXPECT_TRUE(run.armed());
}
INSTANTIATE_TEST_SUITE_P(OfAllLines, ArmingList,
    testing::Values(List{"cob_DEMO_DownLoad_Baud"}, List{"cob_DEMO_DownLoad_DataBits"},
        List{"cob_DEMO_DownLoad_Parity"}, List{"cob_DEMO_DownLoad_StopBits"}, List{"cob_DEMO_UserCode_Baud"},
        List{"cob_DEMO_UserCode_DataBits"}, List{"cob_DEMO_UserCode_Parity"}, List{"cob_DEMO_UserCode_StopBits"},
        List{"cobUserCodeBaud"}, List{"cobUserCodeDataBits"}, List{"cobUserCodeParity"}, List{"cobUserCodeStopBits"},
        List{"cobBaudMin"}, List{"combCommPort"}, List{"comDalay_ReDownLoad"}, List{"com_Debug_Baud"},
        List{"comb_485_pin"}, List{"comb_External_WDT"}, List{"com_RC_frequency", 1}, List{"comWDT_Prescalar", 0}));

TEST_P(ArmingButton, ArmsTheSaveWhenItIsClicked)
{
    MemoryStore store;
    QuietProgram run(store);
    Control& button = *run.shell.controls.find(GetParam().name, GetParam().index);
    button.set_enabled(true);
    EXPECT_EQ(click(run.shell, button), Touch::taken);
    EXPECT_TRUE(run.armed());
}
INSTANTIATE_TEST_SUITE_P(OfAllKinds, ArmingButton,
    testing::Values(List{"cheSpreadHex", 0}, List{"cheSpreadHex", 24}, List{"che_AutoOpenPort"}, List{"optFillbyte", 1},
        List{"Option0", 0}, List{"Option1", 1}, List{"Option2", 2}, List{"Option9", 0}, List{"Option13", 1},
        List{"optBeepYes"}, List{"optBeepNo"}, List{"opt_485_pin", 0}, List{"opt_485_logic", 0},
        List{"opt_External_WDT", 1}, List{"optHexSend", 1}));

TEST_P(ArmingText, ArmsTheSaveWhenItIsTypedInto)
{
    MemoryStore store;
    QuietProgram run(store);
    Control& text = *run.shell.controls.find(GetParam().name, GetParam().index);
    text.set_enabled(true);
    EXPECT_EQ(type_text(run.shell, text, "12"), Touch::taken);
    EXPECT_TRUE(run.armed());
}
INSTANTIATE_TEST_SUITE_P(OfAllTexts, ArmingText,
    testing::Values(List{"txt_DEMO_UserCode"}, List{"txt_length"}, List{"txt_Start_Address"}, List{"texSend"},
        List{"texSendCycle"}, List{"texSpreadSendCycle"}, List{"texSpreadSend", 24}, List{"txt_RC_frequency"},
        List{"com_RC_frequency", 0}));
