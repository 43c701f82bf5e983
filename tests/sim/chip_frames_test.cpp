// What the loader finds wrong with frames, and what it says of it.
#include "sim/frame_reader.h"
#include "sim/hand_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sim::test {
namespace {

using testing::HasSubstr;

FrameReader::Outcome feed(FrameReader& reader, const Bytes& bytes)
{
    FrameReader::Outcome last = FrameReader::Outcome::nothing;
    for (const std::uint8_t byte : bytes)
        last = reader.take(byte);
    return last;
}

TEST(FrameReader, TakesAGoodFrameBehindPreambleAndSyncBytes)
{
    FrameReader reader(false);
    EXPECT_EQ(feed(reader, {0x7F, 0xFE, 0xFE, 0xFE, 0xFE, 0x46, 0xB9, 0x6A, 0x00, 0x06, 0x82, 0xF2, 0x16}),
        FrameReader::Outcome::frame);
    EXPECT_EQ(reader.frame().code(), 0x82);
    EXPECT_EQ(reader.frame().parameter_count(), 0U);
    EXPECT_EQ(reader.stray_bytes(), 0U);
}

TEST(FrameReader, TakesALongFrameWithItsSixteenBitCheck)
{
    FrameReader reader(true);
    EXPECT_EQ(feed(reader, {0x46, 0xB9, 0x6A, 0x00, 0x07, 0x95, 0x01, 0x06, 0x16}), FrameReader::Outcome::frame);
}

TEST(FrameReader, WantsTheCheckLengthOfItsOwnModel)
{
    FrameReader reader(true);
    EXPECT_EQ(feed(reader, {0x46, 0xB9, 0x6A, 0x00, 0x06, 0x95, 0x05, 0x16}), FrameReader::Outcome::nothing);
    EXPECT_EQ(reader.complaint(), "frame: length 0006, wanted 07 to 8E");
}

TEST(FrameReader, TellsWrongCheckWrongEndAndWrongDirection)
{
    FrameReader reader(false);
    EXPECT_EQ(feed(reader, {0x46, 0xB9, 0x6A, 0x00, 0x06, 0x82, 0xF3, 0x16}), FrameReader::Outcome::bad);
    EXPECT_EQ(reader.complaint(), "frame 82: check F3, its bytes give F2");
    EXPECT_EQ(feed(reader, {0x46, 0xB9, 0x6A, 0x00, 0x06, 0x82, 0xF2, 0x17}), FrameReader::Outcome::bad);
    EXPECT_EQ(reader.complaint(), "frame 82: ends with 17, wanted 16");
    EXPECT_EQ(feed(reader, {0x46, 0xB9, 0x68}), FrameReader::Outcome::bad);
    EXPECT_EQ(reader.complaint(), "frame: direction byte 68, wanted 6A");
}

TEST(FrameReader, CountsBytesOutsideOfFramesAndGoesOn)
{
    FrameReader reader(false);
    EXPECT_EQ(
        feed(reader, {0x00, 0x46, 0x00, 0x46, 0xB9, 0x6A, 0x00, 0x06, 0x82, 0xF2, 0x16}), FrameReader::Outcome::frame);
    EXPECT_EQ(reader.stray_bytes(), 3U);
}

TEST(ChipFrames, DamageOnTheLineIsNoFaultOfTheSender)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    tool.wire.bytes_to_target.damage(8, 0x01);
    EXPECT_EQ(tool.ask(model_frame(0x50, 7, 0xD1, 0x7E), 300), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "");
    EXPECT_THAT(tool.chip.line_faults(), HasSubstr("frame 50: check"));
}

TEST(ChipFrames, FrameThatLostAByteBreaksOffAndTheNextOneIsHeard)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    tool.wire.bytes_to_target.lose(8);
    EXPECT_EQ(tool.ask(model_frame(0x50, 7, 0xD1, 0x7E), 300), Bytes{});
    EXPECT_EQ(code_of(tool.ask(model_frame(0x50, 7, 0xD1, 0x7E), 300)), 0x8F);
    EXPECT_EQ(tool.chip.violations(), "");
    EXPECT_EQ(tool.chip.line_faults(), "frame: broke off after 14 bytes");
}

TEST(ChipFrames, FrameCutShortByItsSenderIsAViolation)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    Bytes frame = command(model_frame(0x50, 7, 0xD1, 0x7E), true);
    frame.resize(9);
    tool.write(frame);
    tool.pass_ms(300);
    EXPECT_EQ(code_of(tool.ask(model_frame(0x50, 7, 0xD1, 0x7E), 300)), 0x8F);
    EXPECT_EQ(tool.chip.violations(), "frame: broke off after 9 bytes");
}

