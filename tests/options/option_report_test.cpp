#include "options/panel_bench.h"

#include "options/option_report.h"
#include "options/status_report.h"

#include <algorithm>

using namespace vrk;

namespace {

// A chip of a stepping on the wire, its option bytes erased.
struct ReportBench : PanelBench {
    ReportBench(const char* model, const char* letter, bool english = true)
        : PanelBench(model, english)
    {
        shell.connected = shell.selected;
        shell.target.identified = true;
        shell.target.target_name = model;
        shell.target.fw_letter = letter;
        shell.target.fw_version = "6.0";
        for (std::int16_t& byte : shell.options.status_bytes)
            byte = 255;
    }
    std::string said()
    {
        form.textMsg.set_text("");
        report_options(shell);
        return form.textMsg.text();
    }
    long lines()
    {
        const std::string report = said();
        return std::count(report.begin(), report.end(), '\n');
    }
    std::string label(int index) const { return form.LabLock[index].caption(); }
};

} // namespace

TEST(PageOfALetter, IsThatWhoseRowsDescribeItsBits)
{
    EXPECT_EQ(option_page_of_letter("C").page, 2);
    EXPECT_EQ(option_page_of_letter("N").page, 2);
    EXPECT_EQ(option_page_of_letter("D").page, 4);
    EXPECT_EQ(option_page_of_letter("E").page, 4);
    EXPECT_EQ(option_page_of_letter("F").page, 4);
    EXPECT_EQ(option_page_of_letter("G").page, 4);
    EXPECT_EQ(option_page_of_letter("H").page, 5);
    EXPECT_EQ(option_page_of_letter("I").page, 6);
    EXPECT_EQ(option_page_of_letter("J").page, 7);
    EXPECT_EQ(option_page_of_letter("R").page, 7);
    EXPECT_EQ(option_page_of_letter("K").page, 8);
    EXPECT_EQ(option_page_of_letter("L").page, 9);
}

TEST(PageOfALetter, IsNoneForTheOthers)
{
    EXPECT_FALSE(option_page_of_letter("A").exists());
    EXPECT_FALSE(option_page_of_letter("B").exists());
    EXPECT_FALSE(option_page_of_letter("M").exists());
    EXPECT_FALSE(option_page_of_letter("O").exists());
    EXPECT_FALSE(option_page_of_letter("P").exists());
    EXPECT_FALSE(option_page_of_letter("Q").exists());
    EXPECT_FALSE(option_page_of_letter("").exists());
}

TEST(OptionReport, OfAnErasedJuniperTellsEveryChoice)
{
    ReportBench bench("Juniper-60Q", "I");
    EXPECT_EQ(bench.said(),
        "\nNext Power-Up-Reset, use External Crystal/Clock"
        "\nRESET/P4.7 is used as RESET"
        "\nPower-Up do not add extra Reset-Delay-Time"
        "\nOscillator Gain:                 High gain"
        "\nP1.0/P1.1 are not related to VRK ISP Programming"
        "\nNext ISP Programming Code,don't erase EEPROM data"
        "\nP4.6/RESET2 is used as P4.6/LVD"
        "\nWDT_CONTR be write-protected except CLR_WDT:NO"
        "\nWDT is enabled automatically during power-up:NO"
        "\nStop WatchDog Timer counting in Idle mode:  NO"
        "\nPrescalar value of WatchDog Timer: 256");
}

TEST(OptionReport, TellsTheOtherSideOfEveryBit)
{
    ReportBench bench("Juniper-60Q", "I");
    bench.shell.options.status_bytes[0] = 0xBE;
    bench.shell.options.status_bytes[1] = 0x3D;
    bench.shell.options.status_bytes[2] = 0x52;
    bench.shell.options.status_bytes[8] = 0xFC;
    EXPECT_EQ(bench.said(),
        "\nNext Power-Up-Reset, use On-Chip R/C clock"
        "\nRESET/P4.7 is used as P4.7"
        "\nPower-Up Reset,add extra Reset-Delay-Time"
        "\nOscillator Gain:                  Low gain"
        "\nP1.0/P1.1 need = 0/0 when Programming"
        "\nNext ISP Programming Code,erase EEPROM data to FF"
        "\nP4.6/RESET2 pin voltage <1.33V Reset"
        "\nWDT_CONTR be write-protected except CLR_WDT:YES"
        "\nWDT is enabled automatically during power-up:YES"
        "\nStop WatchDog Timer counting in Idle mode:  YES"
        "\nPrescalar value of WatchDog Timer: 8");
}

