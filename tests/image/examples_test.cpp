// The firmware that comes with the tool is read as its compiler meant it.
#include "image/bench.h"

using namespace vrk;
using image_test::LoadBench;

namespace {

std::string example(std::string_view name)
{
    return std::string{PROJECT_DIR} + "/examples/firmware/" + std::string{name} + ".hex";
}

} // namespace

TEST(Examples, EachFitsAJuniper60QWithoutAWord)
{
    LoadBench bench{"Juniper-60Q"};
    EXPECT_EQ(bench.load(example("blink")), LoadEnd::done);
    EXPECT_TRUE(bench.reports.empty());
    EXPECT_EQ(bench.load(example("chaser")), LoadEnd::done);
    EXPECT_TRUE(bench.reports.empty());
    EXPECT_EQ(bench.load(example("terminal")), LoadEnd::done);
    EXPECT_TRUE(bench.reports.empty());
    EXPECT_EQ(bench.load(example("atlas")), LoadEnd::done);
    EXPECT_TRUE(bench.boxes.shown.empty());
    EXPECT_TRUE(bench.reports.empty());
}

TEST(Examples, BlinkIsShorterThanTheLeastLength)
{
    LoadBench bench{"Juniper-60Q"};
    bench.load(example("blink"));
    EXPECT_EQ(bench.buffer.high, 511);
    EXPECT_EQ(bench.buffer.data[0], 0x02) << "a long jump at reset";
}

TEST(Examples, TerminalHoldsItsGreeting)
{
    LoadBench bench{"Juniper-60Q"};
    bench.load(example("terminal"));
    const std::string image(bench.buffer.data.begin(), bench.buffer.data.end());
    EXPECT_NE(image.find("Bench monitor. Type HELP and press Enter."), std::string::npos);
}

TEST(Examples, AtlasReachesAbove32KB)
{
    LoadBench bench{"Juniper-60Q"};
    bench.load(example("atlas"));
    EXPECT_GT(bench.buffer.high, 0x8000);
}
