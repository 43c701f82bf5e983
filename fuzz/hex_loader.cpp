// Intel HEX from disk to the plan of a download. The head of an input is told in load_bench.h.
#include "fuzz/load_bench.h"

#include "image/buffers.h"

#include <algorithm>

namespace fuzz {

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

    // The same file over an empty buffer comes out the same.
    const bool was_fresh = bench.fresh();
    const std::vector<std::uint8_t> image = buffer.data;
    const std::int32_t high = buffer.high;
    vrk::controls_of(bench.shell(), buffer).clear_first.set_value(true);
    if (!bench.load(input))
        return "the file that was loaded is refused the second time";
    if (was_fresh && (buffer.data != image || buffer.high != high))
        return "the same file loads differently the second time";
    return {};
}

} // namespace fuzz
