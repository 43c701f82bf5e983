// What the program comes up with, on an empty store and on one that holds nonsense.
#include "form/main_form.h"
#include "shell/settings_bench.h"

#include "shell/device.h"

#include <algorithm>

using namespace vrk;

TEST(FirstRun, ShowsHazel1TheFirstPortAndAWindowOfStandardSize)
{
    MemoryStore store;
    Program run(store);
    EXPECT_EQ(run.form.text_box("txtDevice").text(), "Hazel-1");
    EXPECT_EQ(run.form.tree("TreeViewDevice").selected_key(), "Hazel-1");
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), 0);
    EXPECT_EQ(run.shell.form.window.left, 0);
    EXPECT_EQ(run.shell.form.window.top, 0);
    EXPECT_EQ(run.shell.form.window.width, 12000);
    EXPECT_EQ(run.shell.form.window.height, 9045);
    EXPECT_EQ(run.shell.form.window.frame24_width, 2000);
}

TEST(FirstRun, HasTheseChoices)
{
    MemoryStore store;
    Program run(store);
    const NamedControls& form = run.form;
    EXPECT_EQ(form.list("cobBaudMin").text(), "2400");
    EXPECT_EQ(form.list("comDalay_ReDownLoad").text(), "5");
    EXPECT_TRUE(form.option("optBeepYes").value());
    EXPECT_EQ(form.text_box("txtWrite_OK_Count").text(), "0");
    EXPECT_TRUE(form.option("opt_485_pin", 1).value());
    EXPECT_EQ(form.list("comb_485_pin").text(), "P1.0");
    EXPECT_TRUE(form.option("opt_485_logic", 1).value());
    EXPECT_TRUE(form.option("opt_External_WDT", 1).value());
    EXPECT_EQ(form.list("comb_External_WDT").text(), "P1.1");
    EXPECT_EQ(form.list("comWDT_Prescalar", 0).text(), "256");
    EXPECT_EQ(form.list("com_RC_frequency", 0).text(), "18.432");
    EXPECT_EQ(form.list("com_RC_frequency", 1).text(), "11.0592");
    EXPECT_EQ(form.list("com_RC_frequency", 4).text(), "12");
    EXPECT_EQ(form.list("com_RC_frequency", 5).text(), "11.059");
    EXPECT_EQ(form.text_box("txt_RC_frequency").text(), "128");
    EXPECT_EQ(form.list("com_Debug_COM").text(), "COM1");
    EXPECT_EQ(form.list("com_Debug_Baud").text(), "115200");
    EXPECT_EQ(form.list("com_Debug_ParityCheck").text(), "None");
    EXPECT_EQ(form.list("com_Debug_DataBits").text(), "8");
    EXPECT_EQ(form.list("com_Debug_StopBits").text(), "1");
    EXPECT_FALSE(form.check_box("che_AutoOpenPort").value());
    EXPECT_TRUE(form.option("optHexSend", 0).value());
    EXPECT_EQ(form.text_box("texSendCycle").text(), "1000");
    EXPECT_EQ(form.text_box("texSend").text(), "www.example.com");
    EXPECT_EQ(form.list("cobUserCodeBaud").text(), "115200");
    EXPECT_EQ(form.list("cob_DEMO_DownLoad_Parity").text(), "None");
    EXPECT_EQ(form.list("cob_DEMO_UserCode_StopBits").text(), "1");
}

TEST(Loading, ReadsTheModelFirstAndTheNumbersBehindTheWindow)
{
    CountingStore store;
    Program run(store);
    EXPECT_EQ(store.read.front(), "DeviceProducts");
    EXPECT_EQ(store.read[1], "DebugCOM");
    EXPECT_LT(std::find(store.read.begin(), store.read.end(), "texSpreadSend_24"),
        std::find(store.read.begin(), store.read.end(), "COM_port"));
    EXPECT_LT(std::find(store.read.begin(), store.read.end(), "COM_port"),
        std::find(store.read.begin(), store.read.end(), "Frame24_Width"));
    EXPECT_LT(std::find(store.read.begin(), store.read.end(), "Frame24_Width"),
        std::find(store.read.begin(), store.read.end(), "next_value"));
}

TEST(Loading, HoldsTheSplitterInsideItsFrame)
{
    MemoryStore store;
    put(store, "Frame24_Width", "100");
    EXPECT_EQ(Program(store).shell.form.window.frame24_width, 300);
    put(store, "Frame24_Width", "300");
    EXPECT_EQ(Program(store).shell.form.window.frame24_width, 300);
    put(store, "Frame24_Width", "1e6");
    Program wide(store);
    EXPECT_EQ(wide.shell.form.window.frame24_width, wide.shell.form.window.debug_width - 100);
}

TEST(Loading, TakesAPlaceOffTheScreenAsItStands)
{
    MemoryStore store;
    put(store, "MainLeft", "-30000");
    put(store, "MainTop", "99999.5");
    Program run(store);
    EXPECT_EQ(run.shell.form.window.left, -30000);
    EXPECT_EQ(run.shell.form.window.top, 99999.5F);
    save_window(run.shell);
    EXPECT_EQ(stored(store, "MainTop"), "99999.5");
}

