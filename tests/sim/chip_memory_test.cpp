// Erasing, writing, options: what reaches the cells, and what the chip holds against the tool.
#include "sim/hand_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace sim::test {
namespace {

using testing::HasSubstr;

Bytes ramp(std::size_t size)
{
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

struct Juniper : HandTool {
    explicit Juniper(const ChipSetup& setup = default_setup(juniper_60q()))
        : HandTool(setup)
    {
        reach_final_speed();
    }
};

// Birch-20 with its 8-bit checks and short erase frames, at 115200.
struct Birch : HandTool {
    explicit Birch(const ChipSetup& setup = default_setup(birch_20()))
        : HandTool(setup)
    {
        call_up();
        offer({0x8F, 0xFF, 0xFD, 0x00, 6, 45, 0x81});
        turn_to(2400);
        offer({0x8E, 0xFF, 0xFD, 0x00, 6, 45});
    }
    void offer(const Bytes& frame)
    {
        write(command(frame, false));
        pass_ms(100);
        turn_to(115200);
        pass_ms(900);
    }
};
const Bytes birch_erase{0x84, 40, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33};

TEST(ChipErase, NewerFirmwareAnswersZeroAndItsSerialNumber)
{
    Juniper tool;
    const Bytes reply = tool.ask(long_erase(0xF001, 0xF001), 3000);
    EXPECT_EQ(code_of(reply), 0x00);
    EXPECT_EQ(rx(reply, 2), 14);
    EXPECT_EQ(rx(reply, 4), 0xF5);
    EXPECT_EQ(rx(reply, 10), 0x9B);
    EXPECT_EQ(tool.chip.state_name(), "erased");
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipErase, TakesItsTimePerKilobyteUnlessItAnswersAtOnce)
{
    Juniper tool;
    tool.write(command(long_erase(0xF001, 0xF001), true));
    EXPECT_EQ(tool.after_ms(850), Bytes{}); // 60 KB at 15 ms
    EXPECT_EQ(code_of(tool.after_ms(100)), 0x00);

    ChipSetup setup = default_setup(juniper_60q());
    setup.answers_at_once();
    Juniper quick(setup);
    EXPECT_EQ(code_of(quick.ask(long_erase(0xF001, 0xF001), 20)), 0x00);
}

TEST(ChipErase, RangeOfOneAddressLeavesTheDataFlashAndAWiderOneClearsIt)
{
    Juniper tool;
    tool.chip.preset_flash(0x0100, Bytes{1, 2, 3});
    tool.chip.preset_flash(0xF000, Bytes{4, 5, 6});
    tool.ask(long_erase(0xF001, 0xF001), 3000);
    EXPECT_EQ(tool.chip.flash(0x0100, 0x0102), (Bytes{0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(tool.chip.data_flash()[1], 5);

    tool.ask(long_erase(0xF001, 0xF3FF), 3000);
    EXPECT_EQ(tool.chip.data_flash(), Bytes(0x400, 0xFF));
}

TEST(ChipErase, OldestLettersWantFillersForTheRangeAndACountThatFits)
{
    Birch tool;
    EXPECT_EQ(tool.ask({0x84, 7, 0x33, 0x33, 0x33, 0x33, 0x33, 0x00}, 3000), Bytes{});
    EXPECT_EQ(tool.chip.violations(),
        "frame 84: 7 sectors do not fit this model\nframe 84: byte 12 (filler) is 00, wanted 33");
    EXPECT_EQ(code_of(tool.ask(birch_erase, 3000)), 0x84);
}

TEST(ChipErase, FormAndFillersOfTheLongFrameAreChecked)
{
    Juniper tool;
    EXPECT_EQ(tool.ask({0x84, 255, 0, 0xF0, 1, 0, 0xF0, 1}, 3000), Bytes{});
    Bytes frame = long_erase(0xF001, 0xF001);
    frame[19] = 0x7F; // index 24
    EXPECT_EQ(tool.ask(frame, 3000), Bytes{});
    EXPECT_EQ(tool.chip.violations(),
        "frame 84: 7 parameters, firmware 63I wants 133\nframe 84: byte 24 (filler) is 7F, wanted 80");
}

TEST(ChipErase, RangeBehindTheFlashOrBackwardsIsAViolation)
{
    Juniper tool;
    EXPECT_EQ(tool.ask(long_erase(0xF300, 0xF200), 3000), Bytes{});
    EXPECT_EQ(tool.ask(long_erase(0xF001, 0xF401), 3000), Bytes{});
    EXPECT_THAT(tool.chip.violations(), HasSubstr("range F001 to F401, the flash ends before F400"));
}

TEST(ChipBlocks, BlockIsWrittenAndAnsweredWithItsSum)
{
    Juniper tool;
    tool.erase();
    const Bytes data = ramp(128);
    const Bytes reply = tool.ask(block(0x00, 0x0200, data), 50);
    EXPECT_EQ(code_of(reply), 0x00);
    EXPECT_EQ(rx(reply, 4), 8256 & 0xFF);
    EXPECT_EQ(tool.chip.flash(0x0200, 0x027F), data);
    EXPECT_EQ(tool.chip.state_name(), "writing");
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipBlocks, OlderProtocolAnswers80WithOrWithoutTheSum)
{
    Birch tool;
    tool.ask(birch_erase, 3000);
    const Bytes reply = tool.ask(block(0x00, 0, ramp(4)), 50);
    EXPECT_EQ(code_of(reply), 0x80);
    EXPECT_EQ(rx(reply, 4), 10);

    ChipSetup setup = default_setup(birch_20());
    setup.short_block_answers = true;
    Birch curt(setup);
    curt.ask(birch_erase, 3000);
    EXPECT_EQ(curt.ask(block(0x00, 0, ramp(4)), 50), (Bytes{0x46, 0xB9, 0x68, 0x00, 0x06, 0x80, 0xEE, 0x16}));
}

TEST(ChipBlocks, WritingBeforeErasingIsAViolation)
{
    Juniper tool;
    EXPECT_EQ(tool.ask(block(0x00, 0, {1}), 50), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 00 (block): out of place, the loader is in state \"speed set\"");
}

TEST(ChipBlocks, CellsThatAreNotErasedRefuseOtherDataAndTakeTheSameAgain)
{
    Juniper tool;
    tool.erase();
    tool.ask(block(0x00, 0, {0x0F}), 50);
    EXPECT_EQ(code_of(tool.ask(block(0x00, 0, {0x0F}), 50)), 0x00);
    EXPECT_EQ(code_of(tool.ask(block(0x00, 0, {0xF0}), 50)), 0xFF);
    EXPECT_EQ(tool.chip.violations(), "frame 00 at 0000: written to cells that are not erased");
}

TEST(ChipBlocks, RepeatMarkIsForBlocksThatHaveComeBefore)
{
    Juniper tool;
    tool.erase();
    EXPECT_EQ(tool.ask(block(0x30, 0x0400, {1}), 50), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 30 at 0400: marked as a repeat, but nothing of its block came before");
    EXPECT_EQ(code_of(tool.ask(block(0x30, 0x0480, {1}), 50)), 0x00);
}

TEST(ChipBlocks, RepeatOfABlockThatWasDamagedOnItsWayIsTaken)
{
    Juniper tool;
    tool.erase();
    tool.wire.bytes_to_target.damage(20, 0x01);
    EXPECT_EQ(tool.ask(block(0x00, 0x0400, ramp(64)), 200), Bytes{});
    EXPECT_EQ(code_of(tool.ask(block(0x30, 0x0400, ramp(64)), 200)), 0x00);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipBlocks, CountMustFitTheFrame)
{
    Juniper tool;
    tool.erase();
    Bytes frame = block(0x00, 0, ramp(8));
    frame[6] = 9;
    EXPECT_EQ(tool.ask(frame, 50), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 00 at 0000: count 9, the frame has room for 8, wanted 1 to 128");
}

TEST(ChipBlocks, OneBlockBehindTheFlashIsAnsweredAndNotStoredMoreIsAViolation)
{
    Juniper tool;
    tool.erase();
    EXPECT_EQ(code_of(tool.ask(block(0x00, 0xF400, ramp(128)), 50)), 0x00);
    EXPECT_EQ(tool.chip.ignored_bytes(), 128U);
    EXPECT_EQ(tool.ask(block(0x00, 0xF600, ramp(128)), 50), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 00 at F600: behind the flash, which ends before F400");
}

TEST(ChipBlocks, RefusedBlockIsNotWrittenAsOftenAsAsked)
{
    Juniper tool;
    tool.erase();
    tool.chip.refuse_block(0x0210, 1);
    EXPECT_EQ(code_of(tool.ask(block(0x00, 0x0200, ramp(128)), 50)), 0xFF);
    EXPECT_EQ(tool.chip.flash(0x0200, 0x0200), Bytes{0xFF});
    EXPECT_EQ(code_of(tool.ask(block(0x30, 0x0200, ramp(128)), 50)), 0x00);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipBlocks, WrongSumIsAnsweredThoughTheBlockIsWritten)
{
    Juniper tool;
    tool.erase();
    tool.chip.send_wrong_sum();
    EXPECT_EQ(rx(tool.ask(block(0x00, 0, {1, 2}), 50), 4), 4);
    EXPECT_EQ(tool.chip.flash(0, 1), (Bytes{1, 2}));
    EXPECT_EQ(rx(tool.ask(block(0x30, 0, {1, 2}), 50), 4), 3);
}

TEST(ChipBlocks, PowerThatIsCutInABlockLeavesHalfOfIt)
{
    Juniper tool;
    tool.erase();
    tool.chip.cut_power_at_frame(2);
    tool.ask(block(0x00, 0, ramp(128)), 50);
    EXPECT_EQ(tool.ask(block(0x00, 0x80, ramp(128)), 50), Bytes{});
    EXPECT_EQ(tool.chip.state_name(), "off");
    EXPECT_EQ(tool.chip.flash(0x80 + 63, 0x80 + 64), (Bytes{64, 0xFF}));
    EXPECT_EQ(tool.chip.violations(), "");
}

// ---- options ----

Bytes options_of_16_rows(const std::array<std::uint8_t, 17>& rows, std::uint32_t clock)
{
    Bytes frame{0x8D};
    frame.insert(frame.end(), rows.begin(), rows.begin() + 16);
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        frame.push_back(static_cast<std::uint8_t>(clock >> shift));
    return frame;
}

struct WrittenJuniper : Juniper {
    WrittenJuniper()
    {
        erase();
        ask(block(0x00, 0, {1}), 50);
    }
};

TEST(ChipOptions, NewerSeriesTakeSixteenRowsOnceTheCodeHasEnded)
{
    WrittenJuniper tool;
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[2] = 0xDF;
    EXPECT_EQ(tool.ask(options_of_16_rows(rows, 11'059'743), 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D (options): out of place, the loader is in state \"writing\"");

    EXPECT_EQ(code_of(tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200)), 0x8D);
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'743), 200)), 0x81);
    EXPECT_EQ(tool.chip.options()[2], 0xDF);
    EXPECT_EQ(rx(tool.ask({0x50}), 14), 0xDF);
}

TEST(ChipOptions, BitsWithoutACellStayAsTheyLeftTheFactory)
{
    WrittenJuniper tool;
    tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[1] = 0x00;
    tool.ask(options_of_16_rows(rows, 11'059'200), 200);
    EXPECT_EQ(tool.chip.options()[1], 0x08);
}

TEST(ChipOptions, ClockInTheFrameMustBeTheOneThatWasCounted)
{
    WrittenJuniper tool;
    tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
    EXPECT_EQ(tool.ask(options_of_16_rows(tool.chip.options(), 12'000'000), 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: clock 12000000 Hz at byte 22, counted 11059200 Hz");
}

TEST(ChipOptions, BusyChipSaysNotYetAndRefusingOneSaysWellAndDoesNothing)
{
    WrittenJuniper tool;
    tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[0] = 0xFE;
    tool.chip.faults.busy_options = 1;
    tool.chip.faults.refused_options = 1;
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'200), 200)), 0x50);
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'200), 200)), 0x81);
    EXPECT_EQ(tool.chip.options()[0], 0xFF);
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'200), 200)), 0x81);
    EXPECT_EQ(tool.chip.options()[0], 0xFE);
}

TEST(ChipOptions, OlderSeriesTakeTwoRowsAndTheReload)
{
    Birch tool;
    tool.ask(birch_erase, 3000);
    tool.ask(block(0x00, 0, {1}), 50);
    EXPECT_EQ(tool.ask({0x8D, 0xFC, 0xFF, 0xF0, 0xFD}, 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: reload of 16 steps, in force are 3");
    EXPECT_EQ(code_of(tool.ask({0x8D, 0xFC, 0xFF, 0xFA, 0xFD}, 200)), 0x80);
    EXPECT_EQ(tool.chip.options()[1], 0xFC);
    EXPECT_EQ(tool.chip.options()[8], 0xFD);
    EXPECT_TRUE(at_double_speed(tool.chip.setup()));
}

TEST(ChipOptions, ParameterCountIsTheOneOfTheSeries)
{
    Birch tool;
    tool.ask(birch_erase, 3000);
    tool.ask(block(0x00, 0, {1}), 50);
    EXPECT_EQ(tool.ask({0x8D, 0xFF}, 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: 1 parameters, wanted 4");
}

// Series 3 to 6: rows told twice, the clock twice, three fillers. Cedar-4, at 115200.
ChipModel cedar_4() { return {"Cedar-4", 3, "F204", "", 0x0FFF, 0x1000, 0x13FF, 0x1400, false, false, false, false}; }

Bytes options_told_twice(const std::array<std::uint8_t, 17>& rows, std::uint8_t fifth)
{
    const Bytes clock{0x00, 0xA8, 0xC0, 0x00};
    Bytes frame{0x8D, rows[2], rows[3], rows[8], rows[10], fifth};
    frame.insert(frame.end(), clock.begin(), clock.end());
    frame.insert(frame.end(), rows.begin(), rows.begin() + 16);
    frame.insert(frame.end(), clock.begin(), clock.end());
    frame.insert(frame.end(), 3, 0xFF);
    return frame;
}

struct Cedar : HandTool {
    Cedar()
        : HandTool(cedar_4())
    {
        call_up();
        offer({0x8F, 192, 250, 63, 12, 45, 0x83});
        turn_to(2400);
        offer({0x8E, 192, 250, 63, 12, 45});
        ask({0x84, 255, 0, 0x10, 0x01, 0, 0x10, 0x01}, 3000);
        ask(block(0x00, 0, {1}), 50);
    }
    void offer(const Bytes& frame)
    {
        write(command(frame, false));
        pass_ms(100);
        turn_to(115200);
        pass_ms(900);
    }
};

TEST(ChipOptions, Series3To6AreToldTheirRowsTwice)
{
    Cedar tool;
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[0] = 0xBF;
    rows[3] = 0xFA;
    EXPECT_EQ(code_of(tool.ask(options_told_twice(rows, rows[11]), 200)), 0x80);
    EXPECT_EQ(tool.chip.options()[0], 0xBF);
    EXPECT_EQ(tool.chip.options()[3], 0xFA);
    EXPECT_EQ(tool.chip.violations(), "");
    EXPECT_EQ(tool.ask(options_told_twice(rows, 0x00), 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: byte 10 (option row, told twice) is 00, wanted FF");
}

// ---- the whole road, twice ----

TEST(ChipDownload, TwoRunsOfTheSameRoadHaveTheSameEventLog)
{
    const auto run = [] {
        WrittenJuniper tool;
        tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
        tool.ask({0x82}, 100);
        EXPECT_EQ(tool.chip.violations(), "");
        return tool.loop.log.hash();
    };
    EXPECT_EQ(run(), run());
}

} // namespace
} // namespace sim::test
