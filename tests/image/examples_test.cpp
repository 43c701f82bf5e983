// The firmware that comes with the tool is read as its compiler meant it.
#include "image/bench.h"
#include "image/file_loader.h"

using namespace vrk;
using image_test::Bench;

namespace {

std::string example(std::string_view name)
{
    return std::string{PROJECT_DIR} + "/examples/firmware/" + std::string{name} + ".hex";
}

} // namespace

TEST(Examples, EachFitsAJuniper60QWithoutAWord)
{
    Bench bench{"Juniper-60Q"};
    EXPECT_TRUE(load_file(bench.shell, example("blink"), bench.code));
    EXPECT_TRUE(load_file(bench.shell, example("chaser"), bench.code));
    EXPECT_TRUE(load_file(bench.shell, example("terminal"), bench.code));
    EXPECT_TRUE(load_file(bench.shell, example("atlas"), bench.code));
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(Examples, BlinkIsShorterThanTheLeastLength)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, example("blink"), bench.code);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.code.data[0], 0x02) << "a long jump at reset";
}

TEST(Examples, TerminalHoldsItsGreeting)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, example("terminal"), bench.code);
    const std::string image(bench.code.data.begin(), bench.code.data.end());
    EXPECT_NE(image.find("Bench monitor. Type HELP and press Enter."), std::string::npos);
}

TEST(Examples, AtlasReachesAbove32KB)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, example("atlas"), bench.code);
    EXPECT_GT(bench.code.high, 0x8000);
}
