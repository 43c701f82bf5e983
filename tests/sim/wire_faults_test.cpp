// Faults on the wire.
#include "sim/ear_on_a_wire.h"

#include <gtest/gtest.h>

namespace sim::test {
namespace {

using WireFaults = WireTest;

TEST_F(WireFaults, LostReplyNeverArrivesAndTheNextOneDoes)
{
    wire.lose_reply(1);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    send({3, 4});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{3, 4}));
}

TEST_F(WireFaults, DamagedReplyHasOneByteWrong)
{
    wire.damage_reply(2, 1, 0x80);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    send({3, 4});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{1, 2, 3, 0x84}));
}

TEST_F(WireFaults, LateReplyComesWhenItsTimeHasPassed)
{
    wire.delay_reply(1, 50);
    port->open({9600, Parity::none, 8, 1});
    send({1});
    loop.run_for_ms(50);
    EXPECT_EQ(received(), Bytes{});
    loop.run_for_ms(2);
    EXPECT_EQ(received(), Bytes{1});
}

TEST_F(WireFaults, SplitReplyArrivesInTwoParts)
{
    wire.split_reply(1, 2, 20);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2, 3});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{1, 2}));
    loop.run_for_ms(20);
    EXPECT_EQ(received(), Bytes{3});
}

TEST_F(WireFaults, DuplicatedReplyArrivesTwice)
{
    wire.duplicate_reply(1);
    port->open({9600, Parity::none, 8, 1});
    send({1, 2});
    loop.run_for_ms(10);
    EXPECT_EQ(received(), (Bytes{1, 2, 1, 2}));
}

TEST_F(WireFaults, SingleBytesAreLostDamagedAndDoubledBothWays)
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

TEST_F(WireFaults, ByteBehindALostOneIsKnownAsTamperedWith)
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

TEST_F(WireFaults, NoiseComesOutOfNowhereOnBothEnds)
{
    port->open({9600, Parity::none, 8, 1});
    wire.noise_to_tool(Bytes{0xE7});
    wire.noise_to_target(Bytes{0x99});
    loop.run_for_ms(1);
    EXPECT_EQ(received(), Bytes{0xE7});
    EXPECT_EQ(ear.heard, Bytes{0x99});
    EXPECT_EQ(receive_events, 1);
}

TEST_F(WireFaults, FaultsByChanceAreTheSameForTheSameSeed)
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

} // namespace
} // namespace sim::test
