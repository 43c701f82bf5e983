// How long a file takes from disk into the buffer, checks and range rules included. Beside it a strict reader that does
// the least: no lenience, no rules, no view.
#include "bench/median_reporter.h"
#include "form/named_controls.h"

#include "catalog/isp_start.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "platform/scripted_dialogs.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/open_file.h"
#include "shell/shell.h"
#include "sim/virtual_loop.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>

namespace {

using Image = std::vector<std::uint8_t>;

constexpr std::size_t file_size = 0x10000;
constexpr std::size_t record_size = 16;

Image made_up_code()
{
    Image image(file_size);
    std::uint32_t state = 1;
    for (std::uint8_t& byte : image) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return image;
}

std::string hex_file(const Image& image)
{
    std::string text;
    for (std::size_t at = 0; at < image.size(); at += record_size) {
        unsigned sum = 0;
        text += ':';
        const auto add = [&](std::size_t byte) {
            sum += static_cast<unsigned>(byte & 0xFF);
            text += vrk::hex_text(static_cast<std::int64_t>(byte & 0xFF), 2);
        };
        add(record_size);
        add(at >> 8);
        add(at);
        add(0);
        for (std::size_t i = 0; i < record_size; ++i)
            add(image[at + i]);
        add(0x100 - (sum & 0xFF));
        text += "\r\n";
    }
    return text + ":00000001FF\r\n";
}

std::string whole_file(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    std::string contents(static_cast<std::size_t>(std::filesystem::file_size(path)), '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    return contents;
}

// False at the first thing that is not as the format has it.
bool read_strictly(const std::string& path, Image& image)
{
    static const auto digits = [] {
        std::array<int, 256> values{};
        values.fill(-1);
        for (int i = 0; i < 16; ++i)
            values[static_cast<unsigned char>("0123456789ABCDEF"[i])] = i;
        return values;
    }();
    const std::string text = whole_file(path);
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;;) {
        if (end - at < 13 || *at++ != ':')
            return false;
        unsigned sum = 0;
        bool clean = true;
        const auto next = [&] {
            const int high = digits[static_cast<unsigned char>(*at++)];
            const int low = digits[static_cast<unsigned char>(*at++)];
            clean = clean && (high | low) >= 0;
            const auto byte = static_cast<unsigned>(high * 16 + low) & 0xFFU;
            sum += byte;
            return byte;
        };
        const unsigned count = next();
        if (end - at < static_cast<std::ptrdiff_t>(count) * 2 + 10)
            return false;
        const unsigned address_high = next();
        const unsigned address = address_high * 256 + next();
        const unsigned type = next();
        if (address + count > image.size())
            return false;
        for (unsigned i = 0; i < count; ++i)
            image[address + i] = static_cast<std::uint8_t>(next());
        next();
        if (!clean || (sum & 0xFF) != 0 || *at++ != '\r' || *at++ != '\n')
            return false;
        if (type == 1)
            return true;
    }
}

struct NoPorts final : vrk::PortDriver {
    std::vector<vrk::PortInfo> list() override { return {}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
};

// The files, and a main object with a model.
struct LoadBench {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vrk_bench_" + std::to_string(getpid()));
    const std::string hex_path = folder / "code.hex";
    const std::string bin_path = folder / "code.bin";
    const Image code = made_up_code();
    sim::VirtualLoop loop;
    NoPorts ports;
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell{{loop, ports, dialogs, settings}};
    const vrk::NamedControls form{shell.controls};

    LoadBench()
    {
        std::filesystem::create_directories(folder);
        std::ofstream{hex_path, std::ios::binary} << hex_file(code);
        std::ofstream{bin_path, std::ios::binary}.write(
            reinterpret_cast<const char*>(code.data()), static_cast<std::streamsize>(code.size()));
        vrk::load_mcu_tables(shell.mcu_table, false);
        form.check_box("cheClearAP_Buffer").set_value(true);
    }
    ~LoadBench()
    {
        std::error_code fault;
        std::filesystem::remove_all(folder, fault);
    }

    void select(const char* model)
    {
        const auto found = vrk::locate_mcu_by_name(shell.mcu_table, model);
        bench::require(found.has_value(), std::string{model} + " is not in the catalogue");
        shell.selected = vrk::read_mcu_row(shell.mcu_table, found->series, found->row);
        form.label("LabISP_reange", 1)
            .set_caption(vrk::four_hex_digits(vrk::derive_isp_start(shell.selected).shown_last));
        vrk::clear_buffer(shell, 0, shell.code_buffer);
    }
    bool buffer_equals_file() const { return std::equal(code.begin(), code.end(), shell.code_buffer.data.begin()); }
};

LoadBench& the_bench()
{
    static LoadBench bench;
    return bench;
}

void load(benchmark::State& state, const char* model, const std::string& path, bool fits)
{
    LoadBench& bench = the_bench();
    bench.select(model);
    for (auto _ : state) {
        benchmark::DoNotOptimize(vrk::load_file(bench.shell, path, bench.shell.code_buffer));
        if (bench.buffer_equals_file() != fits)
            return state.SkipWithError("the buffer is not as the file and the rules have it");
        bench.dialogs.shown.clear();
    }
}

void hex_that_fits(benchmark::State& state) { load(state, "Alder-64", the_bench().hex_path, true); }
void hex_under_rules(benchmark::State& state) { load(state, "Birch-20", the_bench().hex_path, false); }
void bin_that_fits(benchmark::State& state) { load(state, "Alder-64", the_bench().bin_path, true); }

void strict_reader(benchmark::State& state)
{
    Image image(file_size);
    for (auto _ : state) {
        std::fill(image.begin(), image.end(), std::uint8_t{0});
        if (!read_strictly(the_bench().hex_path, image) || image != the_bench().code)
            return state.SkipWithError("the strict reader has refused its file");
    }
}

void bare_copy(benchmark::State& state)
{
    Image image(file_size);
    for (auto _ : state) {
        const std::string contents = whole_file(the_bench().bin_path);
        std::copy(contents.begin(), contents.end(), image.begin());
        benchmark::DoNotOptimize(std::accumulate(image.begin(), image.end(), 0U));
        if (image != the_bench().code)
            return state.SkipWithError("the copy differs");
    }
}

BENCHMARK(hex_that_fits)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(hex_under_rules)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(strict_reader)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(bin_that_fits)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(bare_copy)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double strict = reporter.median_of("strict_reader");
    bench::print({"64 KB HEX into the buffer", reporter.median_of("hex_that_fits"), "ms", "strict reader", strict,
        "below 0.7 ms"});
    bench::print({"64 KB HEX, rules clear and report", reporter.median_of("hex_under_rules"), "ms", "strict reader",
        strict, "below 0.7 ms"});
    bench::print({"64 KB BIN into the buffer", reporter.median_of("bin_that_fits"), "ms", "bare copy and sum",
        reporter.median_of("bare_copy"), "below 0.3 ms"});
}
