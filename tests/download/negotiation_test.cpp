// From the slow line of the call to the fastest one that the chip's clock allows.
#include "download/frame_tape.h"

using namespace vrk;

namespace {

struct Station : Bench {
    explicit Station(const char* model = "Juniper-8", bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(0x300));
        form.option("optBeepNo").set_value(true);
    }
    explicit Station(const sim::ChipSetup& setup)
        : Bench(setup)
    {
        open_code(pattern(0x300));
        form.option("optBeepNo").set_value(true);
    }
};

sim::ChipSetup with_clock(const char* model, double hz)
{
    sim::ChipSetup setup = setup_of(model);
    setup.crystal_hz = hz;
    return setup;
}

} // namespace

TEST(Negotiation, TakesTheFastestBaudOfTheClock)
{
    Station bench;
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.report_says("\nCurrent Baud is: 115200 bps."));
    ASSERT_EQ(tape.frames(0x8F).size(), 1U);
    // Mode 192 and 6 counts of 16 clocks; the floor of the pause at 2400 baud is 45.
    const auto test = tape.frames(0x8F)[0];
    EXPECT_EQ(test[6], 192);
    EXPECT_EQ(test[7], 256 - 6);
    EXPECT_EQ(test[8], 0xFF - 192);
    EXPECT_EQ(test[9], 12);
    EXPECT_EQ(test[10], 45);
    EXPECT_EQ(test[11], 0x83);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(Negotiation, NamesTheBaudInChinese)
{
    Station bench("Juniper-8", false);
    bench.download();
    EXPECT_TRUE(bench.report_says("\nCurrent Baud is: / 当前波特率为: 115200 bps."));
    EXPECT_TRUE(bench.report_says("\nChinese:正在重新连接 ..."));
}

TEST(Negotiation, StaysBelowTheMaximum)
{
    Station bench;
    bench.form.list("cobBaudMax").set_text("38400");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Current Baud is: 38400 bps."));
}

TEST(Negotiation, GoesDownRoundByRoundWhereTheChipDoesNotAnswer)
{
    Station bench;
    bench.chip.overhear(0x8F, 6);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Current Baud is: 38400 bps."));
    EXPECT_EQ(bench.chip.frame_count(0x8F), 7);
}

TEST(Negotiation, GivesABaudThreeTries)
{
    Station bench;
    bench.chip.overhear(0x8F, 2);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Current Baud is: 115200 bps."));
    EXPECT_EQ(bench.chip.frame_count(0x8F), 3);
}

