#include "shell/panel_bench.h"

using namespace vrk;

TEST(OptionChoices, Family14HasNoTableAndChangesNothing)
{
    PanelBench bench;
    bench.select_series(14);
    bench.shell.options.bytes[1][0] = 0x5A;
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(1), 0x5A);
    EXPECT_EQ(bench.row("Clew"), -1);
}

TEST(OptionChoices, PanelAsItComesUpGivesItsDefaults)
{
    PanelBench bench("Juniper-60Q");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(0), 0xFF);
    EXPECT_EQ(bench.byte(1), 0x7F); // the extra reset delay
    EXPECT_EQ(bench.byte(2), 0xF7); // stops in idle; divider 256
    EXPECT_EQ(bench.byte(8), 0xFF);
    EXPECT_EQ(bench.byte(16), 0xFF);
}

TEST(OptionChoices, ChosenButtonsOfThePanelGoIntoTheirBits)
{
    PanelBench bench("Hazel-1");
    bench.choose("Option3", 1);
    bench.choose("Option4", 0);
    bench.choose("Option11", 0);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(8), 0xF7 & ~3); // pins must be 0/0, data flash cleared
    EXPECT_EQ(bench.byte(3), 0xFF & ~0x28); // runs at power-up, stops in idle
    EXPECT_TRUE(read_option_choices(bench.shell).holds("Power_On_Run_WDT_YES"));
    EXPECT_FALSE(read_option_choices(bench.shell).holds("Power_On_Run_WDT_NO"));
}

TEST(OptionChoices, SpeedChoiceOfTheOlderFamiliesIsASnapshot)
{
    PanelBench bench("Rowan-4", true);
    make_job(bench.shell);
    EXPECT_FALSE(read_option_choices(bench.shell).holds("Double_speed_YES"));
    bench.choose("Option0", 0);
    make_job(bench.shell);
    EXPECT_TRUE(read_option_choices(bench.shell).holds("Double_speed_YES"));
    EXPECT_EQ(bench.byte(1), 0xFC);
}

TEST(OptionChoices, AllChoicesOfPage2LieInByte1)
{
    PanelBench bench("Rowan-4", false);
    for (const char* button : {"Option0", "Option1", "Option4", "Option5", "Option10", "Option11"})
        bench.choose(button, 0);
    bench.choose("Option3", 1);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(1), 0x00);
    EXPECT_EQ(bench.byte(8), 0xFF);
}

TEST(OptionChoices, WatchdogDividerIsAFieldOfItsByte)
{
    PanelBench bench("Larch-8");
    bench.form.list("comWDT_Prescalar", 0).set_text("8");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(2) & 7, 2);
    EXPECT_EQ(watchdog_divider(static_cast<std::int16_t>(bench.byte(2))), 8);
}

TEST(OptionChoices, WakeUpDividerIsAFieldOfByte3)
{
    PanelBench bench("Maple-5");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(3), 0xFF);
    bench.form.list("comWDT_Prescalar", 1).set_text("4096");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(3), 0xCF);
}

TEST(OptionChoices, Row16MovesAwayInTheSixteenByteFamilies)
{
    PanelBench bench("Willow-2");
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(16), 255);
    EXPECT_EQ(bench.shell.options.spare_row_16, 255);
}

TEST(OptionChoices, BuildForgetsTheBuildBefore)
{
    PanelBench bench("Elm-8");
    bench.choose("Option4", 0);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(16), 0xFE);
    bench.choose("Option4", 1);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(16), 0xFF);
}

TEST(OptionChoices, RowsThatOnlyHoldAPlaceHaveNoSnapshotAndNoEffect)
{
    PanelBench bench("Elm-8");
    bench.form.option("Option3", 0).set_value(true);
    snapshot_controls(bench.shell);
    const int note = bench.row("Clear_EEPROM_Spite") + 1;
    EXPECT_EQ(bench.shell.option_table.cell(4, note + 2, OptionColumn::key), "Clew");
    EXPECT_EQ(bench.shell.option_table.cell(4, note + 2, OptionColumn::snapshot), "");
}

TEST(OptionChoices, OfAPageWithoutABoxHaveNoDivider)
{
    PanelBench bench("Larch-8");
    EXPECT_EQ(read_option_choices(bench.shell).watchdog_divider, "256");
    EXPECT_EQ(read_option_choices(bench.shell).rc30k_divider, std::nullopt);
    bench.select("Rowan-4");
    EXPECT_EQ(read_option_choices(bench.shell).watchdog_divider, std::nullopt);
}

TEST(OptionChoices, StandInTheOrderOfThePage)
{
    PanelBench bench("Alder-32");
    const auto chosen = read_option_choices(bench.shell).chosen;
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].key, "Double_speed_NO");
    bench.select("Juniper-60Q");
    const auto more = read_option_choices(bench.shell).chosen;
    ASSERT_EQ(more.size(), 10U);
    EXPECT_EQ(more.front().key, "Exterior_Oscillate");
    EXPECT_EQ(more.back().key, "Idle_Run_WDT_YES");
}

TEST(OptionChoices, AtLowVoltageAreTwoOfOneName)
{
    PanelBench bench("Poplar-1", false);
    bench.choose("Option8", 0);
    bench.choose("Option9", 1);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(1) & 0xC0, 0x80);
    bench.choose("Option8", 1);
    bench.choose("Option9", 0);
    make_job(bench.shell);
    EXPECT_EQ(bench.byte(1) & 0xC0, 0x40);
}

TEST(OptionChoices, SnapshotTellsTheStateOfEveryButton)
{
    PanelBench bench("Juniper-60Q");
    snapshot_controls(bench.shell);
    EXPECT_EQ(bench.cell("Exterior_Oscillate", OptionColumn::snapshot), "True");
    EXPECT_EQ(bench.cell("Interior_Oscillate", OptionColumn::snapshot), "False");
}
