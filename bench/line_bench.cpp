// A thousand chips of 8 KB one after the other by Re-Download, each with its own serial number, on virtual time. Every
// chip is looked at. Beside it the checksums alone of all that goes over the wire.
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

namespace {

constexpr const char* model = "Juniper-8";
constexpr std::size_t code_size = 8 * 1024;
constexpr int chips = 1000;
constexpr std::size_t number_first = 0x1FFC; // four bytes, at the very end

std::vector<std::uint8_t> made_up_code()
{
    std::vector<std::uint8_t> code(code_size);
    std::uint32_t state = 3;
    for (std::uint8_t& byte : code) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return code;
}

// The line, and the hand that changes the chips.
struct Line {
    vrk::Rehearsal rehearsal;
    vrk::Shell& shell = rehearsal.shell;
    const vrk::NamedControls& form = rehearsal.form;
    int good = 0;

    explicit Line(const sim::ChipSetup& chip)
        : rehearsal(chip, nullptr, true)
    {
        form.text_box("txtDevice").set_text(model);
        vrk::apply_selected_device(shell);
        const std::string path =
            std::filesystem::temp_directory_path() / ("vrk_line_" + std::to_string(getpid()) + ".bin");
        const auto code = made_up_code();
        std::ofstream{path, std::ios::binary}.write(
            reinterpret_cast<const char*>(code.data()), static_cast<std::streamsize>(code.size()));
        vrk::load_file(shell, path, shell.code_buffer);
        std::filesystem::remove(path);
        vrk::type_text(shell, form.text_box("texAuto_Increase", 0), "1FFF");
        vrk::type_text(shell, form.text_box("texAuto_Increase", 1), "4");
        vrk::type_text(shell, form.text_box("texAuto_Increase", 2), "0");
        vrk::type_text(shell, form.text_box("texAuto_Increase", 3), "1");
        vrk::choose_option(shell, form.option("optAuto_Increase", vrk::AutoIncrease::hex));
        vrk::set_checked(shell, form.check_box("cheAuto_Increase"), true);
        form.list("comDalay_ReDownLoad").set_text("1");
        rehearsal.chip.on_state_change.push_back([this](sim::Chip::State state) {
            if (state == sim::Chip::State::user_code)
                rehearsal.loop.call_at(rehearsal.loop.now_us() + 100'000, [this] { change_chip(); });
        });
    }
    void change_chip()
    {
        const auto number = rehearsal.chip.flash(number_first, number_first + 3);
        const bool right = number[0] == 0 && number[1] == 0 && number[2] * 256 + number[3] == good;
        good += right ? 1 : 0;
        rehearsal.chip.power_off();
        if (!right || good == chips)
            rehearsal.loop.call_at(
                rehearsal.loop.now_us() + 4'000'000, [this] { vrk::click(shell, form.button("comStop_Download")); });
        else
            rehearsal.chip.power_up_after_ms(3000);
    }
    void run()
    {
        rehearsal.loop.call_at(0, [this] { vrk::click(shell, form.button("comDownload", 1)); });
        rehearsal.chip.power_up_after_ms(500);
        do
            rehearsal.loop.yield();
        while (shell.running);
    }
};

void thousand_chips(benchmark::State& state)
{
    vrk::McuTable table;
    vrk::load_mcu_tables(table, false);
    const auto chip = vrk::chip_setup_of(table, model);
    bench::require(chip.has_value(), std::string{model} + " is not in the catalogue");
    for (auto _ : state) {
        Line line(*chip);
        const auto began = std::chrono::steady_clock::now();
        line.run();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count());
        if (line.good != chips || line.form.text_box("txtWrite_OK_Count").text() != std::to_string(chips))
            return state.SkipWithError(("chip " + std::to_string(line.good) + " is not as planned").c_str());
    }
}

void sums_alone(benchmark::State& state)
{
    const auto code = made_up_code();
    for (auto _ : state) {
        std::uint32_t sum = 0;
        for (int i = 0; i < chips; ++i)
            sum += vrk::byte_sum(code);
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK(thousand_chips)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(bench::long_runs);
BENCHMARK(sums_alone)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bench::print({"1000 chips of 8 KB by Re-Download", reporter.median_of("thousand_chips"), "ms",
        "the sums of their bytes", reporter.median_of("sums_alone"), "below 10000 ms"});
}
