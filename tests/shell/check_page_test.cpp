#include "bench.h"
#include "shell/panel_bench.h"

#include "shell/check_page.h"

using namespace vrk;

namespace {

// A chip of a stepping on the wire, its option bytes erased.
struct CheckPageBench : PanelBench {
    CheckPageBench(const char* model, const char* letter, bool english = true)
        : PanelBench(model, english)
    {
        status.model = shell.selected;
        status.target_name = model;
        status.fw_letter = letter;
        status.fw_version = "6.0";
        status.status_bytes.fill(255);
    }
    void show()
    {
        form.text_box("textMsg").set_text("");
        show_chip_status(shell, status);
    }
    std::string label(int index) const { return form.label("LabLock", index).caption(); }

    ChipStatus status;
};

} // namespace

TEST(ChipOptions, ComeAfterTheHeader)
{
    Bench bench("Juniper-60Q");
    bench.after_ms(0, [&bench] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    const std::string version = bench.shell.talk().chip.fw_version + "I\nNext Power-Up";
    EXPECT_TRUE(bench.report_says("\nMCU Type is: Juniper-60Q\nMCU Firmware Version: " + version));
}

TEST(ChipOptions, AreLinesOfTheReportAndMarksOfTheTable)
{
    CheckPageBench bench("Juniper-60Q", "I");
    bench.show();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().starts_with(
        "\nNext Power-Up-Reset, use External Crystal/Clock\nRESET/P4.7 is used as RESET\n"));
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nPrescalar value of WatchDog Timer: 256"));
    EXPECT_EQ(bench.cell("Exterior_Oscillate", OptionColumn::snapshot), "1");
    EXPECT_EQ(bench.cell("Interior_Oscillate", OptionColumn::snapshot), "0");
}

TEST(ChipOptions, TellTheVoltagesOfTheModelInHand)
{
    CheckPageBench bench("Oak-8L", "L");
    bench.show();
    EXPECT_NE(bench.form.text_box("textMsg").text().find("MCU-VCC < 2.1V"), std::string::npos);
}

TEST(CheckPage, ShowsTheChipAndItsChoicesOnePerLabel)
{
    CheckPageBench bench("Juniper-60Q", "I");
    bench.show();
    EXPECT_EQ(bench.label(1), " MCU: Juniper-60Q  Firmware Version: 6.0I");
    EXPECT_EQ(bench.label(2), "Next Power-Up-Reset, use External Crystal/Clock");
    EXPECT_EQ(bench.label(11), "Stop WatchDog Timer counting in Idle mode:  NO");
    EXPECT_EQ(bench.label(12), "");
    EXPECT_TRUE(bench.form.label("LabLock", 11).visible());
}

TEST(CheckPage, ForgetsTheChipBefore)
{
    CheckPageBench bench("Juniper-60Q", "I");
    bench.show();
    bench.status.fw_letter = "C";
    bench.show();
    EXPECT_EQ(bench.label(10), "");
    clear_check_page(bench.shell);
    EXPECT_EQ(bench.label(1), "");
    EXPECT_TRUE(bench.form.label("LabLock", 0).visible());
    EXPECT_TRUE(bench.form.label("LabLock", 15).visible());
}

TEST(CheckPage, OfTheOldestFirmwareHasThreeLinesAndSaysNothing)
{
    CheckPageBench bench("Alder-32", "A");
    bench.status.double_speed_bit = true;
    bench.show();
    EXPECT_EQ(bench.label(1), "MCU Type is:                      Alder-32");
    EXPECT_EQ(bench.label(2), "MCU Firmware Version / MCU 固件版本号: 6.0A");
    EXPECT_EQ(bench.label(3), "Double speed (6 clock) / 双倍速:       Yes");
    EXPECT_EQ(bench.form.text_box("textMsg").text(), "");
    bench.status.fw_letter = "B";
    bench.show();
    EXPECT_EQ(bench.label(3), "Double speed (6 clock) / 双倍速:     Unknown");
}

TEST(CheckPage, StaysAsItIsForALetterWithoutAPage)
{
    CheckPageBench bench("Juniper-60Q", "I");
    bench.show();
    bench.status.fw_letter = "M";
    bench.show();
    EXPECT_EQ(bench.label(1), " MCU: Juniper-60Q  Firmware Version: 6.0I");
    EXPECT_EQ(bench.form.text_box("textMsg").text(), "");
}
