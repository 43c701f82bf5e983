#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

TEST(VirtualLoop, ClockStandsStillUntilNothingIsDueAndThenJumpsToTheNextTask)
{
    VirtualLoop loop;
    std::string ran;
    loop.call_at(5000, [&] { ran += 'b'; });
    loop.call_at(0, [&] { ran += 'a'; });

    loop.yield();
    EXPECT_EQ(ran, "a");
    EXPECT_EQ(loop.now_us(), 0);

    loop.yield();
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(loop.now_us(), 5000);
}

TEST(VirtualLoop, TasksOfTheSameTimeRunInTheOrderOfPosting)
{
    VirtualLoop loop;
    std::string ran;
    loop.call_at(10, [&] { ran += '1'; });
    loop.call_at(20, [&] { ran += '4'; });
    loop.call_at(10, [&] { ran += '2'; });
    loop.call_at(10, [&] { ran += '3'; });

    loop.run_for_us(30);

    EXPECT_EQ(ran, "1234");
}

TEST(VirtualLoop, TaskThatPostsItselfForNowWaitsForTheNextYield)
{
    VirtualLoop loop;
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        loop.call_at(loop.now_us(), again);
    };
    loop.call_at(0, again);

    loop.yield();
    EXPECT_EQ(runs, 1);
    loop.yield();
    EXPECT_EQ(runs, 2);
}

TEST(VirtualLoop, TaskMayYieldAndTheOthersThenRunOnce)
{
    VirtualLoop loop;
    std::string ran;
    loop.call_at(0, [&] {
        ran += '(';
        loop.yield();
        ran += ')';
    });
    loop.call_at(0, [&] { ran += 'x'; });

    loop.yield();

    EXPECT_EQ(ran, "(x)");
}

TEST(VirtualLoop, CancelledTaskNeverRuns)
{
    VirtualLoop loop;
    bool ran = false;
    const auto id = loop.call_at(10, [&] { ran = true; });
    loop.cancel(id);
    loop.cancel(4711);

    loop.run_for_ms(1);

    EXPECT_FALSE(ran);
}

TEST(VirtualLoop, YieldWithNothingEverDueReturnsAndIsCounted)
{
    VirtualLoop loop;
    int told = 0;
    loop.on_exhausted = [&] { ++told; };
    EXPECT_FALSE(loop.exhausted());

    loop.yield();
    loop.yield();

    EXPECT_TRUE(loop.exhausted());
    EXPECT_EQ(loop.empty_yields(), 2U);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(loop.now_us(), 0);

    loop.call_at(1, [] {});
    loop.yield();
    EXPECT_FALSE(loop.exhausted());
}

TEST(VirtualLoop, HookIsAskedBeforeTheClockJumpsAndMayKeepItFromJumping)
{
    VirtualLoop loop;
    std::string ran;
    int asked = 0;
    loop.call_at(1000, [&] { ran += 't'; });
    loop.before_sleep = [&] {
        if (++asked > 1)
            return false;
        loop.call_at(loop.now_us(), [&] { ran += 'h'; });
        return true;
    };

    loop.yield();
    EXPECT_EQ(ran, "h");
    EXPECT_EQ(loop.now_us(), 0);
    loop.yield();
    EXPECT_EQ(ran, "ht");
}

TEST(VirtualLoop, RunDueNeverMovesTheClock)
{
    VirtualLoop loop;
    bool ran = false;
    loop.call_at(1, [&] { ran = true; });

    loop.run_due();

    EXPECT_FALSE(ran);
    EXPECT_EQ(loop.now_us(), 0);
}

TEST(VirtualLoop, WallTimeStartsFixedAndGoesOverMidnightAndLeapDay)
{
    VirtualLoop loop({2024, 2, 28, 23, 59, 30});
    loop.run_for_us(31'000'000);
    const vrk::WallTime now = loop.wall_time();
    EXPECT_EQ(now.month, 2);
    EXPECT_EQ(now.day, 29);
    EXPECT_EQ(now.hour, 0);
    EXPECT_EQ(now.second, 1);
}

TEST(EventLog, SameEventsGiveTheSameHashAndOneByteMakesAnother)
{
    EventLog one;
    EventLog two;
    EventLog three;
    one.add(5, "to-tool", 0x46);
    two.add(5, "to-tool", 0x46);
    three.add(5, "to-tool", 0x47);
    EXPECT_EQ(one.hash(), two.hash());
    EXPECT_NE(one.hash(), three.hash());
}

TEST(EventLog, KeepsTextWhereAskedTo)
{
    EventLog log;
    log.keep_text = true;
    log.add(5, "to-tool", 0x46);
    EXPECT_EQ(log.text(), "5 to-tool 46\n");
}

} // namespace
} // namespace sim
