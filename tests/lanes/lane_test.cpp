// What a tile of the line says, from what its process tells and from how that ends.
#include "lanes/lane.h"

#include <gtest/gtest.h>

using namespace vrk;
using namespace vrk::lanes;

namespace {

struct LaneOfTheLine : testing::Test {
    LaneOfTheLine()
    {
        lane_started(lane);
        tells(R"({"event":"start","schema":1,"sha256":"ab12"})");
        tells(R"({"event":"chip","index":1})");
    }
    bool tells(std::string_view line) { return lane_told(lane, line, true); }
    void works()
    {
        tells(R"({"event":"stage","stage":"calling"})");
        tells(R"({"event":"stage","stage":"found"})");
        tells(R"({"event":"stage","stage":"writing"})");
        tells(R"({"event":"progress","percent":40,"seconds_left":3})");
    }
    void ends_good()
    {
        tells(R"({"event":"result","result":"good","number":"0042","next":"Put the next one on.","good":1,"bad":0})");
    }
    void ends_bad()
    {
        tells(
            R"({"event":"result","result":"programming-failed","number":null,"next":"Look at the cable.","good":0,"bad":1})");
    }

    Lane lane;
};

} // namespace

TEST_F(LaneOfTheLine, WaitsWorksAndIsGood)
{
    EXPECT_EQ(lane.state, VerdictState::waiting);
    tells(R"({"event":"stage","stage":"calling"})");
    EXPECT_EQ(lane.state, VerdictState::waiting);
    works();
    EXPECT_EQ(lane.state, VerdictState::working);
    EXPECT_EQ(lane.percent, 40);
    EXPECT_EQ(lane.seconds_left, 3);
    ends_good();
    EXPECT_EQ(lane.state, VerdictState::good);
    EXPECT_EQ(lane.number, "0042");
    EXPECT_EQ(lane.good, 1);
    EXPECT_EQ(lane.job_sha256, "ab12");
}

TEST_F(LaneOfTheLine, KeepsTheLastWordBelowWhileTheNextChipIsAwaited)
{
    works();
    ends_good();
    tells(R"({"event":"chip","index":2})");
    EXPECT_EQ(lane.state, VerdictState::waiting) << "the next board has not been looked at";
    EXPECT_EQ(lane.last, VerdictState::good);
    EXPECT_EQ(lane.number, "0042");
    EXPECT_EQ(lane.advice, "") << "that has been done, or not: nobody knows";
    works();
    EXPECT_EQ(lane.last, VerdictState::ready) << "another chip is in the fixture now";
    EXPECT_EQ(lane.number, "");
}

TEST_F(LaneOfTheLine, SaysWhatToDoAboutABadChip)
{
    works();
    ends_bad();
    EXPECT_EQ(lane.state, VerdictState::bad);
    EXPECT_EQ(lane.advice, "Look at the cable.");
    EXPECT_EQ(lane.bad, 1);
    tells(R"({"event":"chip","index":2})");
    EXPECT_EQ(lane.last, VerdictState::bad);
    EXPECT_EQ(lane.advice, "Look at the cable.") << "as long as nothing else is in the fixture";
}

TEST_F(LaneOfTheLine, CallsNothingBadThatWasNotWorkedOn)
{
    tells(R"({"event":"result","result":"no-port","next":"Choose another port.","good":0,"bad":0})");
    EXPECT_EQ(lane.state, VerdictState::not_done);
}

TEST_F(LaneOfTheLine, KilledInMidWriteHasABadChip)
{
    works();
    lane_ended(lane, {false, 9, ""}, true);
    EXPECT_EQ(lane.state, VerdictState::bad);
    EXPECT_EQ(lane.bad, 1);
    EXPECT_NE(lane.advice.find("its number is unsure"), std::string::npos);
    EXPECT_FALSE(lane.runs);
}

TEST_F(LaneOfTheLine, KilledWhileItWaitsHasNoChip)
{
    works();
    ends_good();
    tells(R"({"event":"chip","index":2})");
    lane_ended(lane, {false, 9, ""}, true);
    EXPECT_EQ(lane.state, VerdictState::not_done);
    EXPECT_EQ(lane.bad, 0);
    EXPECT_EQ(lane.good, 1);
}

TEST_F(LaneOfTheLine, KeepsItsCountsWhenItIsStartedAgain)
{
    works();
    ends_good();
    tells(R"({"event":"chip","index":2})");
    works();
    lane_ended(lane, {false, 9, ""}, true);
    lane_started(lane);
    EXPECT_EQ(lane.job_sha256, "") << "it has not said yet what it holds now";
    tells(R"({"event":"start","schema":1,"sha256":"ab12"})");
    works();
    ends_good(); // whose process counts from 1 again
    EXPECT_EQ(lane.good, 2);
    EXPECT_EQ(lane.bad, 1);
}

TEST_F(LaneOfTheLine, StoppedInMidWriteIsStopped)
{
    works();
    tells(R"({"event":"result","result":"stopped","next":"","good":0,"bad":0})");
    lane_ended(lane, {true, 130, ""}, true);
    EXPECT_EQ(lane.state, VerdictState::stopped);
}

TEST_F(LaneOfTheLine, EndedInMidWriteWithoutAWordHasABadChip)
{
    works();
    lane_ended(lane, {true, 1, ""}, true);
    EXPECT_EQ(lane.state, VerdictState::bad);
    EXPECT_EQ(lane.bad, 1);
}

TEST_F(LaneOfTheLine, SaysWhyItsProcessWouldNotBegin)
{
    lane_ended(lane, {true, 2, "vrk: no such project"}, true);
    EXPECT_EQ(lane.state, VerdictState::not_done);
    EXPECT_EQ(lane.advice, "vrk: no such project");
}

TEST_F(LaneOfTheLine, GoesOnOverLinesThatAreNotIts)
{
    const Lane before = lane;
    EXPECT_TRUE(tells("Segmentation fault"));
    EXPECT_TRUE(tells(R"({"event":"result")"));
    EXPECT_TRUE(tells(R"({"event":"result of tomorrow","result":"good"})"));
    EXPECT_TRUE(tells("[]"));
    EXPECT_EQ(lane, before);
}

TEST_F(LaneOfTheLine, DoesNotListenToAnotherVersion)
{
    EXPECT_FALSE(tells(R"({"event":"start","schema":2})"));
    EXPECT_EQ(lane.state, VerdictState::not_done);
    EXPECT_NE(lane.advice, "");
}