TEST(Loading, TakesTheFirstItemForAnIndexBeyondTheList)
{
    MemoryStore store;
    for (const char* key : {"COM_port", "BaudMin", "com_RC_frequency_1", "pin_address_for_485", "DebugBaud"})
        put(store, key, "99");
    put(store, "DebugParity", "-2");
    put(store, "pin_for_485", "2");
    put(store, "UserCodeBaud", "1e300");
    Program run(store);
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), 0);
    EXPECT_EQ(run.form.list("cobBaudMin").index_chosen(), 0);
    EXPECT_EQ(run.form.list("com_RC_frequency", 1).index_chosen(), 0);
    EXPECT_EQ(run.form.list("comb_485_pin").index_chosen(), 0);
    EXPECT_EQ(run.form.list("com_Debug_Baud").index_chosen(), 0);
    EXPECT_EQ(run.form.list("com_Debug_ParityCheck").index_chosen(), 0);
    EXPECT_TRUE(run.form.option("opt_485_pin", 0).value());
    EXPECT_EQ(run.form.list("cobUserCodeBaud").index_chosen(), 0);
}

TEST(Loading, ReadsWordsAsZeroWhereNumbersBelong)
{
    MemoryStore store;
    for (const char* key : {"BaudMin", "Write_OK_Count", "pin_External_WDT", "cheSpreadHex_3", "MainWidth", "MainLeft"})
        put(store, key, "nan and more");
    put(store, "DebugBaud", "");
    Program run(store);
    EXPECT_EQ(run.form.list("cobBaudMin").index_chosen(), 0);
    EXPECT_EQ(run.form.list("com_Debug_Baud").index_chosen(), 0);
    EXPECT_EQ(run.form.text_box("txtWrite_OK_Count").text(), "0");
    EXPECT_TRUE(run.form.option("opt_External_WDT", 0).value());
    EXPECT_FALSE(run.form.check_box("cheSpreadHex", 3).value());
    EXPECT_EQ(run.shell.form.window.width, 0);
    EXPECT_EQ(run.shell.form.window.left, 0);
}

TEST(Loading, TakesTheFirstDividerForOneThatDoesNotExist)
{
    MemoryStore store;
    put(store, "WDT_Prescalar", "64");
    EXPECT_EQ(Program(store).form.list("comWDT_Prescalar", 0).text(), "64");
    put(store, "WDT_Prescalar", "100");
    EXPECT_EQ(Program(store).form.list("comWDT_Prescalar", 0).text(), "2");
}

TEST(Loading, TakesAnyFrequencyThatWasTyped)
{
    MemoryStore store;
    put(store, "com_RC_frequency_0", "7.3728");
    put(store, "com_RC_frequency_5", "13.5600");
    Program run(store);
    EXPECT_EQ(run.form.list("com_RC_frequency", 0).text(), "7.3728");
    EXPECT_EQ(run.form.list("com_RC_frequency", 5).text(), "13.5600");
}

TEST(Loading, FallsBackToHazel1ForAModelThatTheTreeLacks)
{
    MemoryStore store;
    put(store, "DeviceProducts", "no such model");
    EXPECT_EQ(Program(store).form.text_box("txtDevice").text(), "Hazel-1");
    put(store, "DeviceProducts", "FamilyJuniper");
    EXPECT_EQ(Program(store).form.text_box("txtDevice").text(), "Hazel-1");
}

TEST(Loading, ChoosesOneOfThePairOfSendModesWhateverIsStored)
{
    MemoryStore store;
    put(store, "optHexSend_0", "False");
    put(store, "optHexSend_1", "False");
    EXPECT_TRUE(Program(store).form.option("optHexSend", 0).value());
    put(store, "optHexSend_1", "True");
    Program run(store);
    EXPECT_TRUE(run.form.option("optHexSend", 1).value());
    EXPECT_FALSE(run.form.option("optHexSend", 0).value());
}

// Half a second after the start the pins' boxes are as their buttons want them.
TEST(Loading, EnablesThePinsThatWereLoaded)
{
    MemoryStore store;
    put(store, "pin_for_485", "0");
    put(store, "pin_External_WDT", "0");
    Program run(store);
    run.let_the_save_run();
    EXPECT_FALSE(run.form.list("comb_485_pin").enabled());
    EXPECT_FALSE(run.form.option("opt_485_logic", 0).enabled());
    EXPECT_FALSE(run.form.list("comb_External_WDT").enabled());
}

// The low voltage of two families has a list of its own.
TEST(Loading, RestoresTheLowVoltageOnceAndLosesItAtAModelThatHasItsOwnList)
{
    MemoryStore store;
    put(store, "com_RC_frequency_4", "3");
    Program run(store);
    EXPECT_EQ(run.form.list("com_RC_frequency", 4).index_chosen(), 3);
    run.form.text_box("txtDevice").set_text("Holly-4");
    ASSERT_TRUE(apply_selected_device(run.shell));
    EXPECT_EQ(run.form.list("com_RC_frequency", 4).index_chosen(), -1);
}
