#include "report/pace.h"

namespace vrk {

namespace {

constexpr std::int64_t least_to_judge_us = 500'000;

} // namespace

std::optional<PaceFigures> Pace::figures(const Progress& progress, std::int64_t now_us)
{
    if (progress.unit != Progress::Unit::byte)
        return std::nullopt;
    const std::int64_t done = progress.before + progress.written_to - progress.first + 1;
    const std::int64_t total = progress.before + progress.last - progress.first + 1 + progress.behind;
    if (done <= 0)
        since_us_ = now_us;
    if (done <= 0 || done > total)
        return std::nullopt;
    PaceFigures figures{static_cast<int>(done * 100 / total), done, total, std::nullopt};
    const std::int64_t elapsed_us = now_us - since_us_;
    if (elapsed_us >= least_to_judge_us)
        figures.seconds_left = static_cast<int>(elapsed_us * (total - done) / done / 1'000'000);
    return figures;
}

} // namespace vrk
