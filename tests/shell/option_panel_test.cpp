#include "shell/panel_bench.h"

using namespace vrk;

namespace {

std::string shown_strips(const Shell& shell)
{
    std::string strips;
    for (int i = 0; const Control* strip = shell.controls.find("Picture2", i); ++i)
        strips += strip->visible() ? "1" : "0";
    return strips;
}

} // namespace

TEST(OptionPanel, OfAModelShowsTheStripsOfItsPage)
{
    PanelBench bench("Juniper-60Q");
    EXPECT_EQ(shown_strips(bench.shell), "11111100111110");
    EXPECT_EQ(bench.form.label("LabOption", 0).caption(), "MCU Clock:");
    EXPECT_EQ(bench.form.option("Option0", 1).caption(), "External Crystal/Clock");
    EXPECT_TRUE(bench.form.option("Option0", 1).value());
    EXPECT_TRUE(bench.form.option("Option0", 1).visible());
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).text(), "256");
    EXPECT_TRUE(bench.form.list("comWDT_Prescalar", 0).visible());
    EXPECT_FALSE(bench.form.list("comWDT_Prescalar", 1).visible());
    EXPECT_EQ(bench.form.frame("FrameX", 3).caption(), "Step4: Active following options after Next-PowerUp/Cold Reset");
}

TEST(OptionPanel, HidesTheButtonsOfANote)
{
    PanelBench bench("Oak-8");
    EXPECT_EQ(shown_strips(bench.shell), "11111111111110");
    EXPECT_EQ(bench.form.label("LabOption", 9).caption(), "MCU Clock >12MHz select High");
    EXPECT_FALSE(bench.form.option("Option9", 0).visible());
    EXPECT_FALSE(bench.form.option("Option7", 1).visible());
    EXPECT_TRUE(bench.form.list("comWDT_Prescalar", 1).visible());
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 1).text(), "32768");
}

TEST(OptionPanel, LeavesNothingOfTheModelBefore)
{
    PanelBench bench("Oak-8");
    bench.form.text_box("textMsg").set_text("Program OK");
    bench.select("Aspen-8");
    EXPECT_EQ(shown_strips(bench.shell), "00000000000000");
    EXPECT_FALSE(bench.form.option("Option0", 0).visible());
    EXPECT_FALSE(bench.form.option("Option12", 0).visible());
    EXPECT_FALSE(bench.form.list("comWDT_Prescalar", 1).visible());
    EXPECT_EQ(bench.form.text_box("textMsg").text(), "");
}

// A note without words of its own used to show the label of the model before.
TEST(OptionPanel, NoteWithoutWordsStaysEmptyAfterAnotherModel)
{
    PanelBench bench("Hazel-1");
    bench.select("Rowan-8");
    EXPECT_EQ(bench.form.label("LabOption", 2).caption(), "");
    EXPECT_EQ(bench.form.label("LabOption", 8).caption(), "");
    EXPECT_EQ(bench.form.label("LabOption", 1).caption(), "Oscillator Gain( <12MHz can select Low):");
}

TEST(OptionPanel, OfTheOldestFamiliesCarriesANote)
{
    PanelBench bench("Alder-32", false);
    EXPECT_EQ(bench.form.label("LabOption", 0).caption(), "Double speed / 双倍速:");
    EXPECT_EQ(bench.form.label("LabOptionC", 0).caption(), "注:一旦烧录双倍速,由编程器擦除整个芯片才可恢复为单倍速");
    EXPECT_TRUE(bench.form.label("LabOptionC", 0).visible());
    bench.select("Aspen-8");
    EXPECT_EQ(bench.form.label("LabOptionC", 0).caption(), "双倍速、加密位只能由编程器擦除、读、写。");
}

TEST(OptionPanel, OfAModelWithFixedOptionsTellsThem)
{
    PanelBench bench("Hazel-5");
    ASSERT_TRUE(bench.shell.selected.cap_no_option_write);
    EXPECT_EQ(bench.form.frame("FrameX", 3).caption(), "Step4: Options");
    EXPECT_EQ(bench.form.label("LabOption", 0).caption(), "Next Power-Up-Reset, use External Crystal/Clock");
    EXPECT_EQ(bench.form.label("LabOption", 6).caption(), "Next Cold Start WatchDog did not start.");
    EXPECT_TRUE(bench.form.label("LabOption", 6).visible());
    EXPECT_FALSE(bench.form.option("Option0", 0).visible());
    EXPECT_EQ(shown_strips(bench.shell), "11111110000000");
}

