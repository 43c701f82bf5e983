// Re-Download: chip after chip, until one fails or the user stops.
#include "production_line.h"

using namespace vrk;

namespace {

// A hand that changes the chip each time the tool has let go of it: another one, with something else in it.
struct ProductionLine : Bench {
    int good_chips = 0;

    ProductionLine(const char* model, int chips, bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(0x300));
        form.list("comDalay_ReDownLoad").set_text("2");
        press_repeat(*this, chips, [this] { good_chips += chip_holds_the_code() ? 1 : 0; });
    }
};

} // namespace

TEST(Repeat, ProgramsChipAfterChip)
{
    ProductionLine bench("Juniper-8", 4);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 4);
    EXPECT_EQ(bench.good_chips, 4);
    EXPECT_EQ(bench.chip.power_ups(), 4);
    EXPECT_EQ(bench.chip.violations(), "");
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    EXPECT_EQ(bench.dialogs.beeps, 5);
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_EQ(panel_state(bench.shell), 0);
    EXPECT_EQ(bench.shell.platform.settings.get("Settings", "Write_OK_Count", ""), "4");
}

TEST(Repeat, ProgramsOlderChipsToo)
{
    ProductionLine bench("Birch-8", 3);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 3);
    EXPECT_EQ(bench.good_chips, 3);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(Repeat, EndsWithTheFirstChipThatFails)
{
    ProductionLine bench("Juniper-8", 4);
    bench.after_ms(6000, [&bench] { bench.chip.refuse_block(0); });
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.chip.power_ups(), 2);
    EXPECT_TRUE(bench.report_says("Programing failed. (End: "));
    EXPECT_FALSE(bench.report_says("OK"));
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_TRUE(bench.buttons_are_free());
}

namespace {

class RepeatDelay : public ::testing::TestWithParam<int> { };

// What the report says one moment before the next connection clears it.
std::string last_words_of_the_delay(int seconds, bool english)
{
    Bench bench("Juniper-8", english);
    bench.open_code(Bench::pattern(0x300));
    bench.form.list("comDalay_ReDownLoad").set_text(std::to_string(seconds));
    std::string words;
    bench.loop.before_sleep = [&] {
        if (bench.report_says("Program succeed."))
            words = bench.form.text_box("textMsg").text();
        return false;
    };
    bench.press_download(1);
    bench.power_up_after_ms(300);
    bench.press_stop_after_ms(15'000 + seconds * 1000);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 1);
    return words;
}

} // namespace

TEST_P(RepeatDelay, IsCountedDownToZero)
{
    const std::string words = last_words_of_the_delay(GetParam(), true);
    std::string wanted;
    for (int i = GetParam(); i >= 0; --i)
        wanted += "\nProgram succeed.\nAfter a few seconds, re-connection will continue.  " + std::to_string(i);
    EXPECT_TRUE(words.ends_with("\nEncrypt OK." + wanted)) << words;
}

TEST_P(RepeatDelay, IsCountedDownInChinese)
{
    const std::string words = last_words_of_the_delay(GetParam(), false);
    std::string wanted;
    for (int i = GetParam(); i >= 0; --i)
        wanted += "\nProgram succeed. / 下载成功.\nAfter a few seconds re-connect will continue.  " +
            std::to_string(i) + "\nChinese:几秒钟后将继续下载下一个 MCU...  " + std::to_string(i);
    EXPECT_TRUE(words.ends_with("\nEncrypt OK/ 已加密" + wanted)) << words;
}

INSTANTIATE_TEST_SUITE_P(
    Seconds, RepeatDelay, ::testing::Values(0, 1, 2, 5, 9), [](const auto& row) { return std::to_string(row.param); });

TEST(RepeatStop, InTheDelayEndsItAtOnceBelowTheReportOfTheChip)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x300));
    bench.form.list("comDalay_ReDownLoad").set_text("9");
    std::int64_t left_us = 0;
    bench.when(sim::Chip::State::user_code, [&bench, &left_us] {
        left_us = bench.loop.now_us();
        bench.press_stop_after_ms(1500);
    });
    bench.press_download(1);
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_LT(bench.loop.now_us() - left_us, 1'700'000) << "1.5 s to the stop, and its beep: no second is waited out";
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.count(), 1);
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    EXPECT_EQ(bench.times_said("\nOperation stopped. "), 1);
    EXPECT_EQ(bench.chip.power_ups(), 1);
    EXPECT_TRUE(bench.buttons_are_free());
}

TEST(RepeatStop, InTheDelayIsToldInChinese)
{
    Bench bench("Juniper-8", false);
    bench.open_code(Bench::pattern(0x300));
    bench.when(sim::Chip::State::user_code, [&bench] { bench.press_stop_after_ms(500); });
    bench.press_download(1);
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. / 操作被停止."));
}

// While the next second runs the panel belongs to the sequence: a press of Download in it would start a second one.
TEST(RepeatStop, InTheDelayFreesThePanelWhenTheSequenceHasEnded)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x300));
    bool was_free = false;
    bench.when(sim::Chip::State::user_code, [&bench, &was_free] {
        bench.after_ms(500, [&bench, &was_free] {
            click(bench.shell, bench.form.button("comStop_Download"));
            was_free = bench.buttons_are_free();
        });
    });
    bench.press_download(1);
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_FALSE(was_free);
    EXPECT_TRUE(bench.buttons_are_free());
}

// In the beep of success: the chip is complete and counts, and no other one is called.
TEST(RepeatStop, BehindACompleteChipEndsTheRepeat)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x300));
    bool stopped = false;
    bench.loop.before_sleep = [&] {
        if (!stopped && bench.report_says("Program OK")) {
            stopped = true;
            click(bench.shell, bench.form.button("comStop_Download"));
        }
        return false;
    };
    bench.press_download(1);
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 1);
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_FALSE(bench.report_says("re-connection will continue"));
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    EXPECT_EQ(bench.chip.power_ups(), 1);
}
