// The two families that measure their own oscillator during the connection.
#include "download/frame_tape.h"

using namespace vrk;

namespace {

struct Station : Bench {
    explicit Station(const char* mhz, bool english = true, const char* model = "Holly-4")
        : Bench(model, english)
    {
        open_code(pattern(0x200));
        form.list("com_RC_frequency", 5).set_text(mhz);
        form.option("optBeepNo").set_value(true);
    }
};

// An answer of four points at which the oscillator has not moved.
std::vector<std::uint8_t> answer_without_slope()
{
    std::vector<std::uint8_t> payload(10, 0xFF);
    payload.push_back(4);
    for (const int trim : {0, 128, 128, 200})
        payload.insert(payload.end(), {0x58, static_cast<std::uint8_t>(trim), 0x0A, 0x00});
    return sim::reply_frame(0x8E, payload, true);
}

} // namespace

TEST(RcTest, FindsTheTrimInTwoExchanges)
{
    Station bench("11.0592");
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.violations(), "");
    ASSERT_EQ(tape.frames(0x65).size(), 2U);
    EXPECT_EQ(tape.frames(0x65)[0][16], 4);
    EXPECT_EQ(tape.frames(0x65)[1][16], 11);
    EXPECT_LE(std::abs(bench.shell.talk().rc.rc_error), 25);
    EXPECT_TRUE(bench.report_says("\n\n下次下载 RC 振荡器频率频率: 11.0"));
    EXPECT_TRUE(bench.report_says("%      (仅供参考)"));
    EXPECT_EQ(bench.count(), 1);
}

TEST(RcTest, IsMadeForTheOtherFamilyToo)
{
    Station bench("11.0592", false, "Poplar-4L");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x65), 2);
}

TEST(RcTest, IsNotMadeForOtherFamilies)
{
    Station bench("11.0592", true, "Juniper-8");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x65), 0);
}

TEST(RcTest, WithoutAnAnswerEndsTheConnection)
{
    Station bench("11.0592");
    bench.chip.overhear(0x65, 100);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x65), 1);
    EXPECT_EQ(bench.times_said("\nConnection failed.(End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 2);
    bench.expect_a_clean_next_download();
}

TEST(RcTest, WithoutAnAnswerIsToldInChinese)
{
    Station bench("11.0592", false);
    bench.chip.overhear(0x65, 100);
    bench.download();
    EXPECT_EQ(bench.times_said("\nConnection failed. / 握手失败(LB) (End: 08:00:"), 1);
}

TEST(RcTest, OfAnOscillatorThatDoesNotMoveEndsTheConnection)
{
    Station bench("11.0592");
    bench.chip.noise_before_reply(3, answer_without_slope());
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nConnection failed.(End: 08:00:"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 2);
    bench.expect_a_clean_next_download();
}

TEST(RcTest, IsStoppedByTheUser)
{
    Station bench("11.0592");
    bench.chip.overhear(0x65, 100);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::named, [&bench] { bench.press_stop_after_ms(1000); });
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nOperation stopped. "), 1);
    EXPECT_EQ(bench.dialogs.beeps, 1);
}

TEST(RcReport, OfAFrequencyOutOfReachBeepsAndIsNotCounted)
{
    Station bench("60", false);
    bench.download();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_EQ(bench.count(), 0);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_TRUE(bench.report_says("\n您设置的 RC 振荡器的频率可能在此片 MCU 的频率盲区内，\n频率盲区：0 -- 0MHz"));
    EXPECT_TRUE(bench.buttons_are_free());
}

namespace {

class TypedFrequency : public ::testing::TestWithParam<const char*> { };

} // namespace

TEST_P(TypedFrequency, OutOfRangeIsRefusedWithItsRangeBeforeAnythingIsSent)
{
    Station bench(GetParam());
    bench.press_download();
    bench.run_until_idle();
    EXPECT_FALSE(bench.shell.succeeded);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "The RC frequency must be a number from 1 to 100 MHz.");
    EXPECT_EQ(bench.chip.frame_count(), 0);
    EXPECT_TRUE(bench.buttons_are_free());
    bench.form.list("com_RC_frequency", 5).set_text("11.0592");
    bench.expect_a_clean_next_download();
}

INSTANTIATE_TEST_SUITE_P(InEveryShape, TypedFrequency,
    ::testing::Values("", "0", "-11.0592", "eleven", "0.9", "110592", "100.1", "1e300"),
    [](const auto& row) { return "Case" + std::to_string(row.index); });

TEST(TypedFrequency, WantedIsRefusedInChineseToo)
{
    Station bench("11.0592", false, "Poplar-4L");
    bench.form.list("com_RC_frequency", 0).set_text("18432");
    bench.press_download();
    bench.run_until_idle();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "RC 频率必须是 1 到 100 MHz 之间的数。");
    bench.form.list("com_RC_frequency", 0).choose(0); // the heading of the list names none
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
}

TEST(TypedFrequency, OfAFamilyWithoutTheBoxesIsNotLookedAt)
{
    Station bench("110592", true, "Juniper-8");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
}
