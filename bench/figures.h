// How the figures are told: a median of several runs, beside the median of a reference that was measured in the same
// run of the same program. Only the ratio can be compared between machines.
#pragma once

#include <string>
#include <vector>

namespace bench {

inline constexpr int runs = 7; // of each measurement, unless it takes seconds
inline constexpr int long_runs = 5;

double median(std::vector<double> values);

struct Figure {
    std::string what;
    double value = 0;
    std::string unit;
    std::string reference; // what it is compared with; empty: nothing
    double reference_value = 0;
    std::string goal;
};
void print(const Figure& figure); // one line of the table

// Ends the program with 1 where a run did not do its work: a figure of a failed run is worth nothing.
void require(bool worked, const std::string& what);

} // namespace bench
