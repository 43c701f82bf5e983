// A whole download of 60 KB on virtual time: how much real time it takes, and that it is the same one every time.
// Beside it the least that must be computed: the frames of the same data, built and summed.
#include "bench/median_reporter.h"

#include "catalog/ranges.h"
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"
#include "session/frame.h"
#include "shell/device.h"
#include "shell/events.h"
#include "shell/open_file.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <set>

namespace {

constexpr const char* model = "Juniper-60Q";
constexpr std::size_t code_size = 60 * 1024;
constexpr std::int32_t longest_us = 600'000'000;

std::vector<std::uint8_t> made_up_code()
{
    std::vector<std::uint8_t> code(code_size);
    std::uint32_t state = 7;
    for (std::uint8_t& byte : code) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return code;
}

sim::ChipSetup setup()
{
    vrk::McuTable table;
    vrk::load_mcu_tables(table, false);
    const auto found = vrk::chip_setup_of(table, model);
    bench::require(found.has_value(), std::string{model} + " is not in the catalogue");
    return *found;
}

std::string code_file(const std::vector<std::uint8_t>& code)
{
    const std::string path =
        std::filesystem::temp_directory_path() / ("vrk_bench_" + std::to_string(getpid()) + ".bin");
    std::ofstream{path, std::ios::binary}.write(
        reinterpret_cast<const char*>(code.data()), static_cast<std::streamsize>(code.size()));
    return path;
}

std::set<std::uint64_t> hashes; // of the event logs; one, if all runs were the same

void virtual_download(benchmark::State& state)
{
    const sim::ChipSetup chip = setup();
    const auto code = made_up_code();
    const std::string path = code_file(code);
    for (auto _ : state) {
        vrk::Rehearsal rehearsal{chip, nullptr, true};
        rehearsal.wire.log = &rehearsal.loop.log;
        vrk::Shell& shell = rehearsal.shell;
        rehearsal.form.text_box("txtDevice").set_text(model);
        vrk::apply_selected_device(shell);
        vrk::load_file(shell, path, shell.code_buffer);
        rehearsal.loop.call_at(
            0, [&rehearsal] { vrk::click(rehearsal.shell, rehearsal.form.button("comDownload", 0)); });
        rehearsal.loop.call_at(500'000, [&rehearsal] { rehearsal.chip.power_up(); });

        const auto began = std::chrono::steady_clock::now();
        do
            rehearsal.loop.yield();
        while (shell.running && rehearsal.loop.now_us() < longest_us);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count());

        hashes.insert(rehearsal.loop.log.hash());
        if (!shell.succeeded || rehearsal.chip.flash(0, code_size - 1) != code)
            return state.SkipWithError(("the download failed: " + rehearsal.form.text_box("textMsg").text()).c_str());
    }
    std::filesystem::remove(path);
}

void frames_alone(benchmark::State& state)
{
    const auto code = made_up_code();
    for (auto _ : state) {
        std::uint32_t sum = 0;
        for (std::size_t at = 0; at < code.size(); at += 128) {
            const auto frame = vrk::build_data_frame(vrk::command::write_block, static_cast<std::uint32_t>(at),
                std::span{code}.subspan(at, 128), vrk::Check::sum16);
            sum += vrk::byte_sum(frame.bytes);
        }
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK(virtual_download)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3)->Repetitions(bench::runs);
BENCHMARK(frames_alone)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bench::print({"download of 60 KB on virtual time", reporter.median_of("virtual_download"), "ms",
        "its frames, built and summed", reporter.median_of("frames_alone"), "below 100 ms"});
    bench::print({"different event logs in all these runs", static_cast<double>(hashes.size()), "", "", 0, "1"});
    bench::require(hashes.size() == 1, "the event log differs from run to run");
}