TEST(OptionReport, OfLetterCIsReadFromByte1)
{
    ReportBench bench("Rowan-4", "C", false);
    bench.shell.options.status_bytes[1] = 0xFE;
    EXPECT_EQ(bench.said(),
        "\nDouble speed / 双倍速:           6T/双倍速"
        "\n振荡放大器增益:                  full gain"
        "\n下次下载时 P1.0/P1.1 与下载无关"
        "\n内部扩展AUX-RAM:        允许访问(强烈推荐)"
        "\n下次下载用户应用程序时将数据Flash区擦除: NO"
        "\n用户软件启动内部看门狗后:     复位关看门狗"
        "\nALE pin 仍为 ALE");
}

// The last row of the longer English page lies beyond what is read: the pin that is still ALE is not said.
TEST(OptionReport, OfLetterCInEnglishEndsBeforeTheLastRow)
{
    ReportBench bench("Rowan-4", "N");
    EXPECT_EQ(bench.said().find("ALE pin"), std::string::npos);
    bench.shell.options.status_bytes[1] = 0xDF;
    EXPECT_TRUE(bench.said().ends_with("\nALE pin P4.5"));
}

// One line for each pair of the page and one for the divider; the unused code area has no words of its own.
TEST(OptionReport, OfEveryLetterHasALineForEachPairThatHasWords)
{
    const auto lines_of = [](const char* letter) { return ReportBench("Juniper-60Q", letter, false).lines(); };
    EXPECT_EQ(lines_of("C"), 7);
    EXPECT_EQ(lines_of("N"), 7);
    EXPECT_EQ(lines_of("D"), 8);
    EXPECT_EQ(lines_of("E"), 8);
    EXPECT_EQ(lines_of("F"), 8);
    EXPECT_EQ(lines_of("G"), 8);
    EXPECT_EQ(lines_of("H"), 10);
    EXPECT_EQ(lines_of("I"), 11);
    EXPECT_EQ(lines_of("J"), 11);
    EXPECT_EQ(lines_of("K"), 11);
    EXPECT_EQ(lines_of("L"), 11);
    EXPECT_EQ(lines_of("R"), 11);
    EXPECT_EQ(lines_of("A"), 0);
    EXPECT_EQ(lines_of("M"), 0);
    EXPECT_EQ(lines_of("Q"), 0);
}

TEST(OptionReport, TellsTheVoltagesOfLetterAndSupply)
{
    ReportBench bench("Elm-8", "E");
    EXPECT_NE(bench.said().find("\nLow Voltage Reset, when MCU-VCC < 3.3V\n"), std::string::npos);
    ReportBench oak("Oak-8L", "L", false);
    oak.shell.options.status_bytes[0] = 0xBF;
    EXPECT_NE(oak.said().find("\n电源电压低于 2.4V 复位\n"), std::string::npos);
    ReportBench willow("Willow-2", "J", false);
    EXPECT_NE(willow.said().find("\n电源电压低于 3.8V 复位\n"), std::string::npos);
    ReportBench larch("Larch-8", "J", false);
    EXPECT_NE(larch.said().find("\n电源电压低于 3.3V 复位\n"), std::string::npos);
}

TEST(OptionReport, OfLetterRTakesByte12ForByte8AndPutsItBack)
{
    ReportBench bench("Larch-8", "R");
    bench.shell.options.status_bytes[8] = 0x11;
    bench.shell.options.status_bytes[12] = 0xFE;
    EXPECT_NE(bench.said().find("P1.0/P1.1 need = 0/0 when Programming"), std::string::npos);
    EXPECT_EQ(bench.shell.options.status_bytes[8], 0x11);
    EXPECT_EQ(bench.shell.options.status_bytes[12], 0xFE);
}