TEST(OptionPanel, OfFixedOptionsThatAreNotKnownTellsOnlyThatTheyAreFixed)
{
    PanelBench bench("Larch-2L");
    bench.select("Larch-8");
    bench.shell.selected.cap_no_option_write = true;
    build_option_panel(bench.shell);
    EXPECT_EQ(bench.form.label("LabOption", 0).caption(), "Fixed at the factory.");
    EXPECT_EQ(shown_strips(bench.shell), "10000000000000");
    EXPECT_FALSE(bench.form.option("Option1", 0).visible());
}

TEST(OptionPanel, ChoosesTheDividersFromTheirLists)
{
    PanelBench bench("Oak-8");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).index_chosen(), 7);
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).items().front(), "2");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 1).index_chosen(), 3);
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 1).items().front(), "4096");
}

TEST(OptionPanel, OfSmallModelsHasNoStripsAtTheEndOfTheUpperStackAndTheInternalClock)
{
    PanelBench bench("Elm-8");
    EXPECT_EQ(shown_strips(bench.shell), "11100000111110");
    EXPECT_TRUE(bench.form.option("Option0", 0).value());
    bench.select("Elm-24");
    EXPECT_EQ(shown_strips(bench.shell), "11111000111110");
    EXPECT_TRUE(bench.form.option("Option0", 1).value());
}

TEST(OptionPanel, TakesTheVoltagesOfTheModelsSupply)
{
    PanelBench bench("Larch-8");
    EXPECT_EQ(bench.form.option("Option8", 0).caption(), "< 3.8V");
    bench.select("Larch-2L");
    EXPECT_EQ(bench.form.option("Option8", 0).caption(), "< 2.4V");
    EXPECT_EQ(bench.form.option("Option8", 1).caption(), "< 2.0V");
    EXPECT_EQ(bench.cell("LowU_Reset_YES", OptionColumn::report), "Low Voltage Reset, when MCU-VCC < 2.4V");
    EXPECT_EQ(bench.cell("LowU_Reset_NO", OptionColumn::report), "Low Voltage Reset, when MCU-VCC < 2.0V");
    bench.select("Oak-8L");
    EXPECT_EQ(bench.form.option("Option8", 1).caption(), "< 2.1V");
    bench.select("Maple-1");
    EXPECT_EQ(bench.form.option("Option8", 1).caption(), "< 3.5V");
}

TEST(OptionPanel, TellsVoltagesInChineseByFamily)
{
    PanelBench bench("Elm-8L", false);
    EXPECT_EQ(bench.form.label("LabOption", 8).caption(), "低压复位电压(固件版本>5.4有效)");
    EXPECT_EQ(bench.form.option("Option8", 0).caption(), "2.4V 以下");
    EXPECT_EQ(bench.cell("LowU_Reset_YES", OptionColumn::report), "2.4V 以下复位");
    bench.select("Fir-8R");
    EXPECT_EQ(bench.form.label("LabOption", 8).caption(), "低压复位电压(固件版本>5.7有效)");
    bench.select("Willow-2");
    EXPECT_EQ(bench.form.option("Option8", 0).caption(), "4.3V 以下");
    EXPECT_EQ(bench.cell("LowU_Reset_NO", OptionColumn::report), "电源电压低于 3.8V 复位");
    bench.select("Hazel-1L");
    EXPECT_EQ(bench.form.label("LabOption", 8).caption(), "P1.2/RESET2脚低于1.31V复位,固件>V5.7有效");
    EXPECT_EQ(bench.cell("LowU_Reset_YES", OptionColumn::report), "P1.2 脚低于1.31V复位");
}

TEST(OptionPanel, OfTheResetPinFamiliesTellsTheirThreshold)
{
    PanelBench bench("Juniper-8L");
    EXPECT_EQ(bench.form.label("LabOption", 8).caption(), "P4.6/RESET2:");
    EXPECT_EQ(bench.form.option("Option8", 0).caption(), "<1.31V Voltage Reset");
    EXPECT_EQ(bench.cell("LowU_Reset_YES", OptionColumn::report), "P4.6/RESET2 pin voltage <1.31V Reset");
    EXPECT_EQ(bench.form.option("Option8", 1).caption(), "Used as P4.6/LVD");
}

