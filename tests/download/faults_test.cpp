// Whatever breaks on the way: no word of success for a chip that does not hold its file, and a clean next press.
#include "bench.h"

#include <algorithm>

using namespace vrk;

namespace {

struct Station : Bench {
    explicit Station(const char* model, bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(0x500));
        form.option("optBeepNo").set_value(true);
    }
    // A job that may end either way: then what is said is what is true.
    void expect_truth() const
    {
        EXPECT_EQ(shell.succeeded, report_says("Program OK"));
        EXPECT_EQ(shell.succeeded, count() == 1);
        EXPECT_TRUE(!shell.succeeded || chip_holds_the_code());
        EXPECT_TRUE(buttons_are_free());
    }
};

struct AtReply {
    const char* model;
    int reply;
};

class EveryReply : public ::testing::TestWithParam<AtReply> {
protected:
    Station bench{GetParam().model};
};

} // namespace

TEST_P(EveryReply, LostIsMadeUpForOrToldHonestly)
{
    bench.chip.lose_reply(GetParam().reply);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle_or_given_up();
    bench.expect_truth();
    bench.form.text_box("txtWrite_OK_Count").set_text("0");
    bench.expect_a_clean_next_download();
}

TEST_P(EveryReply, DamagedIsMadeUpForOrToldHonestly)
{
    bench.chip.damage_reply(GetParam().reply);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle_or_given_up();
    bench.expect_truth();
    bench.form.text_box("txtWrite_OK_Count").set_text("0");
    bench.expect_a_clean_next_download();
}

TEST_P(EveryReply, LateIsTakenOrToldHonestly)
{
    bench.chip.delay_reply(GetParam().reply, 1500);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle_or_given_up();
    bench.expect_truth();
    bench.form.text_box("txtWrite_OK_Count").set_text("0");
    bench.expect_a_clean_next_download();
}

TEST_P(EveryReply, InTwoPiecesIsPutTogether)
{
    bench.chip.split_reply(GetParam().reply, 4, 40);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    bench.expect_truth();
}

TEST_P(EveryReply, BehindNoiseIsFound)
{
    bench.chip.noise_before_reply(GetParam().reply, {0x00, 0x16, 0x46, 0xFF});
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    bench.expect_truth();
}

INSTANTIATE_TEST_SUITE_P(OfBothProtocols, EveryReply,
    ::testing::Values(AtReply{"Juniper-8", 1}, AtReply{"Juniper-8", 2}, AtReply{"Juniper-8", 3},
        AtReply{"Juniper-8", 4}, AtReply{"Juniper-8", 5}, AtReply{"Juniper-8", 6}, AtReply{"Juniper-8", 10},
        AtReply{"Juniper-8", 17}, AtReply{"Juniper-8", 18}, AtReply{"Birch-8", 1}, AtReply{"Birch-8", 2},
        AtReply{"Birch-8", 3}, AtReply{"Birch-8", 4}, AtReply{"Birch-8", 8}, AtReply{"Birch-8", 9},
        AtReply{"Birch-8", 10}, AtReply{"Birch-8", 15}, AtReply{"Birch-8", 20}),
    [](const auto& row) {
        return std::string(row.param.model).substr(0, 5) + "Reply" + std::to_string(row.param.reply);
    });

namespace {

class PowerCut : public ::testing::TestWithParam<int> { };

} // namespace

TEST_P(PowerCut, OfANewerChipIsNoSuccess)
{
    Station bench("Juniper-8");
    bench.chip.cut_power_at_frame(GetParam());
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.state(), sim::Chip::State::off);
    bench.expect_a_clean_next_download();
}

TEST_P(PowerCut, OfAnOlderChipIsNoSuccess)
{
    Station bench("Birch-8", false);
    bench.chip.cut_power_at_frame(GetParam());
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.state(), sim::Chip::State::off);
    bench.expect_a_clean_next_download();
}

// Frames 1 to 3 or 7 negotiate, then comes the erasing, then the blocks.
INSTANTIATE_TEST_SUITE_P(AtFrame, PowerCut, ::testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 14, 16),
    [](const auto& row) { return std::to_string(row.param); });

