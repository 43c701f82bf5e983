// An acknowledgement does not say which frame it is for. One that comes late, or twice, must not vouch for a frame that
// the chip has never heard.
#include "bench.h"

using namespace vrk;

namespace {

constexpr std::uint8_t block_again = 0x30;

// Chunks of other content and the same sum: each is the one before, turned by a byte.
std::vector<std::uint8_t> chunks_of_one_sum(std::size_t chunks)
{
    std::vector<std::uint8_t> bytes;
    for (std::size_t chunk = 0; chunk < chunks; ++chunk) {
        for (std::size_t i = 0; i < 128; ++i)
            bytes.push_back(static_cast<std::uint8_t>((i + chunk) % 128));
    }
    return bytes;
}

struct SlowLine : Bench {
    explicit SlowLine(const sim::ChipSetup& setup)
        : Bench(setup)
    {
        open_code(chunks_of_one_sum(12));
        press_download();
        power_up_after_ms(300);
    }
    // The answer to the first block comes that much later; the one to the erasing is on its way before it.
    void delay_first_block_answer(int ms)
    {
        when(sim::Chip::State::erased, [this, ms] { wire.delay_reply(2, ms); });
    }
    // Once it has answered that many repeated frames, the chip does not hear the next frame of that code.
    void miss_the_frame_after(int repeats, std::uint8_t code)
    {
        loop.before_sleep = [this, repeats, code, done = false]() mutable {
            if (!done && chip.frame_count(block_again) == repeats) {
                chip.overhear(code);
                done = true;
            }
            return false;
        };
    }
    void expect_truth()
    {
        EXPECT_EQ(shell.succeeded, report_says("Program OK"));
        EXPECT_TRUE(!shell.succeeded || chip_holds_the_code()) << "said to be good, and is not";
        EXPECT_EQ(chip.violations(), "");
    }
};

sim::ChipSetup without_sums(const char* model)
{
    sim::ChipSetup setup = setup_of(model);
    setup.short_block_answers = true;
    return setup;
}

// Around the time-out of a block, which is 1200 ms with the clock of these chips: before it, while the repeat is on its
// way, and behind that.
class LateAnswer : public ::testing::TestWithParam<int> { };

} // namespace

TEST_P(LateAnswer, AndTheOneToTheRepeatDoNotVouchForTheNextFrameOfTheBlock)
{
    SlowLine bench(setup_of("Juniper-8"));
    bench.delay_first_block_answer(GetParam());
    bench.miss_the_frame_after(1, block_again);
    bench.run_until_idle();
    bench.expect_truth();
    EXPECT_TRUE(bench.shell.succeeded) << "and the repeats make up for it";
}

TEST_P(LateAnswer, AndTheOneToTheRepeatDoNotVouchForTheNextFrameOfAnOlderChip)
{
    SlowLine bench(setup_of("Birch-8"));
    bench.delay_first_block_answer(GetParam());
    bench.miss_the_frame_after(1, block_again);
    bench.run_until_idle();
    bench.expect_truth();
    EXPECT_TRUE(bench.shell.succeeded);
}

TEST_P(LateAnswer, WithoutASumDoesNotVouchForTheNextFrame)
{
    SlowLine bench(without_sums("Birch-8"));
    bench.delay_first_block_answer(GetParam());
    bench.miss_the_frame_after(1, block_again);
    bench.run_until_idle();
    bench.expect_truth();
    EXPECT_TRUE(bench.shell.succeeded);
}

// Series 0 has blocks of one frame, so that the next frame is one that goes out for the first time.
TEST_P(LateAnswer, AndTheOneToTheRepeatDoNotVouchForTheNextBlock)
{
    SlowLine bench(setup_of("Alder-64"));
    bench.delay_first_block_answer(GetParam());
    bench.miss_the_frame_after(1, 0x00);
    bench.run_until_idle();
    bench.expect_truth();
    EXPECT_TRUE(bench.shell.succeeded);
}

INSTANTIATE_TEST_SUITE_P(ByMilliseconds, LateAnswer, ::testing::Range(1150, 1300, 6),
    [](const auto& row) { return std::to_string(row.param); });

TEST(LateAnswer, ThatCameTwiceIsDroppedBeforeTheRepeat)
{
    SlowLine bench(setup_of("Juniper-8"));
    bench.when(sim::Chip::State::erased, [&bench] {
        bench.wire.damage_reply(2);
        bench.wire.duplicate_reply(2);
    });
    bench.miss_the_frame_after(1, block_again);
    bench.run_until_idle();
    bench.expect_truth();
    EXPECT_TRUE(bench.shell.succeeded);
}

TEST(RestlessLine, OnWhichNothingCanBeSentAgainEndsInAToldFailure)
{
    SlowLine bench(setup_of("Juniper-8"));
    bench.when(sim::Chip::State::erased, [&bench] { bench.wire.lose_reply(2); });
    bool restless = false;
    std::function<void()> chatter = [&] {
        bench.wire.noise_to_tool(std::vector<std::uint8_t>{0x55});
        bench.after_ms(20, [&] {
            if (restless)
                chatter();
        });
    };
    bench.when(sim::Chip::State::writing, [&] {
        restless = true;
        bench.after_ms(300, chatter);
    });
    bench.run_until_idle();
    restless = false;
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(block_again), 0);
    EXPECT_TRUE(bench.report_says("Programing failed. (End: "));
    bench.expect_a_clean_next_download();
}
