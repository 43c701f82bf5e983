// The driver of the simulated ports.
#include "sim/ear_on_a_wire.h"

#include <gtest/gtest.h>

namespace sim::test {
namespace {

using SimPorts = WireTest;

TEST_F(SimPorts, PortsAreListedAndUnknownPathsDoNotOpen)
{
    ASSERT_EQ(driver.list().size(), 1U);
    EXPECT_EQ(driver.list()[0].path, "/sim/0");
    EXPECT_EQ(driver.list()[0].caption, "a wire");
    EXPECT_FALSE(driver.make("/sim/9")->open({}));
}

TEST_F(SimPorts, PortIsTakenByOneAtATime)
{
    ASSERT_TRUE(port->open({}));
    const auto second = driver.make("/sim/0");
    EXPECT_FALSE(second->open({}));
    port->close();
    EXPECT_TRUE(second->open({}));
}

TEST_F(SimPorts, RefusedOpeningFailsAsOftenAsAsked)
{
    driver.refuse_open("/sim/0", 2);
    EXPECT_FALSE(port->open({}));
    EXPECT_FALSE(port->open({}));
    EXPECT_TRUE(port->open({}));
}

TEST_F(SimPorts, DeviceThatVanishesClosesThePortAndTellsOfIt)
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
} // namespace sim::test
