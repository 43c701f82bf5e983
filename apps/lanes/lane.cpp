#include "lanes/lane.h"

#include <nlohmann/json.hpp>

namespace vrk::lanes {

namespace {

using Json = nlohmann::json;

constexpr int known_schema = 1;
constexpr int stopped_status = 130; // what a program ends with that was interrupted

constexpr Text broken_off = {"工位程序意外终止。取下的芯片按不合格处理；它的编号不确定。按“开始”可继续。",
    "The lane has broken off. Its chip is not good, and its number is unsure. Start it again."};
constexpr Text broken_off_idle = {"工位程序意外终止。按“开始”可继续。", "The lane has broken off. Start it again."};
constexpr Text another_language = {"工位程序的版本不同，请安装同一版本。",
    "The lane speaks another version. Install the same version of all programs."};

std::string text_in(const Json& event, const char* key)
{
    const auto found = event.find(key);
    return found != event.end() && found->is_string() ? found->get<std::string>() : std::string{};
}

int number_in(const Json& event, const char* key, int otherwise)
{
    const auto found = event.find(key);
    return found != event.end() && found->is_number() ? found->get<int>() : otherwise;
}

bool is_at_work(const Lane& lane) { return lane.state == VerdictState::working; }

void wait_for_next(Lane& lane)
{
    if (lane.state == VerdictState::good || lane.state == VerdictState::bad)
        lane.last = lane.state;
    if (lane.last != VerdictState::bad)
        lane.advice.clear();
    lane.state = VerdictState::waiting;
    lane.percent = 0;
    lane.seconds_left = -1;
}

void take_stage(Lane& lane, const std::string& stage)
{
    if (stage.empty() || stage == "calling")
        return;
    if (!is_at_work(lane)) { // a chip has answered: what was said of the last one can go
        lane.advice.clear();
        lane.number.clear();
        lane.last = VerdictState::ready;
    }
    lane.state = VerdictState::working;
}

void take_result(Lane& lane, const Json& event)
{
    const std::string result = text_in(event, "result");
    lane.number = text_in(event, "number");
    lane.advice = text_in(event, "next");
    if (result == "good")
        lane.state = VerdictState::good;
    else if (result == "stopped")
        lane.state = VerdictState::stopped;
    else
        lane.state = is_at_work(lane) ? VerdictState::bad : VerdictState::not_done;
    // Counted here, since the process begins anew with each start and the lane's counts go on.
    lane.good += lane.state == VerdictState::good ? 1 : 0;
    lane.bad += lane.state == VerdictState::bad ? 1 : 0;
}

} // namespace

void lane_started(Lane& lane)
{
    lane.runs = true;
    lane.advice.clear();
    lane.job_sha256.clear();
    wait_for_next(lane);
}

bool lane_told(Lane& lane, std::string_view json_line, bool english)
{
    const Json event = Json::parse(json_line, nullptr, false);
    if (!event.is_object())
        return true;
    const std::string kind = text_in(event, "event");
    if (kind == "start") {
        if (number_in(event, "schema", 0) != known_schema) {
            lane.state = VerdictState::not_done;
            lane.advice = in_language(english, another_language);
            return false;
        }
        lane.job_sha256 = text_in(event, "sha256");
    } else if (kind == "chip") {
        wait_for_next(lane);
    } else if (kind == "stage") {
        take_stage(lane, text_in(event, "stage"));
    } else if (kind == "progress") {
        lane.percent = number_in(event, "percent", lane.percent);
        lane.seconds_left = number_in(event, "seconds_left", lane.seconds_left);
    } else if (kind == "result") {
        take_result(lane, event);
    }
    return true;
}

void lane_ended(Lane& lane, const Ending& ending, bool english)
{
    lane.runs = false;
    const bool had_a_chip = is_at_work(lane);
    if (!ending.by_itself || (had_a_chip && ending.status != stopped_status)) {
        lane.state = had_a_chip ? VerdictState::bad : VerdictState::not_done;
        lane.bad += had_a_chip ? 1 : 0;
        lane.advice = in_language(english, had_a_chip ? broken_off : broken_off_idle);
    } else if (had_a_chip || lane.state == VerdictState::waiting) {
        const bool refused = ending.status != 0 && ending.status != stopped_status;
        lane.state = refused ? VerdictState::not_done : VerdictState::stopped;
        lane.advice = refused ? ending.words : "";
    }
}

} // namespace vrk::lanes