TEST(OptionReport, SaysNothingForALetterWithoutAPage)
{
    ReportBench bench("Juniper-60Q", "M");
    EXPECT_EQ(bench.said(), "");
    bench.shell.target.fw_letter = "";
    EXPECT_EQ(bench.said(), "");
}

TEST(OptionReport, DividerOfTheWatchdogIsReadFromTheFieldThatIsWritten)
{
    ReportBench hazel("Hazel-1", "H");
    hazel.shell.options.status_bytes[3] = 0xFC;
    EXPECT_NE(hazel.said().find("Prescalar value of WatchDog Timer: 32"), std::string::npos);
    ReportBench maple("Maple-1", "K");
    maple.shell.options.status_bytes[2] = 0xF8;
    EXPECT_NE(maple.said().find("Prescalar value of WatchDog Timer: 2"), std::string::npos);
    EXPECT_EQ(maple.cell("WDT_Prescalar", OptionColumn::snapshot), "2");
}

TEST(OptionReport, MarksTheDividerWhereTheWatchdogRunsAtPowerUp)
{
    ReportBench bench("Maple-1", "K");
    bench.shell.options.status_bytes[2] = 0xDB;
    EXPECT_NE(bench.said().find("Prescalar value of WatchDog Timer: 16"), std::string::npos);
    EXPECT_EQ(bench.cell("WDT_Prescalar", OptionColumn::snapshot), "1");
}

TEST(OptionReport, ComesAfterTheHeader)
{
    ReportBench bench("Juniper-60Q", "I");
    bench.form.textMsg.set_text("");
    report_status(bench.shell);
    EXPECT_EQ(
        bench.form.textMsg.text().find("\nMCU Type is: Juniper-60Q\nMCU Firmware Version: 6.0I\nNext Power-Up"), 0U);
}

TEST(CheckPage, ShowsTheChipAndItsChoicesOnePerLabel)
{
    ReportBench bench("Juniper-60Q", "I");
    bench.said();
    EXPECT_EQ(bench.label(1), " MCU: Juniper-60Q  Firmware Version: 6.0I");
    EXPECT_EQ(bench.label(2), "Next Power-Up-Reset, use External Crystal/Clock");
    EXPECT_EQ(bench.label(11), "Stop WatchDog Timer counting in Idle mode:  NO");
    EXPECT_EQ(bench.label(12), "");
}

TEST(CheckPage, ForgetsTheChipBefore)
{
    ReportBench bench("Juniper-60Q", "I");
    bench.said();
    bench.shell.target.fw_letter = "C";
    bench.said();
    EXPECT_EQ(bench.label(10), "");
    clear_check_page(bench.shell);
    EXPECT_EQ(bench.label(1), "");
    EXPECT_TRUE(bench.form.LabLock[0].visible());
    EXPECT_TRUE(bench.form.LabLock[15].visible());
}

TEST(CheckPage, OfTheOldestFirmwareHasThreeLines)
{
    ReportBench bench("Alder-32", "A");
    bench.shell.link.rx_buffer[22] = 8;
    report_old_firmware(bench.shell);
    EXPECT_EQ(bench.label(1), "MCU Type is:                      Alder-32");
    EXPECT_EQ(bench.label(2), "MCU Firmware Version / MCU 固件版本号: 6.0A");
    EXPECT_EQ(bench.label(3), "Double speed (6 clock) / 双倍速:       Yes");
    bench.shell.target.fw_letter = "B";
    report_old_firmware(bench.shell);
    EXPECT_EQ(bench.label(3), "Double speed (6 clock) / 双倍速:     Unknown");
}

TEST(CheckPage, OfNewerFirmwareIsLeftAloneByTheOldOne)
{
    ReportBench bench("Juniper-60Q", "I");
    bench.said();
    report_old_firmware(bench.shell);
    EXPECT_EQ(bench.label(1), " MCU: Juniper-60Q  Firmware Version: 6.0I");
}
