// Takes the runs of Google Benchmark in and keeps the median of each benchmark's repetitions.
#pragma once

#include "bench/figures.h"

#include <benchmark/benchmark.h>

#include <map>

namespace bench {

class MedianReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& reported) override
    {
        for (const Run& run : reported) {
            require(!run.error_occurred, run.benchmark_name() + ": " + run.error_message);
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
        }
    }
    double median_of(const std::string& name) const
    {
        const auto found = times_.find(name);
        require(found != times_.end(), name + " has not run");
        return median(found->second);
    }

private:
    std::map<std::string, std::vector<double>> times_; // in the unit of the benchmark
};

} // namespace bench
