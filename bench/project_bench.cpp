// How long a project of 60 KB code and 1 KB data takes to open and to save, with all that the form does about it.
// Saving is without the flush of the disk; beside both a bare copy of the file.
#include "bench/median_reporter.h"

#include "platform/scripted_dialogs.h"
#include "shell/project.h"
#include "shell/start_up.h"
#include "sim/virtual_loop.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr const char* model = "Juniper-60Q";
constexpr std::size_t code_size = 60 * 1024;
constexpr std::size_t data_size = 1024;

struct NoPorts final : vrk::PortDriver {
    std::vector<vrk::PortInfo> list() override { return {}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
};

// A form with the job, and the project of it.
struct ProjectBench {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vrk_bench_" + std::to_string(getpid()));
    const std::string path = folder / "job.VRK";
    const std::string copy_path = folder / "copy.VRK";
    sim::VirtualLoop loop;
    NoPorts ports;
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell{{loop, ports, dialogs, settings}};

    ProjectBench()
    {
        std::filesystem::create_directories(folder);
        vrk::start_up(shell);
        vrk::take_project(shell, std::string{"VER: 1.2\nMCU_Type: "} + model + "\nbuffer_check_sum: 0\nEND\n00\n");
        fill(shell.code_buffer, code_size);
        fill(shell.data_buffer, data_size);
        vrk::save_project(shell, path);
        bench::require(dialogs.shown.empty() && std::filesystem::file_size(path) > (code_size + data_size) * 2,
            "the project cannot be written");
    }
    ~ProjectBench()
    {
        std::error_code fault;
        std::filesystem::remove_all(folder, fault);
    }

    static void fill(vrk::FileBuffer& buffer, std::size_t size)
    {
        std::uint32_t state = 1;
        for (std::size_t i = 0; i < size; ++i) {
            state = state * 1664525U + 1013904223U;
            buffer.data[i] = static_cast<std::uint8_t>(state >> 24);
        }
        buffer.high = buffer.view_high = static_cast<std::int32_t>(size) - 1;
        buffer.loaded = true;
    }
    static std::string contents(const std::string& of)
    {
        std::ifstream file{of, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }
};

ProjectBench& the_bench()
{
    static ProjectBench bench;
    return bench;
}

void opening(benchmark::State& state)
{
    ProjectBench& bench = the_bench();
    const auto code = bench.shell.code_buffer.data;
    const auto data = bench.shell.data_buffer.data;
    for (auto _ : state) {
        vrk::open_project(bench.shell, bench.path);
        if (!bench.dialogs.shown.empty() || bench.shell.code_buffer.data != code ||
            bench.shell.data_buffer.data != data)
            return state.SkipWithError("what was opened is not what was saved");
    }
}

void saving(benchmark::State& state)
{
    ProjectBench& bench = the_bench();
    const std::string before = ProjectBench::contents(bench.path);
    for (auto _ : state)
        vrk::save_project(bench.shell, bench.path);
    if (!bench.dialogs.shown.empty() || ProjectBench::contents(bench.path).size() < before.size() - 16)
        return state.SkipWithError("the project was not written");
}

void bare_copy(benchmark::State& state)
{
    ProjectBench& bench = the_bench();
    for (auto _ : state) {
        const std::string text = ProjectBench::contents(bench.path);
        std::ofstream{bench.copy_path, std::ios::binary} << text;
    }
    if (ProjectBench::contents(bench.copy_path) != ProjectBench::contents(bench.path))
        return state.SkipWithError("the copy differs");
}

BENCHMARK(opening)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(saving)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(bare_copy)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double copy = reporter.median_of("bare_copy");
    bench::print({"project of 60 KB code and 1 KB data, opened", reporter.median_of("opening"), "ms", "bare copy", copy,
        "below 20 ms"});
    bench::print({"project of 60 KB code and 1 KB data, saved", reporter.median_of("saving"), "ms", "bare copy", copy,
        "below 20 ms"});
}
