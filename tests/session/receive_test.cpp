#include "session/crc16.h"
#include "session/hand_port.h"

#include <gtest/gtest.h>

using namespace vrk;

// 68 00 06 80 EE 16: a reply of six bytes with its sum.
TEST(Reception, ReassemblesAReplyThatComesInThreeEvents)
{
    HandLink link;
    link.arrive({0x46, 0xB9, 0x68});
    EXPECT_FALSE(link.session.rx.reply_ok);
    link.arrive({0x00, 0x06});
    EXPECT_FALSE(link.session.rx.reply_ok);
    link.arrive({0x80, 0xEE, 0x16});
    EXPECT_TRUE(link.session.rx.reply_ok);
    EXPECT_EQ(link.session.rx.count, 6);
    EXPECT_EQ(link.session.rx.buffer[0], 0x68);
    EXPECT_EQ(link.session.rx.buffer[3], 0x80);
}

TEST(Reception, BeginsTheFrameAtTheDirectionByte)
{
    HandLink link;
    link.arrive({0x00, 0xFF, 0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_TRUE(link.session.rx.reply_ok);
}

TEST(Reception, WithTheHeaderRequiredDropsAFrameWithoutIt)
{
    HandLink link;
    link.session.rx.header_required = true;
    link.arrive({0x00, 0xFF, 0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_FALSE(link.session.rx.reply_ok);
    EXPECT_EQ(link.session.rx.count, 0);
    link.arrive({0x46, 0xB9, 0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_TRUE(link.session.rx.reply_ok);
}

TEST(Reception, FindsARequiredHeaderThatIsSplitBetweenEvents)
{
    HandLink link;
    link.session.rx.header_required = true;
    link.arrive({0x11, 0x46});
    link.arrive({0xB9});
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_TRUE(link.session.rx.reply_ok);
}

TEST(Reception, ResetsAtOnceOnALengthOfZero)
{
    HandLink link;
    link.arrive({0x68, 0x00, 0x00});
    EXPECT_EQ(link.session.rx.count, 0);
    EXPECT_EQ(link.session.rx.buffer[0], 0);
}

TEST(Reception, KeepsAGoodReplyWhenStrayBytesFollow)
{
    HandLink link;
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    link.arrive({0x55, 0xAA});
    EXPECT_TRUE(link.session.rx.reply_ok);
    EXPECT_EQ(link.session.rx.count, 8);
    link.session.flush();
    EXPECT_EQ(link.session.rx.count, 0);
    EXPECT_FALSE(link.session.rx.reply_ok);
}

TEST(Reception, WithTheLongFormAOneByteCheckIsBad)
{
    HandLink link;
    link.session.selected.cap_long_frame = true;
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_FALSE(link.session.rx.reply_ok);
    EXPECT_TRUE(link.session.rx.reply_bad);
    EXPECT_EQ(link.session.rx.count, 0);
}

TEST(Reception, WithTheLongFormTheSumHasTwoBytes)
{
    HandLink link;
    link.session.selected.cap_long_frame = true;
    link.arrive({0x68, 0x00, 0x07, 0x80, 0x00, 0xEF, 0x16});
    EXPECT_TRUE(link.session.rx.reply_ok);
}

TEST(Reception, InBoardModeTheCheckIsACrc)
{
    HandLink link;
    link.session.board_mode = true;
    const std::uint8_t checked[] = {0x68, 0x00, 0x07, 0x80};
    const int crc = crc16_of(checked);
    link.arrive({0x68, 0x00, 0x07, 0x80, crc & 0xFF, crc >> 8, 0x16});
    EXPECT_TRUE(link.session.rx.reply_ok);
}

TEST(Reception, DropsAFrameWithoutItsEndByteInSilence)
{
    HandLink link;
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x17});
    EXPECT_FALSE(link.session.rx.reply_ok);
    EXPECT_FALSE(link.session.rx.reply_bad);
    EXPECT_EQ(link.session.rx.count, 0);
}

TEST(Reception, ThrowsBytesAwayWhileFramesAreNotAccepted)
{
    HandLink link;
    link.session.rx.accept_frames = false;
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_FALSE(link.session.rx.reply_ok);
    EXPECT_EQ(link.port.waiting(), 0U);
}

TEST(Reception, WaitsThirtyMillisecondsBelow4800Baud)
{
    HandLink link;
    link.port.set_line({2400, Parity::none, 8, 1});
    const std::int64_t before = link.loop.now_us();
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_EQ(link.loop.now_us() - before, 30000);
    EXPECT_TRUE(link.session.rx.reply_ok);
}

TEST(Reception, DoesNotWaitAt4800Baud)
{
    HandLink link;
    link.port.set_line({4800, Parity::none, 8, 1});
    const std::int64_t before = link.loop.now_us();
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    EXPECT_EQ(link.loop.now_us(), before);
}

TEST(Reception, LeavesBytesOfAnInnerEventToTheOneThatWaits)
{
    HandLink link;
    link.port.set_line({2400, Parity::none, 8, 1});
    link.loop.call_at(link.loop.now_us() + 10000, [&] { link.arrive({0x80, 0xEE, 0x16}); });
    link.arrive({0x68, 0x00, 0x06});
    EXPECT_TRUE(link.session.rx.reply_ok);
    EXPECT_EQ(link.session.rx.count, 6);
}

TEST(Reception, LosesBytesPastTheEndOfTheBufferAndNothingElse)
{
    HandLink link;
    link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16});
    for (int i = 0; i < 3000; ++i)
        link.ports.made->in.push_back(0x55);
    link.ports.made->on_receive();
    EXPECT_EQ(link.session.rx.count, 2101);
    EXPECT_TRUE(link.session.rx.reply_ok);
}

// A reply to the frame before, in the time that the line gets to settle. What is left of it must not vouch for the next
// frame either, when a stray byte follows.
TEST(ExpectedReply, IsNotOneThatComesBeforeItsFrameGoesOut)
{
    HandLink link;
    link.loop.call_at(link.loop.now_us() + 2000, [&link] { link.arrive({0x68, 0x00, 0x06, 0x80, 0xEE, 0x16}); });
    EXPECT_TRUE(link.session.expect_reply(16));
    EXPECT_FALSE(link.session.rx.reply_ok);
    link.arrive({0x00});
    EXPECT_FALSE(link.session.rx.reply_ok);
}

// 5A A5 00 08 B0 01 B7 16: the sum of the bytes before it is 01B7.
TEST(DemonstrationReception, TakesAWholeFrame)
{
    HandLink link;
    link.session.demo_mode = true;
    link.arrive({0x33, 0x5A, 0xA5, 0x00, 0x08, 0xB0});
    EXPECT_FALSE(link.session.rx.demo_reply_ok);
    link.arrive({0x01, 0xB7, 0x16});
    EXPECT_TRUE(link.session.rx.demo_reply_ok);
}

TEST(DemonstrationReception, StartsOverWhenTheSecondByteIsWrong)
{
    HandLink link;
    link.session.demo_mode = true;
    link.arrive({0x5A, 0x5A, 0x5A, 0xA5, 0x00, 0x08, 0xB0, 0x01, 0xB7, 0x16});
    EXPECT_TRUE(link.session.rx.demo_reply_ok);
}

TEST(DemonstrationReception, DropsAFrameWithAWrongSum)
{
    HandLink link;
    link.session.demo_mode = true;
    link.arrive({0x5A, 0xA5, 0x00, 0x08, 0xB0, 0x01, 0xB8, 0x16});
    EXPECT_FALSE(link.session.rx.demo_reply_ok);
    EXPECT_EQ(link.session.rx.count, 0);
}

TEST(DemonstrationReception, DropsAFrameLongerThanTheBuffer)
{
    HandLink link;
    link.session.demo_mode = true;
    link.arrive({0x5A, 0xA5, 0xFF, 0xFF, 0xB0, 0x01, 0xB8, 0x16});
    EXPECT_EQ(link.session.rx.count, 0);
}
