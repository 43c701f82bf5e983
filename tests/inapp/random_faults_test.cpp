// Many downloads through a downloader in user code over a bad line: a chip is called good if and only if it holds the
// file.
#include "inapp/inapp_bench.h"

#include <cstdlib>
#include <random>

using namespace vrk;

namespace {

constexpr std::uint32_t usual_seed = 20240711;
// A sum cannot see two faults that cancel each other, so they keep a frame's distance.
constexpr sim::FaultRates to_tool{900, 900, 300, 80};
constexpr sim::FaultRates to_demo{120, 60, 60, 200};

int number_of(const char* variable, int otherwise)
{
    const char* given = std::getenv(variable);
    return given == nullptr ? otherwise : std::atoi(given);
}

bool one_download(std::uint32_t seed)
{
    std::mt19937 source(seed);
    const auto below = [&source](int limit) { return static_cast<int>(source() % static_cast<unsigned>(limit)); };
    const auto chance = [&below](int percent) { return below(100) < percent; };

    InappBench bench;
    sim::DemoProgram demo({});
    bench.wire.attach(demo);
    DemoJob job;
    job.model = catalog_test::record("Birch-16");
    job.line = LineSettings{115200, Parity::none, 8, 1};
    const auto size = static_cast<std::size_t>(below(0x1800)) + 1;
    job.code = code_of(size);
    bench.wire.bytes_to_tool.at_random(to_tool, seed);
    bench.wire.bytes_to_target.at_random(to_demo, seed + 1);
    constexpr std::uint8_t codes[] = {0xB0, 0xB2, 0xB3, 0xB4, 0xB5};
    if (chance(30))
        demo.deaf_to[codes[below(5)]] = below(5);
    if (chance(20))
        demo.wrong_sums = below(6);
    for (int i = below(5); i > 0; --i)
        demo.replies.delay(1 + below(60), 1000 * below(4030));
    int frames_to_cut = chance(15) ? below(60) + 1 : 0;
    demo.on_frame = [&](std::uint8_t) {
        if (frames_to_cut > 0 && --frames_to_cut == 0)
            demo.power(false);
    };
    bench.after_ms(300, [&demo] { demo.power(true); });
    bench.after_ms(chance(10) ? below(6000) : 300'000, [&bench] {
        if (bench.session != nullptr)
            bench.stop();
    });

    Result result = Result::good;
    bench.talk(job.model, [&](Session& talk) { result = program_by_demo(talk, job, bench.report); });
    const bool good = result == Result::good;
    if (good) {
        EXPECT_EQ(demo.flash(0, size - 1), pattern(size)) << "said to be good, and is not";
    }
    return good;
}

} // namespace

TEST(DemoRandomFaults, NeverMakeTheToolCallAChipGoodThatIsNot)
{
    const int wanted = number_of("VRK_DOWNLOADS", 200);
    const auto first = static_cast<std::uint32_t>(number_of("VRK_SEED", usual_seed));
    int good = 0;
    for (int i = 0; i < wanted; ++i) {
        const std::uint32_t seed = first + static_cast<std::uint32_t>(i);
        good += one_download(seed) ? 1 : 0;
        ASSERT_FALSE(HasFailure()) << "to replay: VRK_SEED=" << seed
                                   << " VRK_DOWNLOADS=1 test_inapp --gtest_filter='DemoRandomFaults.*'";
    }
    EXPECT_TRUE(wanted < 100 || (good > wanted / 5 && good < wanted * 19 / 20)) << good << " good ones";
}
