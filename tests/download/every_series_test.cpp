// A good download for a model of every series that can be programmed.
#include "bench.h"

#include <algorithm>

using namespace vrk;

namespace {

// What the download leaves in the chip besides 00 of its padding: the whole code file.
void expect_success(Bench& bench, std::size_t code_size)
{
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.dialogs.shown.size(), 0U);
    EXPECT_EQ(bench.chip.violations(), "");
    EXPECT_EQ(bench.flash(0, code_size - 1), bench.code(0, code_size - 1));
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_FALSE(bench.shell.port.is_open());
}

class EverySeries : public ::testing::TestWithParam<const char*> { };

} // namespace

TEST_P(EverySeries, TakesItsCode)
{
    Bench bench(GetParam());
    const auto size = static_cast<std::size_t>(std::min(bench.shell.selected.ap_last + 1, 0x1200));
    bench.open_code(Bench::pattern(size));
    bench.download();
    expect_success(bench, size);
}

class EveryDataFlash : public ::testing::TestWithParam<const char*> { };

TEST_P(EveryDataFlash, TakesItsDataBesidesItsCode)
{
    Bench bench(GetParam());
    const auto code_size = static_cast<std::size_t>(std::min(bench.shell.selected.ap_last + 1, 0x800));
    bench.open_code(Bench::pattern(code_size));
    const auto data = Bench::pattern(0x200, 7);
    bench.open_data(data);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.violations(), "");
    EXPECT_EQ(bench.flash(0, code_size - 1), bench.code(0, code_size - 1));
    const auto first = static_cast<std::size_t>(bench.shell.selected.eeprom_first);
    EXPECT_EQ(bench.flash(first, first + data.size() - 1), data);
}

namespace {

std::string test_name(const ::testing::TestParamInfo<const char*>& info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(OneModelEach, EverySeries,
    ::testing::Values("Alder-64", "Aspen-63", "Aspen-16", "Birch-8", "Birch-32", "Cedar-4R", "Elm-8R", "Elm-28R",
        "Fir-8R", "Fir-28R", "Fir-30R", "Hazel-4R", "Hazel-6R", "Juniper-60Q", "Juniper-I62Q", "Juniper-8L",
        "Larch-12V", "Larch-I14V", "Maple-4S", "Maple-I6", "Oak-20V", "Oak-I62W", "Pine-32", "Rowan-8", "Spruce-16",
        "Poplar-4L", "Holly-4", "Holly-I6", "Willow-12R", "Willow-I14R"),
    test_name);

INSTANTIATE_TEST_SUITE_P(OneModelEach, EveryDataFlash,
    ::testing::Values(
        "Fir-8R", "Fir-20R", "Hazel-2R", "Juniper-32Q", "Larch-8V", "Maple-3S", "Oak-20V", "Holly-4", "Willow-8R"),
    test_name);
