// How far the writing of a chip has come, and how long it will still take: from what an engine tells of its progress.
#pragma once

#include "report/report.h"

#include <cstdint>
#include <optional>

namespace vrk {

struct PaceFigures {
    int percent = 0; // of all bytes of the job
    std::int64_t bytes = 0;
    std::int64_t of = 0;
    std::optional<int> seconds_left; // nothing: too early to judge
};

class Pace {
public:
    // `now_us` by the loop's clock. Nothing: there is no figure to tell, as before the first block.
    std::optional<PaceFigures> figures(const Progress& progress, std::int64_t now_us);

private:
    std::int64_t since_us_ = 0;
};

} // namespace vrk
