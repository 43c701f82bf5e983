#include "options/panel_bench.h"

using namespace vrk;

TEST(RcLists, HoldTheFrequenciesAsStored)
{
    PanelBench bench;
    const auto& wanted = bench.form.com_RC_frequency[0].items();
    ASSERT_EQ(wanted.size(), 59U);
    EXPECT_EQ(wanted.front(), "com_RC_frequency ");
    EXPECT_EQ(wanted[1], "2.4576 ");
    EXPECT_EQ(wanted.back(), "30.0000 ");
    const auto& aimed_at = bench.form.com_RC_frequency[5].items();
    ASSERT_EQ(aimed_at.size(), 51U);
    EXPECT_EQ(aimed_at[21], "13.5600");
    EXPECT_EQ(aimed_at[23], "13.5600");
    EXPECT_EQ(aimed_at.back(), "40.0000");
    EXPECT_EQ(bench.form.com_RC_frequency[1].items().size(), 4U);
}

TEST(RcSetting, DividerFollowsTheBandAndTheSettingIsSaved)
{
    PanelBench bench("Poplar-1", false);
    bench.shell.Timer3.stop();
    bench.form.com_RC_frequency[1].choose(1);
    com_RC_frequency_Click(bench.shell);
    EXPECT_EQ(bench.form.com_RC_frequency[3].index_chosen(), 3);
    EXPECT_TRUE(bench.shell.Timer3.enabled());
    bench.form.com_RC_frequency[1].choose(2);
    com_RC_frequency_Click(bench.shell);
    EXPECT_EQ(bench.form.com_RC_frequency[3].index_chosen(), 4);
}

TEST(RcSetting, GoesIntoBytes1And3And4)
{
    PanelBench bench("Poplar-1", false);
    bench.form.com_RC_frequency[1].choose(2);
    bench.form.com_RC_frequency[2].choose(5);
    bench.form.com_RC_frequency[4].choose(0);
    bench.form.txt_RC_frequency.set_text("77");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(3), 2 * 64 + 48 + 5);
    EXPECT_EQ(bench.byte(4), 77);
    EXPECT_EQ(bench.byte(1) & 7, 7);
    bench.form.com_RC_frequency[4].choose(6);
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(1) & 7, 1);
}

TEST(RcSetting, NoLowVoltageChosenIsFive)
{
    PanelBench bench("Poplar-1", false);
    EXPECT_EQ(bench.form.com_RC_frequency[4].index_chosen(), -1);
    bench.form.txt_RC_frequency.set_text("not a number");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(1) & 7, 5);
    EXPECT_EQ(bench.byte(4), 0);
}

TEST(RcSetting, TouchesNoByteOfOtherFamilies)
{
    PanelBench bench("Larch-8");
    bench.form.com_RC_frequency[1].choose(0);
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(3), 255);
    EXPECT_EQ(bench.byte(4), 255);
}

TEST(RcSetting, IsShownToItsTwoFamilies)
{
    PanelBench bench("Holly-1", false);
    EXPECT_TRUE(bench.form.com_RC_frequency[4].visible());
    EXPECT_FALSE(bench.form.txt_RC_frequency.enabled());
    bench.select("Larch-8");
    EXPECT_FALSE(bench.form.com_RC_frequency[4].visible());
    EXPECT_FALSE(bench.form.com_RC_frequency[0].visible());
    EXPECT_FALSE(bench.form.Label8[0].visible());
}

TEST(LowVoltageList, GoesByTheSupply)
{
    PanelBench bench("Holly-1", false);
    EXPECT_EQ(bench.form.com_RC_frequency[4].items().front(), "4.64");
    EXPECT_EQ(bench.form.com_RC_frequency[4].items().size(), 8U);
    bench.select("Holly-1L");
    EXPECT_EQ(bench.form.com_RC_frequency[4].items().back(), "1.89");
    bench.select("Larch-8");
    fill_low_voltage_list(bench.shell, 0);
    EXPECT_TRUE(bench.form.com_RC_frequency[4].items().empty());
}

TEST(OptionPins, OfferNoP3_6)
{
    PanelBench bench;
    EXPECT_EQ(bench.form.comb_485_pin.items().size(), 15U);
    EXPECT_EQ(bench.form.comb_485_pin.items()[13], "P3.5");
    EXPECT_EQ(bench.form.comb_485_pin.items()[14], "P3.7");
    EXPECT_EQ(bench.form.comb_External_WDT.items(), bench.form.comb_485_pin.items());
}

TEST(OptionPins, OnOnePinWarnEachTimeAlsoIfSwitchedOff)
{
    PanelBench bench;
    bench.form.opt_485_pin[0].set_value(true);
    bench.form.opt_External_WDT[0].set_value(true);
    bench.form.comb_485_pin.choose(3);
    bench.form.comb_External_WDT.choose(3);
    comb_485_pin_Click(bench.shell);
    comb_External_WDT_Click(bench.shell);
    ASSERT_EQ(bench.dialogs.shown.size(), 2U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "请不要用同一个 I/O 口线控制 485 和 外部看门狗。");
    EXPECT_EQ(bench.form.comb_485_pin.index_chosen(), 3);
}

TEST(OptionPins, ApartDoNotWarnAndTheSettingIsSaved)
{
    PanelBench bench;
    bench.shell.Timer3.stop();
    bench.form.comb_External_WDT.choose(1);
    bench.form.comb_485_pin.choose(3);
    comb_485_pin_Click(bench.shell);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_TRUE(bench.shell.Timer3.enabled());
}

TEST(OptionPins, AreChosenOnlyWhereTheyAreUsed)
{
    PanelBench bench;
    bench.form.opt_485_pin[0].set_value(true);
    opt_485_pin_Click(bench.shell);
    EXPECT_FALSE(bench.form.comb_485_pin.enabled());
    EXPECT_FALSE(bench.form.opt_485_logic[1].enabled());
    bench.form.opt_485_pin[1].set_value(true);
    opt_485_pin_Click(bench.shell);
    EXPECT_TRUE(bench.form.comb_485_pin.enabled());
    EXPECT_TRUE(bench.form.Lab_485_pin.enabled());
    bench.form.opt_External_WDT[0].set_value(true);
    opt_External_WDT_Click(bench.shell);
    EXPECT_FALSE(bench.form.comb_External_WDT.enabled());
    bench.form.opt_ISP_DEMO_WDT[0].set_value(true);
    opt_ISP_DEMO_WDT_Click(bench.shell);
    EXPECT_FALSE(bench.form.comb_WDT.enabled());
    bench.form.opt_ISP_DEMO_WDT[1].set_value(true);
    opt_ISP_DEMO_WDT_Click(bench.shell);
    EXPECT_TRUE(bench.form.comb_WDT.enabled());
}

TEST(OptionPins, StandInThePanelOfTheOlderFamilies)
{
    PanelBench bench("Elm-8");
    EXPECT_TRUE(bench.form.Picture4.visible());
    bench.select("Rowan-4");
    EXPECT_TRUE(bench.form.Picture7.visible());
    bench.select("Juniper-8");
    EXPECT_FALSE(bench.form.Picture4.visible());
}
