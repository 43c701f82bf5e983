#include "options/chip_bench.h"

using namespace vrk;

namespace {

using Lines = std::vector<std::string>;

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
    ChipBench bench("Juniper-60Q", "I");
    EXPECT_EQ(bench.lines(),
        (Lines{"Next Power-Up-Reset, use External Crystal/Clock", "RESET/P4.7 is used as RESET",
            "Power-Up do not add extra Reset-Delay-Time", "Oscillator Gain:                 High gain",
            "P1.0/P1.1 are not related to VRK ISP Programming", "Next ISP Programming Code,don't erase EEPROM data",
            "P4.6/RESET2 is used as P4.6/LVD", "WDT_CONTR be write-protected except CLR_WDT:NO",
            "WDT is enabled automatically during power-up:NO", "Stop WatchDog Timer counting in Idle mode:  NO",
            "Prescalar value of WatchDog Timer: 256"}));
}

TEST(OptionReport, TellsTheOtherSideOfEveryBit)
{
    ChipBench bench("Juniper-60Q", "I");
    bench.status.status_bytes[0] = 0xBE;
    bench.status.status_bytes[1] = 0x3D;
    bench.status.status_bytes[2] = 0x52;
    bench.status.status_bytes[8] = 0xFC;
    EXPECT_EQ(bench.lines(),
        (Lines{"Next Power-Up-Reset, use On-Chip R/C clock", "RESET/P4.7 is used as P4.7",
            "Power-Up Reset,add extra Reset-Delay-Time", "Oscillator Gain:                  Low gain",
            "P1.0/P1.1 need = 0/0 when Programming", "Next ISP Programming Code,erase EEPROM data to FF",
            "P4.6/RESET2 pin voltage <1.33V Reset", "WDT_CONTR be write-protected except CLR_WDT:YES",
            "WDT is enabled automatically during power-up:YES", "Stop WatchDog Timer counting in Idle mode:  YES",
            "Prescalar value of WatchDog Timer: 8"}));
}

TEST(OptionReport, OfLetterCIsReadFromByte1)
{
    ChipBench bench("Rowan-4", "C", false);
    bench.status.status_bytes[1] = 0xFE;
    EXPECT_EQ(bench.lines(),
        (Lines{"Double speed / 双倍速:           6T/双倍速", "振荡放大器增益:                  full gain",
            "下次下载时 P1.0/P1.1 与下载无关", "内部扩展AUX-RAM:        允许访问(强烈推荐)",
            "下次下载用户应用程序时将数据Flash区擦除: NO", "用户软件启动内部看门狗后:     复位关看门狗",
            "ALE pin 仍为 ALE"}));
}

// The last row of the longer English page lies beyond what is read: the pin that is still ALE is not said.
TEST(OptionReport, OfLetterCInEnglishEndsBeforeTheLastRow)
{
    ChipBench bench("Rowan-4", "N");
    EXPECT_EQ(bench.lines().back().find("ALE"), std::string::npos);
    EXPECT_EQ(bench.lines().size(), 6U);
    bench.status.status_bytes[1] = 0xDF;
    EXPECT_EQ(bench.lines().back(), "ALE pin P4.5");
}

// One line for each pair of the page and one for the divider; the unused code area has no words of its own.
TEST(OptionReport, OfEveryLetterHasALineForEachPairThatHasWords)
{
    const auto lines_of = [](const char* letter) { return ChipBench("Juniper-60Q", letter, false).lines().size(); };
    EXPECT_EQ(lines_of("C"), 7U);
    EXPECT_EQ(lines_of("N"), 7U);
    EXPECT_EQ(lines_of("D"), 8U);
    EXPECT_EQ(lines_of("E"), 8U);
    EXPECT_EQ(lines_of("F"), 8U);
    EXPECT_EQ(lines_of("G"), 8U);
    EXPECT_EQ(lines_of("H"), 10U);
    EXPECT_EQ(lines_of("I"), 11U);
    EXPECT_EQ(lines_of("J"), 11U);
    EXPECT_EQ(lines_of("K"), 11U);
    EXPECT_EQ(lines_of("L"), 11U);
    EXPECT_EQ(lines_of("R"), 11U);
    EXPECT_EQ(lines_of("A"), 0U);
    EXPECT_EQ(lines_of("M"), 0U);
    EXPECT_EQ(lines_of("Q"), 0U);
}

