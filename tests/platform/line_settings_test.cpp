#include "platform/port.h"

#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(LineText, NamesBaudParityDataAndStopBits)
{
    EXPECT_EQ(line_text({9600, Parity::none, 8, 1}), "9600,n,8,1");
    EXPECT_EQ(line_text({2400, Parity::even, 8, 1}), "2400,e,8,1");
    EXPECT_EQ(line_text({115200, Parity::odd, 7, 2}), "115200,o,7,2");
}

TEST(PortLine, WithoutABaudIsRefusedAndTheOneInForceStays)
{
    sim::VirtualLoop loop;
    sim::SimPortDriver ports{loop};
    Port port(ports);
    ASSERT_TRUE(port.set_line({2400, Parity::even, 8, 1}));
    EXPECT_FALSE(port.set_line({0, Parity::none, 8, 1}));
    EXPECT_EQ(line_text(port.line()), "2400,e,8,1");
}

TEST(PortLine, ThatADriverRefusesLeavesTheOneInForceAndThePortOpen)
{
    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::SimPortDriver ports{loop};
    ports.add("line", wire);
    Port port(ports);
    port.path = "line";
    ASSERT_TRUE(port.set_line({2400, Parity::even, 8, 1}));
    ASSERT_TRUE(port.open());
    ports.fails = [](sim::PortCall call) { return call == sim::PortCall::set_line; };
    EXPECT_FALSE(port.set_line({115200, Parity::none, 8, 1}));
    EXPECT_TRUE(port.set_line({2400, Parity::even, 8, 1})) << "it has that one: nothing is asked of the driver";
    EXPECT_EQ(line_text(port.line()), "2400,e,8,1");
    EXPECT_TRUE(port.is_open());
    port.close();
    EXPECT_TRUE(port.set_line({115200, Parity::none, 8, 1})) << "of the next opening";
    EXPECT_TRUE(port.open());
}

TEST(PortPath, OfNoDeviceDoesNotOpen)
{
    sim::VirtualLoop loop;
    sim::SimPortDriver ports{loop};
    Port port(ports);
    EXPECT_FALSE(port.open());
    EXPECT_FALSE(port.is_open());
}

TEST(BitsPerByte, CountStartDataParityAndStop)
{
    EXPECT_EQ(bits_per_byte({9600, Parity::none, 8, 1}), 10);
    EXPECT_EQ(bits_per_byte({9600, Parity::even, 8, 1}), 11);
    EXPECT_EQ(bits_per_byte({9600, Parity::none, 8, 2}), 11);
}
