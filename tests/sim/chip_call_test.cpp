// From power-up to the status frame.
#include "sim/hand_tool.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sim::test {
namespace {

double measured_clock(const Bytes& status, std::int32_t baud, int factor)
{
    double sum = 0;
    for (std::size_t i = 4; i < 20; i += 2)
        sum += rx(status, i) * 256 + rx(status, i + 1);
    return (std::nearbyint(sum * (baud / 1200) / 8) + 6) * factor;
}

ChipModel with_id(const char* id) { return {"Any", 7, id}; }

TEST(ChipCall, StatusFrameComesWhenItHearsSyncBytesInItsBootWindow)
{
    HandTool tool(juniper_60q());
    const Bytes status = tool.call_up();
    EXPECT_EQ(code_of(status), 0x50);
    EXPECT_EQ(tool.chip.state_name(), "called");
    EXPECT_EQ(tool.chip.handshake_baud(), 2400);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipCall, AnswersAtTheSpeedItWasCalledWith)
{
    HandTool tool(juniper_60q());
    EXPECT_EQ(code_of(tool.call_up(19200)), 0x50);
    EXPECT_EQ(tool.chip.line().baud, 19200);
}

TEST(ChipCall, UserProgramRunsWhenNobodyCallsInTheBootWindow)
{
    HandTool tool(juniper_60q());
    tool.open(2400);
    tool.chip.power_up();
    tool.pass_ms(410);
    EXPECT_EQ(tool.chip.state_name(), "user code");
    tool.call(20);
    EXPECT_EQ(tool.after_ms(1000), Bytes{});
}

TEST(ChipCall, BootWindowCanBeAsShortAsTheSpecimenDemands)
{
    ChipSetup setup = default_setup(juniper_60q());
    setup.boot_window_us = 20'000;
    HandTool tool(setup);
    EXPECT_EQ(tool.call_up(), Bytes{});
    EXPECT_EQ(tool.chip.state_name(), "user code");
}

TEST(ChipCall, CallersThatAreAlreadyAtItWhenPowerComesAreHeard)
{
    HandTool tool(juniper_60q());
    tool.open(2400);
    tool.chip.power_up_after_ms(55);
    tool.call(20);
    EXPECT_EQ(code_of(tool.after_ms(500)), 0x50);
}

TEST(ChipCall, SyncBytesOfTheWrongParityAreNoCall)
{
    HandTool tool(juniper_60q());
    tool.line.parity = vrk::Parity::odd;
    EXPECT_EQ(tool.call_up(), Bytes{});
    EXPECT_EQ(tool.chip.state_name(), "user code");

    HandTool second(juniper_60q());
    second.line.parity = vrk::Parity::none;
    EXPECT_EQ(second.call_up(), Bytes{});
}

TEST(ChipCall, OtherBytesBetweenSyncBytesStartTheCountAnew)
{
    HandTool tool(juniper_60q());
    tool.open(19200);
    tool.chip.power_up();
    tool.pass_ms(6);
    tool.write({0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x00, 0x7F});
    EXPECT_EQ(tool.after_ms(100), Bytes{});
    tool.write({0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F});
    EXPECT_EQ(code_of(tool.after_ms(100)), 0x50);
}

TEST(ChipCall, LostStatusFrameIsSentAgainWhenTheCallGoesOn)
{
    HandTool tool(juniper_60q());
    tool.chip.lose_reply(1);
    EXPECT_EQ(tool.call_up(), Bytes{});
    tool.call(20);
    EXPECT_EQ(code_of(tool.after_ms(500)), 0x50);
}

TEST(ChipCall, PinsThatTheOptionAsksForMustBeGroundedForTheLoaderToStart)
{
    ChipSetup setup = default_setup(juniper_60q());
    setup.options[8] = 0xFE;
    setup.pins_grounded = false;
    HandTool open_pins(setup);
    EXPECT_EQ(open_pins.call_up(), Bytes{});

    setup.pins_grounded = true;
    HandTool grounded(setup);
    EXPECT_EQ(code_of(grounded.call_up()), 0x50);
}

// The tool's rule gives the clock back, to half a loop of the count; above 9600 baud, to half a count.
struct SpeedOfCall {
    std::int32_t baud;
    int factor;
    double tolerance_hz;
};
class ChipClock : public testing::TestWithParam<SpeedOfCall> { };
TEST_P(ChipClock, IsGivenBackByTheCounts)
{
    HandTool tool(juniper_60q());
    const double clock = measured_clock(tool.call_up(GetParam().baud), GetParam().baud, GetParam().factor);
    EXPECT_NEAR(clock, 11'059'200, GetParam().tolerance_hz);
}
// clang-format off
INSTANTIATE_TEST_SUITE_P(EverySpeed, ChipClock, testing::Values(
    SpeedOfCall{   1200, 2061,  1031 },
    SpeedOfCall{   2400, 2063,  1032 },
    SpeedOfCall{   4800, 2066,  1033 },
    SpeedOfCall{   9600, 2068,  1034 },
    SpeedOfCall{  14400, 2068,  1034 * 2.5 },
    SpeedOfCall{  19200, 2070,  1035 * 3 },
    SpeedOfCall{  28800, 2072,  1036 * 4 },
    SpeedOfCall{  38400, 2075,  1038 * 5 },
    SpeedOfCall{  57600, 2080,  1040 * 7 },
    SpeedOfCall{ 115200, 2101,  1051 * 13 }));
// clang-format on

TEST(ChipCall, ClockCountedIsTwiceTheCrystalAtDoubleSpeed)
{
    ChipSetup setup = default_setup(birch_20());
    setup.options[1] = 0xFC;
    HandTool tool(setup);
    EXPECT_NEAR(measured_clock(tool.call_up(), 2400, 2063), 22'118'400, 1100);
}

TEST(ChipCall, ProbeAtFixedSpeedIsAnsweredThereWithItsOwnCounts)
{
    HandTool tool(birch_20());
    tool.open(115200);
    tool.chip.power_up();
    tool.pass_ms(10);
    Bytes probe{0xFE, 0xFE, 0xFE, 0xFE};
    const Bytes frame = command({0x8A}, false);
    probe.insert(probe.end(), frame.begin(), frame.end());
    tool.write(probe);
    const Bytes status = tool.after_ms(50);
    ASSERT_EQ(code_of(status), 0x50);
    double sum = 0;
    for (std::size_t i = 4; i < 20; i += 2)
        sum += rx(status, i) * 256 + rx(status, i + 1);
    EXPECT_NEAR((sum + 145) * 500.5, 11'059'200, 260);
    EXPECT_EQ(tool.chip.line(), (vrk::LineSettings{115200, vrk::Parity::none, 8, 1}));
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipCall, LeaveSendsItToTheUserProgram)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    EXPECT_EQ(tool.ask({0x82}, 100), Bytes{});
    EXPECT_EQ(tool.chip.state_name(), "user code");
}

