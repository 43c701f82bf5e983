// The clocks that figures are taken by.
#pragma once

#include <cstdint>
#include <functional>

namespace bench {

std::int64_t now_ns(); // of a clock that no hand sets
double wall_seconds(); // of the same
double processor_seconds(); // that this process has used so far

// How much of one core the act takes, percent.
double share_of_core(const std::function<void()>& act);

} // namespace bench
