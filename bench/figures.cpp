#include "bench/figures.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace bench {

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void print(const Figure& figure)
{
    std::printf("%-52s %10.3f %-4s", figure.what.c_str(), figure.value, figure.unit.c_str());
    if (figure.reference.empty() || figure.reference_value == 0)
        std::printf("  %8s %-34s", "", "");
    else
        std::printf("  %7.2fx %-34s", figure.value / figure.reference_value,
            (figure.reference + " (" + std::to_string(figure.reference_value).substr(0, 6) + ")").c_str());
    std::printf(" %s\n", figure.goal.c_str());
    std::fflush(stdout);
}

void require(bool worked, const std::string& what)
{
    if (worked)
        return;
    std::fprintf(stderr, "no figure: %s\n", what.c_str());
    std::exit(1);
}

} // namespace bench
