#include "link/baud.h"
#include "link/clock.h"
#include "session/write_range.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

constexpr std::int32_t newer = 7;
constexpr std::int32_t older = 2;

BaudChoice choose(double clock_hz, std::int32_t series, std::int32_t max_baud = 115200, std::int16_t index = 100)
{
    BaudChoice choice;
    choice.index = index;
    calculate_baud(clock_hz, series, max_baud, choice);
    return choice;
}

} // namespace

TEST(CalculateBaud, TakesTheFastestAndTheSmallestDividerOnANewerChip)
{
    const BaudChoice choice = choose(11059200, newer);
    EXPECT_EQ(choice.index, 11);
    EXPECT_EQ(choice.baud, 115200);
    EXPECT_EQ(choice.mode, 192);
    EXPECT_EQ(choice.setting, 6);
    EXPECT_EQ(choice.error, 0);
}

TEST(CalculateBaud, AnOlderChipNeedsASettingAboveTwo)
{
    // 11.0592 MHz / 32 gives exactly 3 at 115200; 7.3728 MHz gives 2, which is too small, and then 4 at 57600.
    EXPECT_EQ(choose(11059200, older).baud, 115200);
    EXPECT_EQ(choose(11059200, older).setting, 3);
    EXPECT_EQ(choose(7372800, older).baud, 57600);
    EXPECT_EQ(choose(7372800, older).setting, 4);
}

TEST(CalculateBaud, LeavesTheModeAloneOnAnOlderChip)
{
    BaudChoice choice;
    choice.mode = 77;
    calculate_baud(11059200, older, 115200, choice);
    EXPECT_EQ(choice.mode, 77);
}

TEST(CalculateBaud, TheRcGroupCountsAsOlder) { EXPECT_EQ(choose(11059200, 12).setting, 3); }

TEST(CalculateBaud, StaysAtOrBelowTheMaximum)
{
    EXPECT_EQ(choose(11059200, newer, 57600).baud, 57600);
    EXPECT_EQ(choose(11059200, newer, 12000).baud, 11520);
}

TEST(CalculateBaud, ClampsAStartIndexOf100To11)
{
    EXPECT_EQ(choose(11059200, newer, 115200, 100).index, 11);
    EXPECT_EQ(choose(11059200, newer, 115200, 10).baud, 57600);
}

TEST(CalculateBaud, AnIndexOrAClockOfZeroGivesNothing)
{
    EXPECT_EQ(choose(11059200, newer, 115200, 0).setting, 0);
    EXPECT_EQ(choose(0, newer).setting, 0);
    EXPECT_EQ(choose(0, newer).baud, 0);
}

TEST(CalculateBaud, AClockTooLowForAnyRowGivesSettingZero)
{
    EXPECT_EQ(choose(9000, newer).setting, 0);
    EXPECT_EQ(choose(60000, older).setting, 0);
}

// 16 x 115200 x 1.025 is a clock whose only error at 115200 is 2.5 %.
TEST(CalculateBaud, AnErrorOfExactlyTwoAndAHalfPercentIsTooMuchForANewerChip)
{
    EXPECT_LT(choose(16 * 115200 * 1.025, newer).baud, 115200);
    EXPECT_EQ(choose(16 * 115200 * 1.0249, newer).baud, 115200);
}

// Divisor 3 at 1200 baud: 1248 is 4 % off, exactly, and no other row is slow enough.
TEST(CalculateBaud, AnErrorOfExactlyFourPercentIsTooMuchForAnOlderChip)
{
    EXPECT_EQ(choose(32 * 3 * 1248, older).setting, 0);
    EXPECT_EQ(choose(32 * 3 * 1247, older).setting, 3);
}

TEST(Reload, IsTwoBytesOnAnOlderChipAndModeAndLowByteOnANewerOne)
{
    EXPECT_EQ(reload_for(3, 0, false).p1, 0xFF);
    EXPECT_EQ(reload_for(3, 0, false).p2, 0xFD);
    EXPECT_EQ(reload_for(6, 192, true).p1, 192);
    EXPECT_EQ(reload_for(6, 192, true).p2, 250);
    EXPECT_EQ(reload_for(600, 0, false).p1, 0xFD);
}

TEST(SpeedPairs, GiveTheSameBaudAtBothSpeeds)
{
    EXPECT_EQ(speed_pair(65536 - 3, false).reload, 65536 - 3);
    EXPECT_EQ(speed_pair(65536 - 3, false).reload2, 65536 - 6);
    EXPECT_EQ(speed_pair(65536 - 6, true).reload2, 65536 - 6);
    EXPECT_EQ(speed_pair(65536 - 6, true).reload, 65536 - 3);
    EXPECT_EQ(speed_pair(65536 - 5, true).reload, 65536 - 2); // 2.5 goes to the even 2
}

TEST(PauseByte, OfSeries1At2400BaudIs140) { EXPECT_EQ(pause_byte(115200, 2400, 1, 11059200, false), 140); }

TEST(PauseByte, OfTheOtherSeriesFollowsTheHandshakeBaud)
{
    EXPECT_EQ(pause_byte(115200, 9600, 7, 11059200, false), 120);
    EXPECT_EQ(pause_byte(115200, 4800, 7, 11059200, false), 80);
    EXPECT_EQ(pause_byte(115200, 2400, 7, 11059200, false), 45);
    EXPECT_EQ(pause_byte(115200, 1200, 7, 11059200, false), 40);
    EXPECT_EQ(pause_byte(115200, 19200, 7, 11059200, false), 200);
}

