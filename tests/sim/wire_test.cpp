// Pace, sampling and damage on the wire.
#include "sim/ear_on_a_wire.h"

#include <gtest/gtest.h>

namespace sim::test {
namespace {

TEST_F(WireTest, ByteIsWholeWhenItsStopBitHasPassed)
{
    port->open({9600, Parity::none, 8, 1});
    write({0x55});
    loop.run_for_ms(2);
    EXPECT_EQ(ear.heard, Bytes{0x55});
    EXPECT_EQ(ear.heard_at_us, 1041); // 10 bits of 104.167 us
}

TEST_F(WireTest, ParityAndSecondStopBitTakeTheirTime)
{
    const LineSettings line{9600, Parity::even, 8, 2};
    ear.listen_as(line);
    port->open(line);
    write({0x55, 0xAA});
    loop.run_for_ms(3);
    EXPECT_EQ(ear.heard, (Bytes{0x55, 0xAA}));
    EXPECT_EQ(ear.heard_at_us, 2500); // 24 bits
}

TEST_F(WireTest, BytesWaitInTheQueueUntilTheLineIsFree)
{
    port->open({9600, Parity::none, 8, 1});
    write({1, 2, 3, 4});
    EXPECT_EQ(port->bytes_to_write(), 3U); // the first one is on the line
    loop.run_for_us(1500);
    EXPECT_EQ(port->bytes_to_write(), 2U);
    port->discard();
    loop.run_for_ms(10);
    EXPECT_EQ(ear.heard, (Bytes{1, 2}));
}

TEST_F(WireTest, TwoPercentOffIsHeardWellSevenPercentOffIsNot)
{
    port->open({9600 * 102 / 100, Parity::none, 8, 1});
    write({0x35, 0xC1});
    loop.run_for_ms(10);
    EXPECT_EQ(ear.heard, (Bytes{0x35, 0xC1}));

    port->set_line({9600 * 107 / 100, Parity::none, 8, 1});
    write({0x35, 0xC1});
    loop.run_for_ms(10);
    ASSERT_GE(ear.heard.size(), 3U);
    EXPECT_NE(ear.heard, (Bytes{0x35, 0xC1, 0x35, 0xC1}));
}

TEST_F(WireTest, WrongSpeedDamagesTheSameWayEveryTime)
{
    port->open({4800, Parity::none, 8, 1});
    write({0x46, 0xB9});
    loop.run_for_ms(20);
    const Bytes first = std::exchange(ear.heard, {});
    EXPECT_NE(first, (Bytes{0x46, 0xB9}));
    write({0x46, 0xB9});
    loop.run_for_ms(20);
    EXPECT_EQ(ear.heard, first);
}

TEST_F(WireTest, TwiceAsFastReadsEachBitTwice)
{
    ear.listen_as({9600, Parity::none, 8, 1});
    port->open({4800, Parity::none, 8, 1});
    write({0xF0}); // on the line: 0 0000 1111 1
    loop.run_for_ms(1);
    loop.run_for_ms(10);
    ASSERT_FALSE(ear.heard.empty());
    EXPECT_EQ(ear.heard[0], 0x00); // start bit twice, then four zeros twice, as far as eight data bits reach
}

TEST_F(WireTest, EvenHeardAsOddIsMarkedAndKeepsItsValue)
{
    ear.listen_as({9600, Parity::odd, 8, 1});
    port->open({9600, Parity::even, 8, 1});
    write({0x46});
    loop.run_for_ms(5);
    EXPECT_EQ(ear.heard, Bytes{0x46});
    EXPECT_TRUE(ear.last.parity_error);
}

TEST_F(WireTest, BytesWithoutParityFallOutOfStepWithAListenerThatWantsIt)
{
    ear.listen_as({9600, Parity::even, 8, 1});
    port->open({9600, Parity::none, 8, 1});
    write({0x46, 0xB9, 0x6A});
    loop.run_for_ms(10);
    EXPECT_NE(ear.heard, (Bytes{0x46, 0xB9, 0x6A}));
}

TEST_F(WireTest, ToolGetsBytesWithParityErrorsUnmarked)
{
    ear.listen_as({9600, Parity::odd, 8, 1});
    port->open({9600, Parity::even, 8, 1});
    send({0x68, 0x00});
    loop.run_for_ms(5);
    EXPECT_EQ(received(), (Bytes{0x68, 0x00}));
}

TEST_F(WireTest, MeasuringTargetHearsAtEverySpeedAndLearnsIt)
{
    ear.listen_as({9600, Parity::none, 8, 1}, true);
    port->open({2400, Parity::even, 8, 1});
    write({0x7F});
    loop.run_for_ms(10);
    EXPECT_EQ(ear.heard, Bytes{0x7F});
    EXPECT_EQ(ear.last.sampled_as.baud, 2400);
    EXPECT_EQ(ear.last.sampled_as.parity, Parity::even);
}

// It used to take a fall inside the byte for a start bit and never got back into step with a sender that did not pause.
TEST_F(WireTest, MeasuringTargetThatWakesUpInMidByteIsInStepFromTheNextByteOn)
{
    port->open({1200, Parity::none, 8, 1});
    write({0x7F, 0x55, 0x7F, 0x7F});
    loop.run_for_ms(9); // in the second byte
    ear.heard.clear();
    ear.listen_as({9600, Parity::none, 8, 1}, true);
    loop.run_for_ms(40);
    EXPECT_EQ(ear.heard, (Bytes{0x7F, 0x7F}));
}

TEST_F(WireTest, NewSpeedInMidByteSpoilsTheByteOnItsWayOutAndSparesTheNext)
{
    port->open({9600, Parity::none, 8, 1});
    write({0x00, 0x42});
    loop.run_for_us(500);
    port->set_line({9600, Parity::none, 8, 2});
    loop.run_for_ms(10);
    ASSERT_EQ(ear.heard.size(), 2U);
    EXPECT_NE(ear.heard[0], 0x00);
}

TEST_F(WireTest, NewSpeedInMidByteLosesTheByteThatIsComingIn)
{
    port->open({9600, Parity::none, 8, 1});
    send({0xFF});
    loop.run_for_us(500);
    port->set_line({19200, Parity::none, 8, 1});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), Bytes{});
}

