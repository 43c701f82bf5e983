// From the start of the command line to its end, 8 KB into a simulated chip: what a makefile waits for besides the
// wire. Beside it a program that does nothing.
#include "bench/figures.h"
#include "bench/times.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

// Milliseconds from its start to its end, which must be good.
double run_ms(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::int64_t start_ns = bench::now_ns();
    pid_t process = 0;
    bench::require(
        posix_spawn(&process, words[0].c_str(), nullptr, nullptr, arguments.data(), environ) == 0, "no " + words[0]);
    int status = 1;
    bench::require(waitpid(process, &status, 0) == process && status == 0, words[0] + " has failed");
    return static_cast<double>(bench::now_ns() - start_ns) / 1e6;
}

double median_ms(const std::vector<std::string>& words)
{
    run_ms(words); // warms up
    std::vector<double> times;
    for (int i = 0; i < bench::runs; ++i)
        times.push_back(run_ms(words));
    return bench::median(times);
}

} // namespace

int main()
{
    const std::string image = std::filesystem::temp_directory_path() / ("flash_bench_" + std::to_string(getpid()));
    std::ofstream file{image, std::ios::binary};
    for (int i = 0; i < 8192; ++i)
        file.put(static_cast<char>(i * 31 + i / 256));
    file.close();
    const double flash = median_ms({VRK, "flash", image, "--model", "Juniper-60Q", "--simulate", "--quiet"});
    const double nothing = median_ms({"/bin/true"});
    bench::print({"vrk flash --simulate, 8 KB, start to end", flash, "ms", "a program that does nothing", nothing,
        "under 150 ms"});
    std::filesystem::remove(image);
    return 0;
}
