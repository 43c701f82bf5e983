#include "options/status_frame.h"
#include "options/status_report.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

using namespace vrk;

namespace {

using Frame = std::array<std::uint8_t, 100>;

// Every byte is its own index, but for the length.
Frame counting_frame(std::uint8_t length)
{
    Frame frame{};
    for (std::size_t i = 0; i < frame.size(); ++i)
        frame[i] = static_cast<std::uint8_t>(i);
    frame[2] = length;
    return frame;
}

struct StatusBench {
    std::string letter;
    std::string version;
    Frame frame;
    bool sixteen_rows = false;
    std::uint8_t option_row_16 = 0;
    StatusBytes rows{};
    ToldRows told;

    explicit StatusBench(const char* its_letter, const char* its_version = "6.3", std::uint8_t length = 62)
        : letter(its_letter)
        , version(its_version)
        , frame(counting_frame(length))
    {
    }
    void decode(StatusLayout layout = StatusLayout::power_up)
    {
        const std::size_t fields_end = frame[2] < 2 ? 0 : frame[2] - 2U;
        told = decode_status_frame(
            std::span{frame}.first(fields_end), layout, letter, version, sixteen_rows, option_row_16, rows);
    }
};

// What a report in one language shows of some lines.
std::vector<std::string> shown(const std::vector<Line>& lines, bool english)
{
    std::vector<std::string> texts;
    for (const Line& line : lines) {
        if (line.is_in(english))
            texts.push_back(line.in(english));
    }
    return texts;
}

ChipStatus chip(const char* name, const char* version, const char* letter)
{
    ChipStatus status;
    status.target_name = name;
    status.fw_version = version;
    status.fw_letter = letter;
    return status;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(FirmwareVersion, IsTwoDigitsWithAPointBetween)
{
    EXPECT_EQ(decode_version(0x36), "3.6");
    EXPECT_EQ(decode_version(0x32), "3.2");
    EXPECT_EQ(decode_version(0x4A), "4.A");
}

TEST(FirmwareVersion, ZeroIsNoVersion) { EXPECT_EQ(decode_version(0x00), ""); }

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
    bench.decode();
    EXPECT_EQ(bench.rows[0], 22);
    EXPECT_EQ(bench.rows[1], 0);
}

TEST(StatusBytes, OfLetterCAreOneByteInRow1)
{
    StatusBench bench("C");
    bench.decode();
    EXPECT_EQ(bench.rows[1], 22);
    EXPECT_EQ(bench.rows[0], 0);
}

TEST(StatusBytes, OfLetterIAndAboveFillSixRows)
{
    StatusBench bench("I");
    bench.decode();
    EXPECT_EQ(bench.rows[0], 26);
    EXPECT_EQ(bench.rows[1], 27);
    EXPECT_EQ(bench.rows[2], 28);
    EXPECT_EQ(bench.rows[3], 29);
    EXPECT_EQ(bench.rows[8], 30);
    EXPECT_EQ(bench.rows[9], 31);
}

TEST(StatusBytes, OfTheNewerOrderStandInTheSecondWindow)
{
    StatusBench bench("D", "5.5");
    bench.decode();
    EXPECT_EQ(bench.rows[0], 32);
    EXPECT_EQ(bench.rows[9], 37);
}

TEST(StatusBytes, OfLetterHFollowTheVersion)
{
    StatusBench old_order("H", "5.7");
    old_order.decode();
    EXPECT_EQ(old_order.rows[2], 26);
    EXPECT_EQ(old_order.rows[11], 30);
    EXPECT_EQ(old_order.rows[0], 31);

    StatusBench new_order("H", "5.8");
    new_order.decode();
    EXPECT_EQ(new_order.rows[0], 32);
}

TEST(StatusBytes, OfTheShortLayoutHaveNoRow0ButWithLetterH)
{
    StatusBench bench("G", "5.7");
    bench.decode();
    EXPECT_EQ(bench.rows[0], 255);
    EXPECT_EQ(bench.rows[2], 26);
    EXPECT_EQ(bench.rows[3], 27);
    EXPECT_EQ(bench.rows[8], 28);
    EXPECT_EQ(bench.rows[10], 29);
    EXPECT_EQ(bench.rows[11], 30);
}

TEST(StatusBytes, OfTheSixteenRowFamiliesAreSixteenWhateverTheLetter)
{
    StatusBench bench("D");
    bench.sixteen_rows = true;
    bench.decode();
    EXPECT_EQ(bench.rows[0], 26);
    EXPECT_EQ(bench.rows[15], 41);
}

TEST(StatusBytes, TakeRow16FromTheOptionWanted)
{
    StatusBench bench("I");
    bench.option_row_16 = 77;
    bench.decode();
    EXPECT_EQ(bench.rows[16], 77);
}

TEST(StatusBytes, OfTheAnswerStandFourteenPlacesEarlier)
{
    StatusBench newer("I");
    newer.decode(StatusLayout::answer);
    EXPECT_EQ(newer.rows[0], 12);
    EXPECT_EQ(newer.rows[9], 17);

    StatusBench older("C");
    older.decode(StatusLayout::answer);
    EXPECT_EQ(older.rows[1], 12);

    StatusBench extended("D", "5.5");
    extended.decode(StatusLayout::answer);
    EXPECT_EQ(extended.rows[0], 18);
}

TEST(StatusBytes, OfAFrameThatIsTooShortStayAsTheyWere)
{
    StatusBench bench("I", "6.3", 30);
    bench.rows[2] = 99;
    bench.decode();
    EXPECT_EQ(bench.rows[1], 27);
    EXPECT_EQ(bench.rows[2], 99);
}

// Bytes that a length promises and a frame lacks are not read.
TEST(StatusBytes, OfABrokenOffFrameStayAsTheyWere)
{
    const Frame frame = counting_frame(62);
    StatusBytes rows{};
    decode_status_frame(std::span{frame}.first(28), StatusLayout::power_up, "I", "6.3", false, 0, rows);
    EXPECT_EQ(rows[1], 27);
    EXPECT_EQ(rows[2], 0);
    decode_status_frame({}, StatusLayout::power_up, "I", "6.3", false, 5, rows);
    EXPECT_EQ(rows[16], 5);
}

TEST(FirmwareLines, NameModelAndFirmwareInBothLanguages)
{
    const auto lines = firmware_lines(chip("Juniper-60Q", "6.3", "I"));
    EXPECT_EQ(shown(lines, false),
        (Texts{"MCU Type is: Juniper-60Q", "MCU Firmware Version: 6.3I", "Chinese:MCU 固件版本号: 6.3I"}));
    EXPECT_EQ(shown(lines, true), (Texts{"MCU Type is: Juniper-60Q", "MCU Firmware Version: 6.3I"}));
}

TEST(FirmwareLines, OfAnUnknownChipInEnglishAreOne)
{
    EXPECT_EQ(shown(firmware_lines(chip("", "", "Z")), true), Texts{"MCU Firmware Version: Z"});
}

TEST(FirmwareLines, TellTheDoubleSpeedOfTheOldestLetters)
{
    ChipStatus doubled = chip("Alder-32", "3.6", "A");
    EXPECT_EQ(shown(firmware_lines(doubled), true).back(), "Double speed: No");
    doubled.double_speed_bit = true;
    EXPECT_EQ(shown(firmware_lines(doubled), true).back(), "Double speed: Yes");
    EXPECT_EQ(shown(firmware_lines(chip("Alder-32", "3.6", "B")), true).back(), "Double speed: Unknown");
}

TEST(FirmwareLines, TakeTheDoubleSpeedFromBit3OfByte22)
{
    Frame frame{};
    EXPECT_FALSE(has_double_speed_bit(frame));
    frame[22] = 8;
    EXPECT_TRUE(has_double_speed_bit(frame));
    frame[22] = 0xF7;
    EXPECT_FALSE(has_double_speed_bit(frame));
}

TEST(RcReport, NeedsVersion63AndALongEnoughFrame)
{
    EXPECT_TRUE(enable_disp_RC_frequency("6.3", 57, 0));
    EXPECT_FALSE(enable_disp_RC_frequency("6.3", 56, 0));
    EXPECT_FALSE(enable_disp_RC_frequency("6.2", 57, 0));
    EXPECT_TRUE(enable_disp_RC_frequency("6.3", 14, 1));
    EXPECT_FALSE(enable_disp_RC_frequency("6.3", 13, 1));
}

TEST(RcReport, SaysNothingOfAFrequencyBelow2Megahertz)
{
    EXPECT_TRUE(rc_frequency_lines(11104192, 1999999, false).empty());
    EXPECT_TRUE(rc_frequency_lines(1999999, 11059200, false).empty());
    EXPECT_TRUE(rc_frequency_lines(11104192, 0, true).empty());
}

TEST(RcReport, ReadsItsFiguresTheHighestByteFirst)
{
    Frame frame{};
    const std::uint8_t figures[] = {0x00, 0xA9, 0x6F, 0xC0, 0x00, 0xA8, 0xC0, 0x00};
    std::copy(std::begin(figures), std::end(figures), frame.begin() + 46);
    EXPECT_EQ(rc_frequencies(frame).last, 11104192);
    EXPECT_EQ(rc_frequencies(frame).factory, 11059200);
    EXPECT_EQ(rc_frequencies(std::span{frame}.first(48)).last, 0x00A90000);
}

TEST(RcReport, GivesFactoryAndLastFrequencyAndTheErrorBetween)
{
    const auto lines = rc_frequency_lines(11104192, 11059200, false);
    EXPECT_EQ(shown(lines, false),
        (Texts{"", "出厂 RC 振荡器频率: 11.0592MHz.", "上次使用 RC 振荡器下载时的频率: 11.104192MHz.",
            "上次使用 RC 振荡器下载时的频率误差: 0.4%", ""}));
    EXPECT_TRUE(shown(lines, true).empty());
}

TEST(RcReport, AfterADownloadIsOfThisOne)
{
    EXPECT_EQ(shown(rc_frequency_lines(11104192, 11059200, true), false),
        (Texts{"", "出厂 RC 振荡器频率: 11.0592MHz.", "本次使用 RC 振荡器下载时的频率: 11.104192MHz.",
            "本次使用 RC 振荡器下载时的频率误差: 0.4%", ""}));
}

TEST(SerialReport, JoinsSevenBytesAsHexadecimalDigits)
{
    EXPECT_EQ(serial_digits(counting_frame(14)), "0405060708090A");
    EXPECT_EQ(shown({serial_line("0405060708090A")}, false), Texts{"MCU 出厂序列号: 0405060708090A"});
    EXPECT_TRUE(shown({serial_line("0405060708090A")}, true).empty());
}
