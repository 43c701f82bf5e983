// The baud negotiation as the chip lives it.
#include "sim/chip_clock.h"
#include "sim/hand_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sim::test {
namespace {

using testing::HasSubstr;

// Birch at 11.0592 MHz: clock / 32 / 3 = 115200. The reload is FFFD.
const Bytes birch_test{0x8F, 0xFF, 0xFD, 0x00, 6, 45, 0x81};
const Bytes birch_set{0x8E, 0xFF, 0xFD, 0x00, 6, 45};

struct Birch : HandTool {
    Birch()
        : HandTool(birch_20())
    {
        call_up();
    }
    Bytes offer(const Bytes& frame)
    {
        take();
        write(command(frame, false));
        pass_ms(100);
        turn_to(115200);
        return after_ms(900);
    }
};

TEST(GeneratedBaud, NewerSeriesChooseADividerByMode)
{
    EXPECT_EQ(generated_baud(true, 11'059'200, 192, 250), 115200);
    EXPECT_EQ(generated_baud(true, 11'059'200, 64, 253), 115200);
    EXPECT_EQ(generated_baud(true, 11'059'200, 128, 255), 57600);
    EXPECT_EQ(generated_baud(true, 11'059'200, 0, 255), 28800);
    EXPECT_EQ(generated_baud(true, 11'059'200, 1, 255), 0);
}

TEST(GeneratedBaud, OlderSeriesHaveASixteenBitReload)
{
    EXPECT_EQ(generated_baud(false, 11'059'200, 0xFF, 0xFD), 115200);
    EXPECT_EQ(generated_baud(false, 11'059'200, 0xFE, 0xE0), 1200);
}

TEST(ChipSpeed, TestIsAnsweredOnceAtTheNewSpeedAndThenTheOldOneIsBack)
{
    Birch tool;
    EXPECT_EQ(code_of(tool.offer(birch_test)), 0x8F);
    EXPECT_EQ(tool.chip.line().baud, 2400);
    tool.turn_to(2400);
    EXPECT_EQ(code_of(tool.ask({0x50})), 0x50);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipSpeed, ToolThatStaysAtTheOldSpeedGetsNothingButGarbage)
{
    Birch tool;
    EXPECT_NE(code_of(tool.ask(birch_test)), 0x8F);
    EXPECT_EQ(tool.chip.line().baud, 2400);
}

TEST(ChipSpeed, ToolThatTurnsAfterTheAnswerHasBegunMissesIt)
{
    Birch tool;
    tool.write(command(birch_test, false));
    tool.pass_ms(194); // 58.3 ms for the frame, 135 ms pause, 0.3 ms to think: now it answers
    tool.turn_to(115200);
    EXPECT_NE(code_of(tool.after_ms(900)), 0x8F);
}

TEST(ChipSpeed, AnswerWaitsForThePauseThatTheFrameAsksFor)
{
    Birch tool;
    tool.write(command(birch_test, false));
    tool.pass_ms(100);
    tool.turn_to(115200);
    EXPECT_EQ(tool.after_ms(92), Bytes{});
    EXPECT_EQ(code_of(tool.after_ms(5)), 0x8F);
}

TEST(ChipSpeed, SetStaysAtTheNewSpeed)
{
    Birch tool;
    tool.offer(birch_test);
    tool.turn_to(2400);
    EXPECT_EQ(code_of(tool.offer(birch_set)), 0x8E);
    EXPECT_EQ(tool.chip.state_name(), "speed set");
    EXPECT_EQ(tool.chip.line().baud, 115200);
    EXPECT_EQ(code_of(tool.ask({0x50})), 0x50);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipSpeed, SetWithoutATestIsAViolation)
{
    Birch tool;
    EXPECT_EQ(tool.offer(birch_set), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8E: reload FFFD was not tried by frame 8F before");
}

TEST(ChipSpeed, NewerProtocolNamesTheNextCommandInItsAnswers)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    EXPECT_EQ(code_of(tool.ask(model_frame(0x50, 7, 0xD1, 0x7E), 300)), 0x8F);
    EXPECT_EQ(code_of(tool.offer_speed(0x8F)), 0x8E);
    tool.turn_to(2400);
    EXPECT_EQ(code_of(tool.offer_speed(0x8E)), 0x84);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipSpeed, ActualSpeedComesFromTheChipsOwnClock)
{
    ChipSetup setup = default_setup(juniper_60q());
    setup.crystal_hz = 11'200'000;
    HandTool tool(setup);
    tool.reach_final_speed();
    EXPECT_EQ(tool.chip.line().baud, 116667); // 1.3 % above, and understood
    EXPECT_EQ(tool.chip.state_name(), "speed set");
}

TEST(ChipSpeed, ParametersAreCheckedOneByOne)
{
    Birch tool;
    EXPECT_EQ(tool.offer({0x8F, 0xFF, 0xFD, 0x01, 7, 45, 0x81}), Bytes{});
    tool.turn_to(2400);
    EXPECT_EQ(tool.offer({0x8F, 0xFF, 0xFD, 0x00, 6, 44, 0x80}), Bytes{});
    EXPECT_EQ(tool.chip.violations(),
        "frame 8F: byte 8 (complement) is 01, wanted 00\n"
        "frame 8F: byte 9 (doubled reload) is 07, wanted 06\n"
        "frame 8F: pause 44 after a call at 2400 baud, wanted 45\n"
        "frame 8F: wait states 80 for a clock of 11059200 Hz, wanted 81");
}

TEST(ChipSpeed, ReloadThatGivesNoUsableSpeedIsAViolation)
{
    Birch tool;
    EXPECT_EQ(tool.offer({0x8F, 0xFF, 0xFF, 0x00, 2, 45, 0x81}), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8F: reload FFFF gives 345600 baud, wanted 1200 to 115200");
}

TEST(ChipSpeed, DoubledReloadIsCutToFEInTheTestAndToFFInTheSetting)
{
    HandTool tool(birch_20());
    tool.call_up();
    // 1200 baud: 288 steps, reload FEE0: (256 - E0) * 2 = 40; 9600 baud from 24 MHz would be above.
    EXPECT_EQ(tool.ask({0x8F, 0xFF, 0x00, 0x00, 0xFF, 45, 0x81}), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8F: byte 9 (doubled reload) is FF, wanted FE");
}

TEST(ChipSpeed, PauseIsDoubledAbove68Megahertz)
{
    ChipSetup setup = default_setup(juniper_60q());
    setup.crystal_hz = 73'728'000;
    HandTool tool(setup);
    tool.call_up();
    tool.ask(model_frame(0x50, 7, 0xD1, 0x7E), 300);
    tool.write(command({0x8F, 192, 216, 63, 80, 90, 0x80}, true));
    tool.pass_ms(200);
    tool.turn_to(115200);
    EXPECT_EQ(code_of(tool.after_ms(300)), 0x8E);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipSpeed, FixedSpeedTakesEmptyReloadsAndStays)
{
    HandTool tool(birch_20());
    tool.open(115200);
    tool.chip.power_up();
    tool.pass_ms(10);
    tool.write(command({0x8A}, false));
    tool.pass_ms(50);
    EXPECT_EQ(code_of(tool.ask({0x8F, 0, 0, 0xFF, 0xFE, 9, 0x81})), 0x8F);
    EXPECT_EQ(tool.chip.state_name(), "speed set");
    EXPECT_EQ(tool.chip.line().baud, 115200);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipSpeed, DamageOfASpeedTestOnTheWayLeavesTheOldSpeed)
{
    Birch tool;
    tool.wire.bytes_to_target.damage(9, 0x04);
    EXPECT_EQ(tool.offer(birch_test), Bytes{});
    EXPECT_EQ(tool.chip.line().baud, 2400);
    EXPECT_EQ(tool.chip.violations(), "");
    EXPECT_THAT(tool.chip.line_faults(), HasSubstr("frame 8F: check"));
}

// ---- RC test, series 15 and 16 ----

Bytes rc_frame(const Bytes& band_trim_pairs)
{
    Bytes frame{0x65, 0, 0, 0x58, 0x80, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    frame.push_back(static_cast<std::uint8_t>(band_trim_pairs.size() / 2));
    for (std::size_t i = 0; i < band_trim_pairs.size(); i += 2)
        frame.insert(frame.end(), {band_trim_pairs[i], band_trim_pairs[i + 1], 0, 0});
    return frame;
}

TEST(ChipRcTest, MeasuresEachPointWhileItHearsSyncBytesAndReportsTheCounts)
{
    HandTool tool(holly_4());
    tool.call_up();
    EXPECT_EQ(code_of(tool.ask(model_frame(0x50, 16, 0xF3, 0x84), 300)), 0x8F);
    EXPECT_EQ(tool.ask(rc_frame({0x58, 0x80, 0xA0, 0x10}), 200), Bytes{});
    EXPECT_EQ(tool.chip.state_name(), "testing RC");
    tool.call(4);
    const Bytes report = tool.after_ms(300);
    EXPECT_EQ(code_of(report), 0x8E);
    EXPECT_EQ(rx(report, 14), 2);
    EXPECT_EQ(rx(report, 15), 0x58);
    EXPECT_EQ(rx(report, 16), 0x80);
    const int count = rx(report, 17) * 256 + rx(report, 18);
    EXPECT_NEAR((count * 2 + 6) * 2063.0, rc_frequency_hz(0x58, 0x80), 2063);
    EXPECT_EQ(code_of(tool.ask(model_frame(0x8E, 16, 0xF3, 0x84))), 0x84);
    EXPECT_EQ(tool.chip.state_name(), "speed set");
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipRcTest, SavedTrimOfTheStatusFrameMustComeBack)
{
    HandTool tool(holly_4());
    tool.call_up();
    tool.ask(model_frame(0x50, 16, 0xF3, 0x84), 300);
    Bytes frame = rc_frame({0x58, 0x80});
    frame[3] = 0x57;
    EXPECT_EQ(tool.ask(frame, 300), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 65: byte 8 (saved trim) is 57, wanted 58");
}

TEST(ChipRcTest, OscillatorRisesWithTrimAndItsBandsOverlap)
{
    EXPECT_LT(rc_frequency_hz(0x18, 0), rc_frequency_hz(0x18, 255));
    EXPECT_GT(rc_frequency_hz(0x18, 255), rc_frequency_hz(0x58, 0));
    EXPECT_GT(rc_frequency_hz(0x58, 255), rc_frequency_hz(0xA0, 0));
    EXPECT_GT(rc_frequency_hz(0xA0, 255), rc_frequency_hz(0xE0, 0));
    EXPECT_GT(rc_frequency_hz(0xE0, 255), 40e6);
}

} // namespace
} // namespace sim::test