TEST(OptionReport, TellsTheVoltagesOfLetterAndSupply)
{
    ChipBench bench("Elm-8", "E");
    EXPECT_TRUE(bench.says("Low Voltage Reset, when MCU-VCC < 3.3V"));
    ChipBench oak("Oak-8L", "L", false);
    oak.status.status_bytes[0] = 0xBF;
    EXPECT_TRUE(oak.says("电源电压低于 2.4V 复位"));
    ChipBench willow("Willow-2", "J", false);
    EXPECT_TRUE(willow.says("电源电压低于 3.8V 复位"));
    ChipBench larch("Larch-8", "J", false);
    EXPECT_TRUE(larch.says("电源电压低于 3.3V 复位"));
}

TEST(OptionReport, OfLetterRTakesByte12ForByte8AndPutsItBack)
{
    ChipBench bench("Larch-8", "R");
    bench.status.status_bytes[8] = 0x11;
    bench.status.status_bytes[12] = 0xFE;
    EXPECT_TRUE(bench.says("P1.0/P1.1 need = 0/0 when Programming"));
    EXPECT_EQ(bench.status.status_bytes[8], 0x11);
    EXPECT_EQ(bench.status.status_bytes[12], 0xFE);
}

TEST(OptionReport, SaysNothingForALetterWithoutAPage)
{
    ChipBench bench("Juniper-60Q", "M");
    EXPECT_TRUE(bench.lines().empty());
    bench.status.fw_letter = "";
    EXPECT_TRUE(bench.lines().empty());
}

TEST(OptionReport, DividerOfTheWatchdogIsReadFromTheFieldThatIsWritten)
{
    ChipBench hazel("Hazel-1", "H");
    hazel.status.status_bytes[3] = 0xFC;
    EXPECT_TRUE(hazel.says("Prescalar value of WatchDog Timer: 32"));
    ChipBench maple("Maple-1", "K");
    maple.status.status_bytes[2] = 0xF8;
    EXPECT_TRUE(maple.says("Prescalar value of WatchDog Timer: 2"));
    EXPECT_EQ(maple.cell("WDT_Prescalar", OptionColumn::snapshot), "2");
}

TEST(OptionReport, MarksTheDividerWhereTheWatchdogRunsAtPowerUp)
{
    ChipBench bench("Maple-1", "K");
    bench.status.status_bytes[2] = 0xDB;
    EXPECT_TRUE(bench.says("Prescalar value of WatchDog Timer: 16"));
    EXPECT_EQ(bench.cell("WDT_Prescalar", OptionColumn::snapshot), "1");
}

TEST(OptionReport, LeavesTheRowsOfThePageMarkedByTheirBits)
{
    ChipBench bench("Juniper-60Q", "I");
    bench.lines();
    EXPECT_EQ(bench.cell("Exterior_Oscillate", OptionColumn::snapshot), "1");
    EXPECT_EQ(bench.cell("Interior_Oscillate", OptionColumn::snapshot), "0");
}

TEST(CheckPageLines, AreTheChipAndItsFirstTenChoices)
{
    ChipBench bench("Juniper-60Q", "I");
    const Lines page = bench.check_page();
    ASSERT_EQ(page.size(), 11U);
    EXPECT_EQ(page[0], " MCU: Juniper-60Q  Firmware Version: 6.0I");
    EXPECT_EQ(page[1], "Next Power-Up-Reset, use External Crystal/Clock");
    EXPECT_EQ(page[10], "Stop WatchDog Timer counting in Idle mode:  NO");
}

TEST(CheckPageLines, AreFewerWhereTheChipHasFewerChoices)
{
    ChipBench bench("Rowan-4", "C", false);
    const Lines page = bench.check_page();
    ASSERT_EQ(page.size(), 8U);
    EXPECT_EQ(page[0], " MCU: Rowan-4   固件版本号: 6.0C");
}

TEST(CheckPageLines, OfTheOldestFirmwareAreThree)
{
    ChipBench bench("Alder-32", "A");
    bench.status.double_speed_bit = true;
    EXPECT_EQ(bench.check_page(),
        (Lines{"MCU Type is:                      Alder-32", "MCU Firmware Version / MCU 固件版本号: 6.0A",
            "Double speed (6 clock) / 双倍速:       Yes"}));
    bench.status.double_speed_bit = false;
    EXPECT_EQ(bench.check_page()[2], "Double speed (6 clock) / 双倍速:        No");
    bench.status.fw_letter = "B";
    EXPECT_EQ(bench.check_page()[2], "Double speed (6 clock) / 双倍速:     Unknown");
}

TEST(CheckPageLines, AreNoneForALetterWithoutAPage)
{
    EXPECT_TRUE(ChipBench("Juniper-60Q", "M").check_page().empty());
    EXPECT_TRUE(ChipBench("Juniper-60Q", "").check_page().empty());
}