TEST(PowerCut, InTheFirstBlockIsABlockThatFails)
{
    Station bench("Juniper-8");
    bench.chip.cut_power_at_frame(5);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.times_said("Programing failed. (End: "), 1);
}

TEST(SilentChip, ThatActsButNeverSpeaksIsWaitedForUntilTheUserStops)
{
    Station bench("Juniper-8");
    bench.chip.keep_silent();
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.press_stop_after_ms(20'000);
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("Operation stopped. "), 1);
    bench.expect_a_clean_next_download();
}

TEST(SilentChip, FallenSilentInTheProgrammingIsToldAfterFourTries)
{
    Station bench("Juniper-8");
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::writing, [&bench] { bench.chip.keep_silent(); });
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x30), 3);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.times_said("Programing failed. (End: "), 1);
    bench.expect_a_clean_next_download();
}

TEST(Port, ThatCannotBeOpenedIsTold)
{
    Station bench("Juniper-8", false);
    bench.ports.refuse_open(Bench::port_path, 100);
    bench.press_download();
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(
        "\n打开串口失败!\nChinese:串口已被其它程序打开或该串口不存在。"));
    bench.ports.refuse_open(Bench::port_path, 0);
    bench.expect_a_clean_next_download();
}

TEST(Port, ThatCannotBeOpenedIsToldInEnglish)
{
    Station bench("Juniper-8");
    bench.ports.refuse_open(Bench::port_path, 100);
    bench.press_download();
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(
        "\nOpen COM port failed!\n"
        "The COM port is opened by another Program or the COM port does "
        "not exist."));
}

TEST(Port, ThatIsNotThereAtAllIsTold)
{
    Station bench("Juniper-8", false);
    bench.ports.remove(Bench::port_path);
    bench.run_for_ms(10);
    bench.press_download();
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_TRUE(bench.report_says("\n打开串口失败!"));
    bench.ports.add(Bench::port_path, bench.wire);
    bench.expect_a_clean_next_download();
}

namespace {

class VanishedPort : public ::testing::TestWithParam<sim::Chip::State> { };

} // namespace

TEST_P(VanishedPort, InMidSequenceIsNoSuccessAndNoHang)
{
    Station bench("Juniper-8");
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(GetParam(), [&bench] { bench.ports.remove(Bench::port_path); });
    bench.run_until_idle_or_given_up();
    bench.expect_failed_honestly();
    bench.ports.add(Bench::port_path, bench.wire);
    bench.expect_a_clean_next_download();
}

TEST_P(VanishedPort, ThatIsPluggedInAgainEndsHonestly)
{
    Station bench("Juniper-8");
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(GetParam(), [&bench] {
        bench.ports.remove(Bench::port_path);
        bench.after_ms(700, [&bench] { bench.ports.add(Bench::port_path, bench.wire); });
    });
    bench.run_until_idle_or_given_up();
    bench.expect_truth();
    bench.form.text_box("txtWrite_OK_Count").set_text("0");
    bench.expect_a_clean_next_download();
}

TEST_P(VanishedPort, OrOneThatRefusesToOpenOnceEndsHonestly)
{
    Station bench("Juniper-8");
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(GetParam(), [&bench] { bench.ports.refuse_open(Bench::port_path, 1); });
    bench.run_until_idle_or_given_up();
    bench.expect_truth();
    bench.form.text_box("txtWrite_OK_Count").set_text("0");
    bench.expect_a_clean_next_download();
}

TEST_P(VanishedPort, OrOneThatRefusesToOpenOnceUnderAnOlderChipEndsHonestly)
{
    Station bench("Birch-8");
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(GetParam(), [&bench] { bench.ports.refuse_open(Bench::port_path, 1); });
    bench.run_until_idle_or_given_up();
    bench.expect_truth();
    bench.form.text_box("txtWrite_OK_Count").set_text("0");
    bench.expect_a_clean_next_download();
}

INSTANTIATE_TEST_SUITE_P(WhenTheChipIs, VanishedPort,
    ::testing::Values(sim::Chip::State::listening, sim::Chip::State::called, sim::Chip::State::speed_set,
        sim::Chip::State::erased, sim::Chip::State::writing),
    [](const auto& row) {
        std::string name = sim::state_name(row.param);
        name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
        return name;
    });
