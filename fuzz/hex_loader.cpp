// Intel HEX from disk to the plan of a download. The head of an input is told in load_bench.h.
#include "fuzz/load_bench.h"

#include "shell/buffer_view.h"

#include <algorithm>

namespace fuzz {

namespace {

bool same_load(const vrk::FileBuffer& one, const vrk::FileBuffer& other)
{
    return one.data == other.data && one.low == other.low && one.high == other.high && one.checksum == other.checksum &&
        one.view_low == other.view_low && one.view_high == other.view_high;
}

} // namespace

std::string fuzz_hex_loader(Input input)
{
    LoadBench bench{input, "firmware.hex", "firmware.txt"};
    const bool loaded = bench.load(input);
    if (std::string complaint = bench.complaint(loaded); !complaint.empty() || !loaded)
        return complaint;
    if (bench.meanwhile() != Meanwhile::nothing)
        return {};

    const vrk::FileBuffer& buffer = bench.buffer();
    if (bench.fresh() && buffer.low > 0) {
        const auto end = buffer.data.begin() + std::min(buffer.low, buffer.last() + 1);
        if (std::any_of(buffer.data.begin(), end, [](std::uint8_t byte) { return byte != 0; }))
            return "bytes stand below the start address";
    }

    // The same file over an empty buffer comes out the same, at the form and on values.
    const bool was_fresh = bench.fresh();
    const vrk::FileBuffer first = buffer;
    vrk::controls_of(bench.shell(), buffer.kind).clear_first.set_value(true);
    if (!bench.load(input))
        return "the file that was loaded is refused the second time";
    if (was_fresh && !same_load(buffer, first))
        return "the same file loads differently the second time";
    const vrk::Loaded on_values = bench.load_on_values();
    if (on_values.end != vrk::LoadEnd::done || !same_load(buffer, on_values.buffer))
        return "the same file loads differently on values";
    return {};
}

} // namespace fuzz
