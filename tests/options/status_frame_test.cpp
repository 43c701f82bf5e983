#include "options/status_frame.h"
#include "options/status_report.h"

#include "platform/scripted_dialogs.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

// A form with a status frame in rx_buffer whose every byte from 20 on is its own index.
struct StatusBench {
    sim::VirtualLoop loop;
    sim::SimPortDriver ports{loop};
    ScriptedDialogs dialogs;
    MemoryStore settings;
    Shell shell{Platform{loop, ports, dialogs, settings}};
    MainForm& form = shell.form;

    explicit StatusBench(const char* letter, const char* version = "6.3", std::uint8_t length = 62)
    {
        for (std::size_t i = 0; i < 100; ++i)
            shell.link.rx_buffer[i] = static_cast<std::uint8_t>(i);
        shell.link.rx_buffer[2] = length;
        shell.target.fw_letter = letter;
        shell.target.fw_version = version;
    }
    std::int16_t row(int index) const { return shell.options.status_bytes[index]; }
};

}

TEST(FirmwareVersion, IsTwoDigitsWithAPointBetween)
{
    EXPECT_EQ(decode_version(0x36), "3.6");
    EXPECT_EQ(decode_version(0x32), "3.2");
    EXPECT_EQ(decode_version(0x4A), "4.A");
}

TEST(FirmwareVersion, ZeroIsNoVersion)
{
    EXPECT_EQ(decode_version(0x00), "");
}

TEST(OptionOrder, IsTheNewerOneByLetterAndVersion)
{
    EXPECT_EQ(Option_Orde("G", "5.7"), 0);
    EXPECT_EQ(Option_Orde("G", "5.8"), 5);
    EXPECT_EQ(Option_Orde("D", "5.4"), 0);
    EXPECT_EQ(Option_Orde("D", "5.5"), 5);
    EXPECT_EQ(Option_Orde("E", "5.5"), 5);
    EXPECT_EQ(Option_Orde("F", "5.5"), 5);
    EXPECT_EQ(Option_Orde("H", "9.9"), 0);
}

TEST(StatusBytes, OfLettersAAndBAreOneByteInRow0)
{
    StatusBench bench("A");
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(0), 22);
    EXPECT_EQ(bench.row(1), 0);
}

TEST(StatusBytes, OfLetterCAreOneByteInRow1)
{
    StatusBench bench("C");
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(1), 22);
    EXPECT_EQ(bench.row(0), 0);
}

TEST(StatusBytes, OfLetterIAndAboveFillSixRows)
{
    StatusBench bench("I");
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(0), 26);
    EXPECT_EQ(bench.row(1), 27);
    EXPECT_EQ(bench.row(2), 28);
    EXPECT_EQ(bench.row(3), 29);
    EXPECT_EQ(bench.row(8), 30);
    EXPECT_EQ(bench.row(9), 31);
}

TEST(StatusBytes, OfTheNewerOrderStandInTheSecondWindow)
{
    StatusBench bench("D", "5.5");
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(0), 32);
    EXPECT_EQ(bench.row(9), 37);
}

TEST(StatusBytes, OfLetterHFollowTheVersion)
{
    StatusBench old_order("H", "5.7");
    decode_status_frame(old_order.shell, StatusLayout::power_up);
    EXPECT_EQ(old_order.row(2), 26);
    EXPECT_EQ(old_order.row(11), 30);
    EXPECT_EQ(old_order.row(0), 31);

    StatusBench new_order("H", "5.8");
    decode_status_frame(new_order.shell, StatusLayout::power_up);
    EXPECT_EQ(new_order.row(0), 32);
}

TEST(StatusBytes, OfTheShortLayoutHaveNoRow0ButWithLetterH)
{
    StatusBench bench("G", "5.7");
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(0), 255);
    EXPECT_EQ(bench.row(2), 26);
    EXPECT_EQ(bench.row(3), 27);
    EXPECT_EQ(bench.row(8), 28);
    EXPECT_EQ(bench.row(10), 29);
    EXPECT_EQ(bench.row(11), 30);
}

TEST(StatusBytes, OfTheSixteenRowFamiliesAreSixteenWhateverTheLetter)
{
    StatusBench bench("D");
    bench.shell.target.identified = true;
    bench.shell.connected.series = 16;
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(0), 26);
    EXPECT_EQ(bench.row(15), 41);
}

TEST(StatusBytes, TakeRow16FromTheOptionWanted)
{
    StatusBench bench("I");
    bench.shell.options.option_bytes[16][0] = 77;
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(16), 77);
}

