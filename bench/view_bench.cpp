// What one page of scrolling costs in a full buffer: the event of the bar, the dump drawn into both of its boxes, the
// stamped number looked for. Beside it the same lines made by the printing of the C library.
#include "bench/median_reporter.h"
#include "form/named_controls.h"

#include "image/dump.h"
#include "platform/scripted_dialogs.h"
#include "shell/buffer_view.h"
#include "shell/shell.h"
#include "sim/virtual_loop.h"

#include <cstdio>

namespace {

constexpr int lines = 40; // of a tall window
constexpr std::int32_t last_address = 0xFFFF;

struct NoPorts final : vrk::PortDriver {
    std::vector<vrk::PortInfo> list() override { return {}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
};

// A code buffer of 64 KB with a number in its middle.
struct ViewBench {
    sim::VirtualLoop loop;
    NoPorts ports;
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell{{loop, ports, dialogs, settings}};
    const vrk::NamedControls form{shell.controls};
    vrk::ScrollBar& bar = form.scroll_bar("vscFile", 0);
    const vrk::TextBox& pane = form.text_box("txtBuffer2");

    ViewBench()
    {
        for (std::size_t i = 0; i < shell.code_buffer.data.size(); ++i)
            shell.code_buffer.data[i] = static_cast<std::uint8_t>(i * 7 >> 3);
        shell.code_buffer.view_high = last_address;
        shell.view_lines[0] = lines;
        form.text_box("texAuto_Increase", 0).set_text("8003");
        form.text_box("texAuto_Increase", 1).set_text("4");
        shell.code_increase.valid = true;
        vrk::update_view(shell, shell.code_buffer);
    }
    void page_down()
    {
        bar.set_value(bar.value() >= bar.max() ? 0 : bar.value() + bar.large_step);
        vrk::vscFile_Change(shell, 0);
    }
};

void one_page(benchmark::State& state)
{
    ViewBench bench;
    for (auto _ : state) {
        bench.page_down();
        if (bench.pane.text().size() < static_cast<std::size_t>(vrk::dump_line_size))
            return state.SkipWithError("nothing was drawn");
    }
}

void printed_page(benchmark::State& state)
{
    ViewBench bench;
    const auto& data = bench.shell.code_buffer.data;
    std::size_t address = 0;
    for (auto _ : state) {
        std::string text;
        char piece[16];
        for (int line = 0; line < lines; ++line, address += 16) {
            address &= 0xFFFF;
            text.append(piece, static_cast<std::size_t>(std::snprintf(piece, sizeof piece, "%06zX   ", address)));
            for (std::size_t i = 0; i < 16; ++i)
                text.append(
                    piece, static_cast<std::size_t>(std::snprintf(piece, sizeof piece, "%02X ", data[address + i])));
            text += "\r\n";
        }
        benchmark::DoNotOptimize(text.data());
    }
}

BENCHMARK(one_page)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(printed_page)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bench::print({"one page of the dump, 40 lines", reporter.median_of("one_page"), "ms", "the same, printed",
        reporter.median_of("printed_page"), "below 2 ms"});
}
