#include "shell/panel_bench.h"

using namespace vrk;

TEST(RcBoxes, HoldTheFrequenciesAsStored)
{
    PanelBench bench;
    const auto& wanted = bench.form.list("com_RC_frequency", 0).items();
    EXPECT_EQ(wanted.front(), "com_RC_frequency ");
    EXPECT_EQ((std::vector<std::string>{wanted.begin() + 1, wanted.end()}), rc_wanted_items());
    EXPECT_EQ(bench.form.list("com_RC_frequency", 1).items(), rc_band_items());
    EXPECT_EQ(bench.form.list("com_RC_frequency", 2).items().size(), 64U);
    EXPECT_EQ(bench.form.list("com_RC_frequency", 3).items().size(), 5U);
    EXPECT_EQ(bench.form.list("com_RC_frequency", 4).items().front(), "10");
    EXPECT_EQ(bench.form.list("com_RC_frequency", 5).items(), rc_test_items());
}

TEST(RcBoxes, DividerFollowsTheBandAndTheSettingIsSaved)
{
    PanelBench bench("Poplar-1", false);
    bench.shell.Timer3.stop();
    bench.form.list("com_RC_frequency", 1).choose(1);
    com_RC_frequency_Click(bench.shell);
    EXPECT_EQ(bench.form.list("com_RC_frequency", 3).index_chosen(), 3);
    EXPECT_TRUE(bench.shell.Timer3.enabled());
    bench.form.list("com_RC_frequency", 1).choose(2);
    com_RC_frequency_Click(bench.shell);
    EXPECT_EQ(bench.form.list("com_RC_frequency", 3).index_chosen(), 4);
}

TEST(RcBoxes, GoesIntoBytes1And3And4)
{
    PanelBench bench("Poplar-1", false);
    bench.form.list("com_RC_frequency", 1).choose(2);
    bench.form.list("com_RC_frequency", 2).choose(5);
    bench.form.list("com_RC_frequency", 4).choose(0);
    bench.form.text_box("txt_RC_frequency").set_text("77");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(3), 2 * 64 + 48 + 5);
    EXPECT_EQ(bench.byte(4), 77);
    EXPECT_EQ(bench.byte(1) & 7, 7);
    bench.form.list("com_RC_frequency", 4).choose(6);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(1) & 7, 1);
}

TEST(RcBoxes, NoLowVoltageChosenIsFive)
{
    PanelBench bench("Poplar-1", false);
    EXPECT_EQ(bench.form.list("com_RC_frequency", 4).index_chosen(), -1);
    bench.form.text_box("txt_RC_frequency").set_text("not a number");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(1) & 7, 5);
    EXPECT_EQ(bench.byte(4), 0);
}

TEST(RcBoxes, TouchesNoByteOfOtherFamilies)
{
    PanelBench bench("Larch-8");
    bench.form.list("com_RC_frequency", 1).choose(0);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(3), 255);
    EXPECT_EQ(bench.byte(4), 255);
}

TEST(RcBoxes, IsShownToItsTwoFamilies)
{
    PanelBench bench("Holly-1", false);
    EXPECT_TRUE(bench.form.list("com_RC_frequency", 4).visible());
    EXPECT_FALSE(bench.form.text_box("txt_RC_frequency").enabled());
    bench.select("Larch-8");
    EXPECT_FALSE(bench.form.list("com_RC_frequency", 4).visible());
    EXPECT_FALSE(bench.form.list("com_RC_frequency", 0).visible());
    EXPECT_FALSE(bench.form.label("Label8", 0).visible());
}

TEST(RcBoxes, OfferTheVoltagesOfTheSupply)
{
    PanelBench bench("Holly-1", false);
    EXPECT_EQ(bench.form.list("com_RC_frequency", 4).items().front(), "4.64");
    EXPECT_EQ(bench.form.list("com_RC_frequency", 4).items().size(), 8U);
    bench.select("Holly-1L");
    EXPECT_EQ(bench.form.list("com_RC_frequency", 4).items().back(), "1.89");
    bench.select("Larch-8");
    fill_low_voltage_list(bench.shell, 0);
    EXPECT_TRUE(bench.form.list("com_RC_frequency", 4).items().empty());
}

TEST(PinLists, OfferNoP3_6)
{
    PanelBench bench;
    ASSERT_EQ(bench.form.list("comb_485_pin").items().size(), 15U);
    EXPECT_EQ(bench.form.list("comb_485_pin").items()[13], "P3.5");
    EXPECT_EQ(bench.form.list("comb_485_pin").items()[14], "P3.7");
    EXPECT_EQ(bench.form.list("comb_External_WDT").items(), bench.form.list("comb_485_pin").items());
}

TEST(OptionPins, OnOnePinWarnEachTimeAlsoIfSwitchedOff)
{
    PanelBench bench;
    bench.form.option("opt_485_pin", 0).set_value(true);
    bench.form.option("opt_External_WDT", 0).set_value(true);
    bench.form.list("comb_485_pin").choose(3);
    bench.form.list("comb_External_WDT").choose(3);
    comb_485_pin_Click(bench.shell);
    comb_External_WDT_Click(bench.shell);
    ASSERT_EQ(bench.dialogs.shown.size(), 2U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "请不要用同一个 I/O 口线控制 485 和 外部看门狗。");
    EXPECT_EQ(bench.form.list("comb_485_pin").index_chosen(), 3);
}

TEST(OptionPins, ApartDoNotWarnAndTheSettingIsSaved)
{
    PanelBench bench;
    bench.shell.Timer3.stop();
    bench.form.list("comb_External_WDT").choose(1);
    bench.form.list("comb_485_pin").choose(3);
    comb_485_pin_Click(bench.shell);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_TRUE(bench.shell.Timer3.enabled());
}

TEST(OptionPins, AreChosenOnlyWhereTheyAreUsed)
{
    PanelBench bench;
    bench.form.option("opt_485_pin", 0).set_value(true);
    enable_pin_choices(bench.shell);
    EXPECT_FALSE(bench.form.list("comb_485_pin").enabled());
    EXPECT_FALSE(bench.form.option("opt_485_logic", 1).enabled());
    bench.form.option("opt_485_pin", 1).set_value(true);
    enable_pin_choices(bench.shell);
    EXPECT_TRUE(bench.form.list("comb_485_pin").enabled());
    EXPECT_TRUE(bench.form.label("Lab_485_pin").enabled());
    bench.form.option("opt_External_WDT", 0).set_value(true);
    enable_pin_choices(bench.shell);
    EXPECT_FALSE(bench.form.list("comb_External_WDT").enabled());
    bench.form.option("opt_ISP_DEMO_WDT", 0).set_value(true);
    enable_watchdog_pin(bench.shell);
    EXPECT_FALSE(bench.form.list("comb_WDT").enabled());
    bench.form.option("opt_ISP_DEMO_WDT", 1).set_value(true);
    enable_watchdog_pin(bench.shell);
    EXPECT_TRUE(bench.form.list("comb_WDT").enabled());
}

TEST(OptionPins, StandInThePanelOfTheOlderFamilies)
{
    PanelBench bench("Elm-8");
    EXPECT_TRUE(bench.form.frame("Picture4").visible());
    bench.select("Rowan-4");
    EXPECT_TRUE(bench.form.frame("Picture7").visible());
    bench.select("Juniper-8");
    EXPECT_FALSE(bench.form.frame("Picture4").visible());
}
