// The stop button at any moment: the sequence winds down, the buttons are free, and the next download is good.
#include "bench.h"

using namespace vrk;

namespace {

class StopAfter : public ::testing::TestWithParam<int> {
protected:
    // Presses stop that many milliseconds after the click; the last of them come when all is over.
    static void tell(const char* model, bool english)
    {
        Bench bench(model, english);
        bench.open_code(Bench::pattern(0x500));
        bench.form.option("optBeepNo").set_value(true);
        bench.press_download();
        bench.power_up_after_ms(200);
        bench.press_stop_after_ms(GetParam());
        bench.run_until_idle();
        const bool said = bench.report_says("Program OK");
        EXPECT_EQ(bench.shell.succeeded, said);
        EXPECT_EQ(bench.count(), said ? 1 : 0);
        EXPECT_TRUE(!said || bench.chip_holds_the_code());
        EXPECT_TRUE(bench.buttons_are_free());
        EXPECT_EQ(panel_state(bench.shell), 0);
        EXPECT_LE(bench.times_said("Operation stopped. ") + bench.times_said("操作被停止."), 2);
        bench.expect_a_clean_next_download();
    }
};

} // namespace

TEST_P(StopAfter, EndsADownloadIntoANewerChip) { tell("Juniper-8", true); }
TEST_P(StopAfter, EndsADownloadIntoAnOlderChip) { tell("Birch-8", false); }
TEST_P(StopAfter, EndsADownloadWithAnRcTest) { tell("Holly-4", true); }

INSTANTIATE_TEST_SUITE_P(
    Milliseconds, StopAfter, ::testing::Range(0, 4000, 97), [](const auto& row) { return std::to_string(row.param); });

TEST(Stop, InTheWaitForPowerIsToldWithOneBeep)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x500));
    bench.press_download();
    bench.press_stop_after_ms(1000);
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_LT(bench.loop.now_us(), 1'200'000) << "at the next pair of sync bytes, and the beep";
}

TEST(Stop, InTheWaitForPowerIsToldInBothLanguagesAtOnceInChinese)
{
    Bench bench("Juniper-8", false);
    bench.open_code(Bench::pattern(0x500));
    bench.press_download();
    bench.press_stop_after_ms(1000);
    bench.run_until_idle();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. / 操作被停止."));
}

TEST(Stop, InTheNegotiationIsToldWithOneBeep)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x500));
    bench.chip.overhear(0x8F, 100);
    bench.press_download();
    bench.power_up_after_ms(200);
    bench.when(sim::Chip::State::named, [&bench] { bench.press_stop_after_ms(600); });
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nOperation stopped. "), 1);
    EXPECT_FALSE(bench.report_says("Connection failed"));
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_EQ(bench.chip.frame_count(0x8F), 1);
}

// The code is in and the chip has not said that it goes on to its options. Nobody knows what it would have said.
TEST(Stop, InTheWaitForTheEndOfTheCodeIsAStop)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x500));
    bench.when(sim::Chip::State::code_ended, [&bench] { click(bench.shell, bench.form.button("comStop_Download")); });
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nOperation stopped. "), 1);
    EXPECT_EQ(bench.chip.frame_count(0x8D), 0);
}

TEST(Stop, BeforeTheOptionsAreWrittenIsAStop)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x500));
    bench.when(sim::Chip::State::code_ended, [&bench] { bench.press_stop_after_ms(50); });
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\nOperation stopped. "), 1);
    EXPECT_EQ(bench.chip.frame_count(0x8D), 0);
}