TEST(PauseByte, DoublesAbove68MegahertzAndEndsAt255)
{
    EXPECT_EQ(pause_byte(115200, 2400, 7, 68000001, false), 90);
    EXPECT_EQ(pause_byte(115200, 9600, 7, 70000000, false), 240);
    EXPECT_EQ(pause_byte(115200, 19200, 7, 70000000, false), 255);
}

TEST(PauseByte, OfSeries1At1200HasAFigureOfItsOwnWhenTheBaudIsSet)
{
    EXPECT_EQ(pause_byte(115200, 1200, 1, 11059200, false), 80);
    EXPECT_EQ(pause_byte(115200, 1200, 1, 11059200, true), 90);
}

TEST(WaitStates, FollowTheClockByFamily)
{
    EXPECT_EQ(wait_state_code(4999999, 1), 0x83);
    EXPECT_EQ(wait_state_code(5000000, 1), 0x82);
    EXPECT_EQ(wait_state_code(29999999, 1), 0x81);
    EXPECT_EQ(wait_state_code(30000000, 1), 0x80);
    EXPECT_EQ(wait_state_code(5999999, 2), 0x83);
    EXPECT_EQ(wait_state_code(10999999, 13), 0x82);
    EXPECT_EQ(wait_state_code(19999999, 2), 0x81);
    EXPECT_EQ(wait_state_code(20000000, 2), 0x80);
    EXPECT_EQ(wait_state_code(1999999, 7), 0x87);
    EXPECT_EQ(wait_state_code(12999999, 7), 0x83);
    EXPECT_EQ(wait_state_code(24999999, 7), 0x81);
    EXPECT_EQ(wait_state_code(25000000, 7), 0x80);
}

TEST(DelayCode, FallsWithTheClock)
{
    EXPECT_EQ(delay_code(3000000), 43);
    EXPECT_EQ(delay_code(12000000), 8);
    EXPECT_EQ(delay_code(16000000), 5);
    EXPECT_EQ(delay_code(20000000), 4);
    EXPECT_EQ(delay_code(22000000), 3);
    EXPECT_EQ(delay_code(24000000), 2);
    EXPECT_EQ(delay_code(1000), 255);
}

TEST(LeavingTime, IsLongerForTheTestThanForTheSetting)
{
    EXPECT_EQ(leaving_ms(2400, 7, false), 160);
    EXPECT_EQ(leaving_ms(2400, 7, true), 60);
    EXPECT_EQ(leaving_ms(57600, 7, false), 150);
    EXPECT_EQ(leaving_ms(57600, 7, true), 120);
    EXPECT_EQ(leaving_ms(4800, 1, false), 40);
    EXPECT_EQ(leaving_ms(4800, 1, true), 20);
}

TEST(MeasuredClock, OfNoCountsAt9600IsSixTimesTheFactor) { EXPECT_EQ(measured_clock_hz(0, 9600, false), 6 * 2068); }

TEST(MeasuredClock, ScalesTheCountsByTheBaud)
{
    EXPECT_EQ(measured_clock_hz(8 * 1000, 2400, false), (2000 + 6) * 2063);
    EXPECT_EQ(measured_clock_hz(8 * 1000, 1200, false), (1000 + 6) * 2061);
}

TEST(MeasuredClock, OfAProbedConnectionHasAnotherRule)
{
    EXPECT_EQ(measured_clock_hz(22000, 2400, true), static_cast<float>(22145 * 500.5));
}

TEST(ReplyTimeout, GrowsWithASlowClock)
{
    EXPECT_EQ(reply_timeout_ms(2999999, 115200), 4000);
    EXPECT_EQ(reply_timeout_ms(3000000, 115200), 3000);
    EXPECT_EQ(reply_timeout_ms(5999999, 115200), 2000);
    EXPECT_EQ(reply_timeout_ms(7999999, 115200), 1500);
    EXPECT_EQ(reply_timeout_ms(11059200, 115200), 1200);
    EXPECT_EQ(reply_timeout_ms(12000000, 115200), 1000);
}

TEST(ReplyTimeout, GrowsWithASlowLine)
{
    EXPECT_EQ(reply_timeout_ms(24000000, 9600), 1500);
    EXPECT_EQ(reply_timeout_ms(24000000, 4800), 2000);
    EXPECT_EQ(reply_timeout_ms(24000000, 2400), 3000);
    EXPECT_EQ(reply_timeout_ms(24000000, 1200), 5000);
    EXPECT_EQ(reply_timeout_ms(2000000, 2400), 4000);
}

TEST(BootSize, ByVersionIsTwoKilobytesButForAFewVersions)
{
    EXPECT_EQ(boot_size_by_version(10), 2048);
    EXPECT_EQ(boot_size_by_version(18), 2048);
    EXPECT_EQ(boot_size_by_version(19), 1024);
    EXPECT_EQ(boot_size_by_version(24), 1024);
    EXPECT_EQ(boot_size_by_version(25), 2048);
    EXPECT_EQ(boot_size_by_version(26), 1024);
    EXPECT_EQ(boot_size_by_version(39), 2048);
    EXPECT_EQ(boot_size_by_version(40), 0);
}