TEST_F(WireTest, PortThatDropsOnCloseCutsItsLastByte)
{
    driver.closing = Wire::Closing::drops;
    port->open({9600, Parity::none, 8, 1});
    write({0x00, 0x01});
    loop.run_for_us(500);
    port->close();
    loop.run_for_ms(10);
    ASSERT_EQ(ear.heard.size(), 1U);
    EXPECT_NE(ear.heard[0], 0x00);
}

TEST_F(WireTest, PortThatDrainsOnCloseSendsAllWithItsOldSettings)
{
    port->open({9600, Parity::none, 8, 1});
    write({0x00, 0x01});
    port->close();
    port->open({115200, Parity::none, 8, 1});
    loop.run_for_ms(10);
    EXPECT_EQ(ear.heard, (Bytes{0x00, 0x01}));
}

TEST_F(WireTest, BytesToAClosedPortAreLost)
{
    send({0x11});
    loop.run_for_ms(5);
    port->open({9600, Parity::none, 8, 1});
    loop.run_for_ms(5);
    EXPECT_EQ(received(), Bytes{});
    send({0x22});
    loop.run_for_ms(5);
    EXPECT_EQ(received(), Bytes{0x22});
}

TEST_F(WireTest, ReceiveEventIsRaisedForEveryBatchEvenIfNothingWasRead)
{
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    loop.run_for_ms(5);
    EXPECT_EQ(receive_events, 2);
    send({3});
    loop.run_for_ms(5);
    EXPECT_EQ(receive_events, 3);
    EXPECT_EQ(received(), (Bytes{1, 2, 3}));
}

TEST_F(WireTest, ReceiveEventMayYieldAndIsThenCalledInside)
{
    port->open({9600, Parity::none, 8, 1});
    int depth = 0;
    int deepest = 0;
    port->on_receive = [&] {
        deepest = std::max(deepest, ++depth);
        loop.run_for_ms(2);
        --depth;
    };
    send({1, 2});
    loop.run_for_ms(10);
    EXPECT_EQ(deepest, 2);
}

TEST_F(WireTest, WireThatIsWokenOncePerRunHandsTheTargetItsBytesTogetherAndTheToolItsOneByOne)
{
    VirtualLoop lazy_loop;
    Wire lazy(lazy_loop, Wire::Waking::each_run);
    Ear lazy_ear;
    lazy.attach(lazy_ear);
    lazy.tool_open({9600, Parity::none, 8, 1});
    int batches = 0;
    Bytes arrived;
    lazy.on_tool_bytes = [&](std::span<const std::uint8_t> bytes) {
        ++batches;
        arrived.insert(arrived.end(), bytes.begin(), bytes.end());
    };
    lazy.tool_write(Bytes{1, 2, 3});
    lazy_loop.run_for_ms(3);
    EXPECT_TRUE(lazy_ear.heard.empty());
    lazy_loop.run_for_ms(1);
    EXPECT_EQ(lazy_ear.heard, (Bytes{1, 2, 3}));
    EXPECT_EQ(lazy_ear.heard_at_us, 3125);
    lazy_ear.around->send(Bytes{4, 5, 6});
    lazy_loop.run_for_ms(10);
    EXPECT_EQ(arrived, (Bytes{4, 5, 6}));
    EXPECT_EQ(batches, 3);
}

} // namespace
} // namespace sim::test