TEST(StatusBytes, OfTheAnswerStandFourteenPlacesEarlier)
{
    StatusBench newer("I");
    decode_status_frame(newer.shell, StatusLayout::answer);
    EXPECT_EQ(newer.row(0), 12);
    EXPECT_EQ(newer.row(9), 17);

    StatusBench older("C");
    decode_status_frame(older.shell, StatusLayout::answer);
    EXPECT_EQ(older.row(1), 12);

    StatusBench extended("D", "5.5");
    decode_status_frame(extended.shell, StatusLayout::answer);
    EXPECT_EQ(extended.row(0), 18);
}

TEST(StatusBytes, OfAFrameThatIsTooShortStayAsTheyWere)
{
    StatusBench bench("I", "6.3", 30);
    bench.shell.options.status_bytes[2] = 99;
    decode_status_frame(bench.shell, StatusLayout::power_up);
    EXPECT_EQ(bench.row(1), 27);
    EXPECT_EQ(bench.row(2), 99);
}

TEST(StatusReport, NamesModelAndFirmwareInBothLanguages)
{
    StatusBench bench("I", "6.3", 30);
    bench.shell.target.target_name = "Juniper-60Q";
    report_status(bench.shell);
    EXPECT_EQ(bench.form.textMsg.text(),
        "\nMCU Type is: Juniper-60Q\nMCU Firmware Version: 6.3I\nChinese:MCU 固件版本号: 6.3I");
}

TEST(StatusReport, OfAnUnknownChipInEnglishIsOneLine)
{
    StatusBench bench("Z", "", 30);
    bench.shell.language_is_english = true;
    report_status(bench.shell);
    EXPECT_EQ(bench.form.textMsg.text(), "\nMCU Firmware Version: Z");
}

TEST(StatusReport, TellsTheDoubleSpeedOfTheOldestLetters)
{
    StatusBench doubled("A", "3.6", 30);
    doubled.shell.link.rx_buffer[22] = 8;
    report_status(doubled.shell);
    EXPECT_TRUE(doubled.form.textMsg.text().ends_with("Double speed: Yes"));

    StatusBench unknown("B", "3.6", 30);
    report_status(unknown.shell);
    EXPECT_TRUE(unknown.form.textMsg.text().ends_with("Double speed: Unknown"));
}

TEST(RcReport, NeedsVersion63AndALongEnoughFrame)
{
    EXPECT_TRUE(enable_disp_RC_frequency(StatusBench("I", "6.3", 57).shell, 0));
    EXPECT_FALSE(enable_disp_RC_frequency(StatusBench("I", "6.3", 56).shell, 0));
    EXPECT_FALSE(enable_disp_RC_frequency(StatusBench("I", "6.2", 57).shell, 0));
    EXPECT_TRUE(enable_disp_RC_frequency(StatusBench("I", "6.3", 14).shell, 1));
    EXPECT_FALSE(enable_disp_RC_frequency(StatusBench("I", "6.3", 13).shell, 1));
}

TEST(RcReport, SaysNothingOfAFactoryFrequencyBelow2Megahertz)
{
    StatusBench bench("I");
    for (std::size_t i = 50; i < 54; ++i)
        bench.shell.link.rx_buffer[i] = 0;
    report_rc_frequency(bench.shell, false);
    EXPECT_EQ(bench.form.textMsg.text(), "");
}

TEST(RcReport, GivesFactoryAndLastFrequencyAndTheErrorBetween)
{
    StatusBench bench("I");
    const std::uint8_t figures[] = {0x00, 0xA9, 0x6F, 0xC0, 0x00, 0xA8, 0xC0, 0x00}; // 11104192 and 11059200
    std::copy(std::begin(figures), std::end(figures), bench.shell.link.rx_buffer.begin() + 46);
    report_rc_frequency(bench.shell, false);
    EXPECT_EQ(bench.form.textMsg.text(),
        "\n\n出厂 RC 振荡器频率: 11.0592MHz.\n上次使用 RC 振荡器下载时的频率: 11.104192MHz."
        "\n上次使用 RC 振荡器下载时的频率误差: 0.4%\n");
}

TEST(SerialReport, JoinsSevenBytesAsHexadecimalDigits)
{
    StatusBench bench("I");
    report_serial(bench.shell);
    EXPECT_EQ(bench.shell.target.serial_number, "0405060708090A");
    EXPECT_EQ(bench.form.textMsg.text(), "\nMCU 出厂序列号: 0405060708090A");
}
