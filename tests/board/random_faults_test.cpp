// Many jobs over a bad line, to boards that are overheard, refuse and lose their power: a job is called good if and
// only if the board holds its image, and the next one works.
#include "board/board_bench.h"

#include <cstdlib>
#include <random>

using namespace vrk;

namespace {

constexpr std::uint32_t usual_seed = 20240607;
// Faults keep a frame's distance: two in one frame could cancel each other in its CRC.
constexpr sim::FaultRates to_tool{400, 400, 150, 80};
constexpr sim::FaultRates to_board{40, 20, 20, 200};

int number_of(const char* variable, int otherwise)
{
    const char* given = std::getenv(variable);
    return given == nullptr ? otherwise : std::atoi(given);
}

bool one_job(std::uint32_t seed)
{
    std::mt19937 source(seed);
    const auto below = [&source](int limit) { return static_cast<int>(source() % static_cast<unsigned>(limit)); };
    const auto chance = [&below](int percent) { return below(100) < percent; };

    const BoardJob job = job_for(chance(50) ? "Birch-62" : "Juniper-60Q", static_cast<std::size_t>(below(0xE000)) + 1);
    sim::BoardSetup setup = board_for(job.model);
    setup.version = static_cast<std::uint8_t>(0x14 + below(5));
    setup.single_area = chance(40);
    BoardBench bench(job, setup);
    bench.wire.bytes_to_tool.at_random(to_tool, seed);
    bench.wire.bytes_to_target.at_random(to_board, seed + 1);
    constexpr std::uint8_t codes[] = {0x00, 0x30, 0x0C, 0x0E, 0x80, 0x84, 0x86};
    if (chance(20))
        bench.board.deaf_to[codes[below(7)]] = below(9);
    if (chance(20))
        bench.board.refused[static_cast<std::uint32_t>(0x4000 + 128 * below(300))] = below(8);
    for (int i = below(6); i > 0; --i)
        bench.board.replies.delay(1 + below(400), 1000 * below(640));
    if (chance(15))
        bench.when_frame(codes[below(2)], 1 + below(200), [&bench] { bench.board.power(false); });
    EventLoop::CallId stopping = 0;
    if (chance(10))
        stopping = bench.loop.call_at(std::int64_t{below(12'000)} * 1000, [&bench] { bench.stop(); });

    const bool good = bench.run_with_power() == Result::good;
    const std::size_t last = setup.version >= 0x17 ? 0xF7FF : 0xF3FF;
    const bool has_first_area = setup.single_area || setup.version == 0x15 || setup.version >= 0x17;
    const std::int32_t most = setup.single_area ? 0xF800 : has_first_area ? 0xAC00 : 0xCC00;
    const bool fits = bench.job.code.high < most;
    EXPECT_TRUE(fits || !good) << "what lies above the areas is not on the board";
    if (good) {
        EXPECT_EQ(bench.held(0x4000, last), bench.planned(0x4000, last)) << "said to be good, and is not";
        EXPECT_TRUE(has_first_area || bench.held(0x2000, 0x3FFF) == bench.planned(0x2000, 0x3FFF));
    }
    if (good && setup.single_area) {
        const Bytes& bank = bench.board.second_bank();
        const Bytes& file = bench.job.code.bytes;
        EXPECT_TRUE(std::equal(bank.begin() + 0x4000, bank.begin() + 0x4000 + 0x3400, file.begin() + 0xAC00));
    }
    EXPECT_EQ(good, bench.says("Program OK") || bench.says("Download OK"));

    bench.wire.bytes_to_tool.at_random({}, 0);
    bench.wire.bytes_to_target.at_random({}, 0);
    bench.loop.cancel(stopping);
    bench.at_frame = nullptr;
    bench.board.replies = {};
    bench.board.deaf_to.clear();
    bench.board.refused.clear();
    bench.board.power(false);
    EXPECT_EQ(bench.run_with_power(), fits ? Result::good : Result::refused) << "the next job starts clean";
    return good;
}

} // namespace

TEST(BoardRandomFaults, NeverMakeTheToolCallABoardGoodThatIsNot)
{
    const int wanted = number_of("VRK_DOWNLOADS", 60);
    const auto first = static_cast<std::uint32_t>(number_of("VRK_SEED", usual_seed));
    int good = 0;
    for (int i = 0; i < wanted; ++i) {
        const std::uint32_t seed = first + static_cast<std::uint32_t>(i);
        good += one_job(seed) ? 1 : 0;
        ASSERT_FALSE(HasFailure()) << "to replay: VRK_SEED=" << seed
                                   << " VRK_DOWNLOADS=1 test_board --gtest_filter='BoardRandomFaults.*'";
    }
    // Both ends are met, or the run tells nothing.
    EXPECT_TRUE(wanted < 60 || (good > wanted / 5 && good < wanted * 19 / 20)) << good << " good ones";
}