TEST(Negotiation, FailsAfterFourRounds)
{
    Station bench;
    bench.chip.overhear(0x8F, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x8F), 12);
    EXPECT_EQ(bench.times_said("\nConnection failed. (End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    bench.expect_a_clean_next_download();
}

TEST(Negotiation, FindsAnAnswerInTheFourthRoundTooLate)
{
    Station bench("Juniper-8", false);
    bench.chip.overhear(0x8F, 9);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x8F), 10);
    EXPECT_EQ(bench.times_said("\nConnection failed. / 握手失败 (End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
}

TEST(Negotiation, OfAClockTooLowForAnyBaudSendsNoTestFrame)
{
    Station bench(with_clock("Birch-8", 60'000));
    bench.form.list("cobBaudMin").set_text("1200");
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x8F), 0);
    EXPECT_EQ(bench.times_said("Connection failed. (End: "), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
}

TEST(Negotiation, SetsTheSpeedOnceMoreWhenTheAnswerIsLost)
{
    Station bench;
    bench.chip.lose_reply(4);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x8E), 2);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(Negotiation, FailsWhenTheSpeedIsNotConfirmed)
{
    Station bench;
    bench.chip.overhear(0x8E, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("Connection failed. (End: "), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    bench.expect_a_clean_next_download();
}

TEST(Negotiation, WithEqualBaudsLeavesThePortAsItIs)
{
    Station bench;
    bench.form.list("cobBaudMax").set_text("9600");
    bench.form.list("cobBaudMin").set_text("9600");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Current Baud is: 9600 bps."));
    EXPECT_EQ(line_text(bench.shell.port.line()), "9600,e,8,1");
    EXPECT_EQ(tape.frames(0x8F)[0][10], 120);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(Negotiation, OfSeries1At2400BaudAsksForAPauseOf140)
{
    Station bench("Aspen-16");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    ASSERT_FALSE(tape.frames(0x8F).empty());
    EXPECT_EQ(tape.frames(0x8F)[0][10], 140);
}

TEST(Negotiation, OfAnOlderChipSendsTheReloadInTwoBytes)
{
    Station bench("Birch-8");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    const auto test = tape.frames(0x8F)[0];
    EXPECT_EQ(test[6], 0xFF);
    EXPECT_EQ(test[7], 256 - 3); // 11.0592 MHz / 32 / 115200
    EXPECT_EQ(bench.shell.talk().chip.reload_hi, 0xFF);
    EXPECT_EQ(bench.shell.talk().chip.reload_lo, 0xFD);
    EXPECT_EQ(bench.shell.talk().chip.reload2_lo, 0xFA);
}

class EveryLowBaud : public ::testing::TestWithParam<const char*> { };

TEST_P(EveryLowBaud, LeadsToAGoodDownloadIntoANewerChip)
{
    Station bench;
    bench.form.list("cobBaudMin").set_text(GetParam());
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST_P(EveryLowBaud, LeadsToAGoodDownloadIntoAnOlderChip)
{
    Station bench("Birch-8");
    bench.form.list("cobBaudMin").set_text(GetParam());
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
}

INSTANTIATE_TEST_SUITE_P(OfTheList, EveryLowBaud,
    ::testing::Values("115200", "57600", "38400", "28800", "19200", "14400", "9600", "4800", "2400", "1200"),
    [](const auto& row) { return "At" + std::string(row.param); });

class EveryClock : public ::testing::TestWithParam<int> { };

TEST_P(EveryClock, LeadsToAGoodDownload)
{
    Station bench(with_clock("Juniper-8", GetParam() * 1000.0));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
}

INSTANTIATE_TEST_SUITE_P(InKilohertz, EveryClock,
    ::testing::Values(
        1000, 2000, 3579, 4000, 6000, 8000, 12000, 14318, 18432, 20000, 22118, 24000, 33000, 40000, 72000),
    [](const auto& row) { return std::to_string(row.param); });

// 1.8432 MHz over 16 is 115200 itself.
TEST(Negotiation, TakesADivisorOfOne)
{
    Station bench(with_clock("Juniper-8", 1843200));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Current Baud is: 115200 bps."));
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(Negotiation, TriesNothingBehindADivisorOfOne)
{
    Station bench(with_clock("Juniper-8", 1843200));
    bench.chip.overhear(0x8F, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x8F), 3);
    EXPECT_TRUE(bench.report_says("Connection failed. (End: "));
}

TEST(Negotiation, SendsNothingWhereNoDivisorFits)
{
    Station bench(with_clock("Juniper-8", 17000)); // below 1200 baud even over 16
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x8F), 0);
}

TEST(Negotiation, OfTheTwoRcFamiliesNamesTheBaudInFull)
{
    Station bench("Holly-4");
    bench.form.list("cobBaudMin").set_text("115200");
    bench.download();
    EXPECT_TRUE(bench.report_says("\nCurrent Baud is: 115200 bps."));
    EXPECT_TRUE(bench.chip_holds_the_code());
}

namespace {

// The frame before a change of the line is long gone when the line changes, also at the slowest baud.
class SlowFrames : public ::testing::TestWithParam<const char*> { };

} // namespace

TEST_P(SlowFrames, HaveLeftBeforeTheLineIsSwitchedOrClosed)
{
    Station bench(GetParam());
    bench.ports.closing = sim::Wire::Closing::drops;
    bench.form.list("cobBaudMin").set_text("1200");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.frames(0x8F).size(), 1U);
    EXPECT_EQ(tape.frames(0x8E).size(), 1U);
    EXPECT_EQ(tape.frames(0x82).size(), 1U);
    EXPECT_EQ(bench.chip.state(), sim::Chip::State::user_code);
    EXPECT_EQ(bench.chip.violations() + bench.chip.line_faults(), "");
}

TEST_P(SlowFrames, HaveLeftWhereBothBaudsAreTheSlowest)
{
    Station bench(GetParam());
    bench.ports.closing = sim::Wire::Closing::drops;
    bench.form.list("cobBaudMin").set_text("1200");
    bench.form.list("cobBaudMax").set_text("1200");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.frames().size(), static_cast<std::size_t>(bench.chip.frame_count())) << "all that began has ended";
    EXPECT_EQ(tape.frames(0x82).size(), 1U);
    EXPECT_EQ(bench.chip.state(), sim::Chip::State::user_code);
    EXPECT_EQ(bench.chip.violations() + bench.chip.line_faults(), "");
}

INSTANTIATE_TEST_SUITE_P(OfAModel, SlowFrames, ::testing::Values("Alder-64", "Aspen-16", "Birch-8", "Juniper-8"),
    [](const auto& row) { return std::string(row.param).substr(0, 5); });

TEST(NewerProtocol, AsksForTheStatusUpToThreeTimes)
{
    Station bench;
    bench.chip.overhear(0x50, 2);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x50), 3 + 1); // the last one reads the options back
}

