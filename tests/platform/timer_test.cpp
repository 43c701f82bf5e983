#include "platform/timer.h"

#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(OneShotTimer, StopsItselfBeforeItsEventRuns)
{
    sim::VirtualLoop loop;
    Timer timer(loop, Timer::Kind::one_shot, 10);
    bool enabled_in_event = true;
    timer.on_tick = [&] { enabled_in_event = timer.enabled(); };
    timer.start();
    loop.run_for_ms(10);
    EXPECT_FALSE(enabled_in_event);
    EXPECT_FALSE(timer.enabled());
}

TEST(OneShotTimer, StartedAnewCountsFromTheFullInterval)
{
    sim::VirtualLoop loop;
    Timer timer(loop, Timer::Kind::one_shot, 10);
    int ticks = 0;
    timer.on_tick = [&] { ++ticks; };
    timer.start();
    loop.run_for_ms(8);
    timer.start();
    loop.run_for_ms(8);
    EXPECT_EQ(ticks, 0);
    loop.run_for_ms(2);
    EXPECT_EQ(ticks, 1);
}

TEST(RepeatingTimer, TicksUntilItsEventStopsIt)
{
    sim::VirtualLoop loop;
    Timer timer(loop, Timer::Kind::repeating, 10);
    int ticks = 0;
    timer.on_tick = [&] {
        if (++ticks == 3)
            timer.stop();
    };
    timer.start();
    loop.run_for_ms(100);
    EXPECT_EQ(ticks, 3);
}
