#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

using vrk::LineSettings;
using vrk::Parity;

// Hears all, and sends what it is told.
class Ear final : public Target {
public:
    void connect(Surroundings& surroundings) override
    {
        around = &surroundings;
        listen_as({9600, Parity::none, 8, 1});
    }
    void receive(const Arrival& arrival) override
    {
        heard.push_back(arrival.value);
        last = arrival;
        heard_at_us = around->now_ns() / 1000;
    }
    LineSettings line() const override { return settings; }
    void power(bool) override { }
    void listen_as(const LineSettings& line, bool measures = false)
    {
        settings = line;
        around->set_line(line, measures);
    }

    Surroundings* around = nullptr;
    LineSettings settings;
    std::vector<std::uint8_t> heard;
    Arrival last;
    std::int64_t heard_at_us = 0;
};

class WireTest : public testing::Test {
protected:
    WireTest()
    {
        wire.attach(ear);
        driver.add("/sim/0", wire, "a wire");
        port = driver.make("/sim/0");
        port->on_receive = [this] { ++receive_events; };
    }
    void write(std::initializer_list<std::uint8_t> bytes) { port->write(std::vector<std::uint8_t>(bytes)); }
    void send(std::initializer_list<std::uint8_t> bytes) { ear.around->send(std::vector<std::uint8_t>(bytes)); }
    std::vector<std::uint8_t> received()
    {
        std::vector<std::uint8_t> bytes(port->bytes_available());
        port->read(bytes);
        return bytes;
    }
    using Bytes = std::vector<std::uint8_t>;

    VirtualLoop loop;
    Wire wire{loop};
    Ear ear;
    SimPortDriver driver{loop};
    std::unique_ptr<vrk::SerialPort> port;
    int receive_events = 0;
};

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
    port->discard_output();
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

// ---- faults on the wire ----

TEST_F(WireTest, LostReplyNeverArrivesAndTheNextOneDoes)
{
    wire.lose_reply(1);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    send({3, 4});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{3, 4}));
}

TEST_F(WireTest, DamagedReplyHasOneByteWrong)
{
    wire.damage_reply(2, 1, 0x80);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    send({3, 4});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{1, 2, 3, 0x84}));
}

TEST_F(WireTest, LateReplyComesWhenItsTimeHasPassed)
{
    wire.delay_reply(1, 50);
    port->open({9600, Parity::none, 8, 1});
    send({1});
    loop.run_for_ms(50);
    EXPECT_EQ(received(), Bytes{});
    loop.run_for_ms(2);
    EXPECT_EQ(received(), Bytes{1});
}

TEST_F(WireTest, SplitReplyArrivesInTwoParts)
{
    wire.split_reply(1, 2, 20);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2, 3});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{1, 2}));
    loop.run_for_ms(20);
    EXPECT_EQ(received(), Bytes{3});
}

TEST_F(WireTest, DuplicatedReplyArrivesTwice)
{
    wire.duplicate_reply(1);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{1, 2, 1, 2}));
}

TEST_F(WireTest, SingleBytesAreLostDamagedAndDoubledBothWays)
{
    wire.bytes_to_target.lose(1);
    wire.bytes_to_target.damage(2, 0x01);
    wire.bytes_to_tool.duplicate(2);
    port->open({9600, Parity::none, 8, 1});
    write({0x10, 0x20, 0x30});
    loop.run_for_ms(10);
    EXPECT_EQ(ear.heard, (Bytes{0x21, 0x30}));
    send({0x40, 0x50});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{0x40, 0x50, 0x50}));
}

TEST_F(WireTest, ByteBehindALostOneIsKnownAsTamperedWith)
{
    wire.bytes_to_target.lose(1);
    port->open({9600, Parity::none, 8, 1});
    write({0x10, 0x20});
    loop.run_for_ms(10);
    EXPECT_TRUE(ear.last.tampered);
    write({0x30});
    loop.run_for_ms(10);
    EXPECT_FALSE(ear.last.tampered);
}

TEST_F(WireTest, NoiseComesOutOfNowhereOnBothEnds)
{
    port->open({9600, Parity::none, 8, 1});
    wire.noise_to_tool(Bytes{0xE7});
    wire.noise_to_target(Bytes{0x99});
    loop.run_for_ms(1);
    EXPECT_EQ(received(), Bytes{0xE7});
    EXPECT_EQ(ear.heard, Bytes{0x99});
    EXPECT_EQ(receive_events, 1);
}

TEST_F(WireTest, FaultsByChanceAreTheSameForTheSameSeed)
{
    const auto run = [](std::uint64_t seed) {
        ByteFaults faults;
        faults.at_random({100'000, 100'000, 100'000}, seed);
        std::string outcome;
        for (int i = 0; i < 200; ++i) {
            Arrival arrival;
            arrival.value = static_cast<std::uint8_t>(i);
            outcome += std::to_string(faults.apply(arrival)) + ':' + std::to_string(arrival.value) + ' ';
        }
        return outcome;
    };
    EXPECT_EQ(run(7), run(7));
    EXPECT_NE(run(7), run(8));
}

TEST_F(WireTest, WireThatIsWokenOncePerRunDeliversTheSameBytesWithFarFewerWakeUps)
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
    EXPECT_EQ(batches, 1);
}

// ---- the driver ----

TEST_F(WireTest, PortsAreListedAndUnknownPathsDoNotOpen)
{
    ASSERT_EQ(driver.list().size(), 1U);
    EXPECT_EQ(driver.list()[0].path, "/sim/0");
    EXPECT_EQ(driver.list()[0].caption, "a wire");
    EXPECT_FALSE(driver.make("/sim/9")->open({}));
}

TEST_F(WireTest, PortIsTakenByOneAtATime)
{
    ASSERT_TRUE(port->open({}));
    const auto second = driver.make("/sim/0");
    EXPECT_FALSE(second->open({}));
    port->close();
    EXPECT_TRUE(second->open({}));
}

TEST_F(WireTest, RefusedOpeningFailsAsOftenAsAsked)
{
    driver.refuse_open("/sim/0", 2);
    EXPECT_FALSE(port->open({}));
    EXPECT_FALSE(port->open({}));
    EXPECT_TRUE(port->open({}));
}

TEST_F(WireTest, DeviceThatVanishesClosesThePortAndTellsOfIt)
{
    int told = 0;
    loop.run_for_ms(1);
    driver.on_list_changed = [&] { ++told; };
    port->open({});
    driver.remove("/sim/0");
    EXPECT_FALSE(port->is_open());
    EXPECT_EQ(told, 0);
    loop.run_for_ms(1);
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(port->open({}));
}

} // namespace
} // namespace sim
