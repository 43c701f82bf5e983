// Erasing and writing: what reaches the cells, and what the chip holds against the tool.
#include "sim/ready_chips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sim::test {
namespace {

using testing::HasSubstr;

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

} // namespace
} // namespace sim::test