TEST(ChipCall, PowerOffBreaksAReplyOffAndPowerUpStartsAnew)
{
    HandTool tool(juniper_60q());
    tool.open(2400);
    tool.chip.power_up();
    tool.pass_ms(6);
    tool.call(6);
    tool.pass_ms(50);
    tool.chip.power_off();
    const Bytes piece = tool.after_ms(1000);
    EXPECT_GT(piece.size(), 3U);
    EXPECT_LT(piece.size(), 40U);
    EXPECT_EQ(tool.chip.state_name(), "off");

    tool.chip.power_up();
    tool.pass_ms(6);
    tool.call(8);
    EXPECT_EQ(code_of(tool.after_ms(800)), 0x50);
    EXPECT_EQ(tool.chip.power_ups(), 2);
}

TEST(ChipCall, StatesAreToldToWhoWatches)
{
    HandTool tool(juniper_60q());
    std::string seen;
    tool.chip.on_state_change.push_back([&](Chip::State state) { seen += state_name(state) + "; "; });
    tool.call_up();
    tool.ask({0x82}, 100);
    EXPECT_EQ(seen, "starting; listening; called; user code; ");
}

// ---- what can go wrong with the status frame ----

TEST(ChipCall, WrongIdIsReportedOnRequest)
{
    HandTool tool(juniper_60q());
    tool.chip.report_id(0xD11E);
    const Bytes status = tool.call_up();
    EXPECT_EQ(rx(status, 23), 0xD1);
    EXPECT_EQ(rx(status, 24), 0x1E);
}

TEST(ChipCall, UnreadableIdSetsItsFlag)
{
    HandTool tool(juniper_60q());
    EXPECT_EQ(rx(tool.call_up(), 54), 0);
    HandTool second(juniper_60q());
    second.chip.report_id_unreadable();
    EXPECT_EQ(rx(second.call_up(), 54), 1);
}

TEST(ChipCall, ShortStatusFrameEndsBeforeTheOptions)
{
    HandTool tool(birch_20());
    tool.chip.send_status_as(StatusLayout::brief);
    EXPECT_EQ(tool.call_up().size(), 26U);
}

TEST(ChipCall, SilentChipActsAndSaysNothing)
{
    HandTool tool(juniper_60q());
    tool.chip.keep_silent();
    EXPECT_EQ(tool.call_up(), Bytes{});
    EXPECT_EQ(tool.chip.state_name(), "called");
}

TEST(ChipCall, NoiseStandsInFrontOfTheReply)
{
    HandTool tool(juniper_60q());
    tool.chip.noise_before_reply(1, {0x00, 0x68});
    const Bytes status = tool.call_up();
    EXPECT_EQ(status[0], 0x00);
    EXPECT_EQ(status[1], 0x68);
    EXPECT_EQ(status[2], 0x46);
}

TEST(ChipCall, TwoDigitIdHasAnEmptySecondByteAndTheAlternativeOneCanBeReported)
{
    HandTool aspen(ChipModel{"Aspen-32", 1, "58", "", 0x7FFF, 0x7FFF, 0x7FFF, 0xFC00, false, false, false, false});
    const Bytes status = aspen.call_up();
    EXPECT_EQ(rx(status, 23), 0x58);
    EXPECT_EQ(rx(status, 24), 0xFF);

    ChipModel model = with_id("E068");
    model.alt_id = "F318";
    ChipSetup setup = default_setup(model);
    setup.reports_alt_id = true;
    HandTool elm(setup);
    EXPECT_EQ(rx(elm.call_up(), 23), 0xF3);
}

} // namespace
} // namespace sim::test