TEST(NewerProtocol, EndsWhenTheStatusIsNotAnswered)
{
    Station bench;
    bench.chip.overhear(0x50, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x50), 3);
    EXPECT_EQ(bench.times_said("\nConnection failed.(End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 2);
    bench.expect_a_clean_next_download();
}

TEST(NewerProtocol, EndsWhenTheStatusIsNotAnsweredInChinese)
{
    Station bench("Juniper-8", false);
    bench.chip.overhear(0x50, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nConnection failed. / 握手失败(LB) (End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 2);
}

TEST(NewerProtocol, EndsWhenTheStatusIsAnsweredWithAnotherCode)
{
    Station bench;
    bench.chip.noise_before_reply(2, sim::reply_frame(0x50, {}, true));
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nConnection failed. (End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 2);
    bench.expect_a_clean_next_download();
}

TEST(FixedSpeed, GivesAGoodDownloadIntoAnOlderChip)
{
    Station bench("Birch-8");
    bench.form.check_box("cheTL").set_value(true);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
    EXPECT_TRUE(bench.report_says("\nCurrent Baud is: 115200 bps."));
    EXPECT_FALSE(bench.report_says("again"));
    EXPECT_TRUE(bench.shell.talk().chip.tl_mode_active);
    EXPECT_EQ(line_text(bench.shell.port.line()), "115200,n,8,1");
    EXPECT_EQ(bench.chip.frame_count(0x8F), 1);
    EXPECT_EQ(bench.chip.frame_count(0x8E), 0);
    EXPECT_NEAR(static_cast<double>(bench.shell.talk().chip.mcu_clock_hz), 11'059'200.0, 2000.0);
}

TEST(FixedSpeed, FailsAfterThreeUnansweredTests)
{
    Station bench("Birch-8");
    bench.form.check_box("cheTL").set_value(true);
    bench.chip.overhear(0x8F, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x8F), 3);
    EXPECT_EQ(bench.times_said("\nConnection failed. (End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    bench.expect_a_clean_next_download();
}

TEST(FixedSpeed, OfANewerChipEndsAtTheEraseStage)
{
    Station bench;
    bench.form.check_box("cheTL").set_value(true);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    EXPECT_EQ(bench.times_said("\nErasing MCU failed. (End: 08:00:"), 1);
    EXPECT_EQ(bench.times_said("\nTry to use the lower baud."), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    bench.form.check_box("cheTL").set_value(false);
    bench.expect_a_clean_next_download();
}

TEST(FixedSpeed, CallsByProbeFramesATenthOfASecondApart)
{
    Station bench("Birch-8");
    bench.form.check_box("cheTL").set_value(true);
    bench.chip.keep_silent();
    FrameTape tape(bench);
    bench.press_download();
    bench.power_up_after_ms(0);
    bench.press_stop_after_ms(2055);
    bench.run_until_idle();
    EXPECT_NEAR(static_cast<double>(tape.frames(0x8A).size()), 20.0, 1.0);
    EXPECT_EQ(tape.frames(0x8A).size() * 12, tape.bytes().size()); // FE FE FE FE and eight bytes each
}

TEST(WatchdogPin, IsToldBeforeTheNegotiation)
{
    Station bench;
    bench.form.option("opt_ISP_DEMO_WDT", 1).set_value(true);
    bench.form.list("comb_WDT").set_text("P1.3");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.feed_pin(), 0x13);
    EXPECT_EQ(bench.chip.frame_count(0x86), 1);
    EXPECT_EQ(tape.codes()[0], 0x86);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(WatchdogPin, OfNoPinIsFF)
{
    Station bench("Birch-8");
    bench.form.option("opt_ISP_DEMO_WDT", 1).set_value(true);
    bench.form.list("comb_WDT").set_text("");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.feed_pin(), 0xFF);
}

TEST(WatchdogPin, IsNotToldWhereNoneIsWanted)
{
    Station bench;
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(0x86), 0);
    EXPECT_FALSE(bench.chip.feed_pin().has_value());
}

TEST(WatchdogPin, WithoutAnAnswerEndsTheConnectionAfterThreeFrames)
{
    Station bench;
    bench.form.option("opt_ISP_DEMO_WDT", 1).set_value(true);
    bench.chip.overhear(0x86, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x86), 3);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nConnection failed."));
    bench.expect_a_clean_next_download();
}

TEST(WatchdogPin, WithoutAnAnswerIsToldInChinese)
{
    Station bench("Juniper-8", false);
    bench.form.option("opt_ISP_DEMO_WDT", 1).set_value(true);
    bench.chip.overhear(0x86, 1000);
    bench.download();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nConnection failed. / 握手失败"));
}