TEST(OptionPanel, CanBeChangedOnlyWhileNothingRunsAndNothingIsLocked)
{
    PanelBench bench("Juniper-60Q");
    EXPECT_TRUE(bench.form.option("Option0", 0).enabled());
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
    for (std::int16_t state = 1; state <= 3; ++state) {
        bench.shell.locked = state >= 2;
        bench.shell.running = state != 2;
        apply_options_to_controls(bench.shell);
        EXPECT_FALSE(bench.form.option("Option0", 0).enabled()) << state;
        EXPECT_FALSE(bench.form.list("comWDT_Prescalar", 0).enabled()) << state;
        EXPECT_FALSE(bench.form.text_box("txtDevice").enabled()) << state;
        EXPECT_TRUE(bench.form.label("LabOption", 0).enabled()) << state;
        EXPECT_TRUE(bench.form.frame("Frame7").enabled()) << state;
    }
}

TEST(OptionPanel, LeavesTheDataFileAloneWhereThereIsNoDataFlash)
{
    PanelBench bench("Rowan-4");
    EXPECT_FALSE(bench.form.text_box("txtDataFileCheckSum").enabled());
    bench.select("Juniper-8Q");
    EXPECT_TRUE(bench.form.text_box("txtDataFileCheckSum").enabled());
}

TEST(LowVoltageDefault, OfChineseUsersGoesByTheModel)
{
    PanelBench bench("Elm-8", false);
    change_low_voltage_default(bench.shell, "Elm-8");
    build_option_panel(bench.shell);
    EXPECT_TRUE(bench.form.option("Option8", 1).value());
    change_low_voltage_default(bench.shell, "Elm-Series");
    build_option_panel(bench.shell);
    EXPECT_TRUE(bench.form.option("Option8", 0).value());
    bench.select("Fir-8R");
    change_low_voltage_default(bench.shell, "Fir-8R");
    build_option_panel(bench.shell);
    EXPECT_TRUE(bench.form.option("Option8", 0).value());
}

TEST(LowVoltageDefault, OfEnglishUsersStaysAsThePageHasIt)
{
    PanelBench bench("Elm-8");
    change_low_voltage_default(bench.shell, "Elm-8");
    build_option_panel(bench.shell);
    EXPECT_TRUE(bench.form.option("Option8", 0).value());
}

TEST(OptionDependencies, InternalClockNeedsTheResetPin)
{
    PanelBench bench("Juniper-60Q");
    bench.choose("Option1", 0);
    EXPECT_TRUE(bench.form.option("Option0", 1).value());
    bench.choose("Option0", 0);
    EXPECT_TRUE(bench.form.option("Option1", 1).value());
    bench.choose("Option1", 0);
    EXPECT_TRUE(bench.form.option("Option0", 1).value());
}

TEST(OptionDependencies, DoNotBindOlderFamilies)
{
    PanelBench bench("Hazel-1");
    bench.choose("Option1", 1);
    bench.choose("Option0", 0);
    EXPECT_FALSE(bench.form.option("Option1", 0).value());
    bench.select("Rowan-4");
    bench.choose("Option1", 0);
    bench.choose("Option0", 0);
    EXPECT_TRUE(bench.form.option("Option1", 0).value());
}

TEST(OptionDependencies, WatchdogThatAResetStopsSwitchesItsRowsOff)
{
    PanelBench bench("Birch-8", false);
    ASSERT_TRUE(bench.form.option("Option10", 1).value());
    option_button_click(bench.shell, 9, 0);
    EXPECT_FALSE(bench.form.option("Option11", 0).enabled());
    EXPECT_FALSE(bench.form.label("LabOption", 11).enabled());
    bench.form.option("Option10", 0).set_value(true);
    option_button_click(bench.shell, 9, 0);
    EXPECT_TRUE(bench.form.option("Option11", 0).enabled());
}

TEST(OptionDependencies, ClickOnAWatchdogPairSetsWhatCanBeChanged)
{
    PanelBench bench("Larch-8");
    bench.form.option("Option12", 0).set_enabled(false);
    bench.choose("Option10", 0);
    EXPECT_TRUE(bench.form.option("Option12", 0).enabled());
}