TEST(ChipFrames, ModelFrameMustNameThisModel)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    EXPECT_EQ(tool.ask(model_frame(0x50, 8, 0xD1, 0x7E), 300), Bytes{});
    EXPECT_EQ(tool.ask(model_frame(0x50, 7, 0xD1, 0x1E), 300), Bytes{});
    EXPECT_EQ(tool.chip.violations(),
        "frame 50: byte 6 (series) is 08, wanted 07\nframe 50: model id D11E, this one is D17E");
}

TEST(ChipFrames, UnknownCommandsAndCommandsOfTheOtherProtocolAreRefused)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    EXPECT_EQ(tool.ask({0x99}), Bytes{});
    EXPECT_EQ(tool.ask(model_frame(0x80, 7, 0xD1, 0x7E)), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 99: no such command\nframe 80 (ready): this model does not know it");

    HandTool older(birch_20());
    older.call_up();
    EXPECT_EQ(code_of(older.ask(model_frame(0x80, 2, 0xF1, 0x05))), 0x80);
    EXPECT_EQ(older.ask(model_frame(0x69, 2, 0xF1, 0x05)), Bytes{});
    EXPECT_EQ(older.chip.violations(), "frame 69 (end of code): this model does not know it");
}

TEST(ChipFrames, CommandsOutOfTheirPlaceAreRefused)
{
    HandTool tool(juniper_60q());
    tool.call_up();
    EXPECT_EQ(tool.ask({0x8F, 192, 250, 63, 12, 45, 0x83}), Bytes{});
    EXPECT_EQ(tool.ask(long_erase(0xF001, 0xF001)), Bytes{});
    EXPECT_EQ(tool.ask(block(0x00, 0, {1})), Bytes{});
    EXPECT_EQ(tool.chip.violations(),
        "frame 8F (test speed): out of place, the loader is in state \"called\"\n"
        "frame 84 (erase): out of place, the loader is in state \"called\"\n"
        "frame 00 (block): out of place, the loader is in state \"called\"");
}

TEST(ChipFrames, FeedPinIsTakenAndChecked)
{
    HandTool tool(birch_20());
    tool.call_up();
    EXPECT_EQ(code_of(tool.ask({0x86, 0x13})), 0x86);
    EXPECT_EQ(tool.chip.feed_pin(), 0x13);
    EXPECT_EQ(code_of(tool.ask({0x86, 0xFF})), 0x86);
    EXPECT_EQ(tool.ask({0x86, 0x18}), Bytes{});
    EXPECT_THAT(tool.chip.violations(), HasSubstr("frame 86: pin 18"));
}

TEST(ChipFrames, ReadStatusAnswersWithItsOwnLayout)
{
    HandTool tool(birch_20());
    tool.call_up();
    const Bytes status = tool.ask({0x50});
    EXPECT_EQ(code_of(status), 0x50);
    EXPECT_EQ(rx(status, 11), 0x42);
    EXPECT_EQ(rx(status, 12), 0xFD);
    EXPECT_EQ(tool.chip.frame_count(0x50), 1);
}

TEST(ChipFrames, OverheardFrameGetsNoAnswerAndNoBlame)
{
    HandTool tool(birch_20());
    tool.call_up();
    tool.chip.overhear(0x50);
    EXPECT_EQ(tool.ask({0x50}), Bytes{});
    EXPECT_EQ(code_of(tool.ask({0x50})), 0x50);
    EXPECT_EQ(tool.chip.violations(), "");
}

TEST(ChipFrames, RepliesAreLostDelayedDamagedAndSplitByTheChipItself)
{
    HandTool tool(birch_20());
    tool.call_up();
    tool.chip.lose_reply(1);
    tool.chip.delay_reply(2, 400);
    tool.chip.damage_reply(3, 6, 0x40);
    tool.chip.split_reply(4, 5, 300);
    EXPECT_EQ(tool.ask({0x50}), Bytes{});
    EXPECT_EQ(tool.ask({0x50}, 300), Bytes{});
    EXPECT_EQ(code_of(tool.after_ms(400)), 0x50);
    EXPECT_EQ(rx(tool.ask({0x50}), 4), 0xF5 ^ 0x40);
    EXPECT_EQ(tool.ask({0x50}, 250).size(), 5U);
    EXPECT_EQ(tool.after_ms(400).size(), 12U);
}

} // namespace
} // namespace sim::test
