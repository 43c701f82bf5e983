// A binary file from disk to the plan of a download. The head of an input is told in load_bench.h.
#include "fuzz/load_bench.h"

#include <algorithm>

namespace fuzz {

namespace {

// Three lines that begin with ':' make a HEX file of any name; the HEX target has those.
bool may_be_hex(Input file) { return !file.empty() && file.front() == ':'; }

} // namespace

std::string fuzz_bin_loader(Input input)
{
    LoadBench bench{input, "firmware.bin", "firmware"};
    const bool loaded = bench.load(input);
    if (std::string complaint = bench.complaint(loaded); !complaint.empty() || !loaded)
        return complaint;
    if (bench.meanwhile() != Meanwhile::nothing || !bench.fresh() || may_be_hex(input))
        return {};

    if (bench.load_on_values().buffer.data != bench.buffer().data)
        return "the same file loads differently on values";

    // Every byte stands where it belongs, or was cleared by the range rules; all else is 00.
    const vrk::FileBuffer& buffer = bench.buffer();
    const auto low = static_cast<std::size_t>(std::max(buffer.low, 0));
    for (std::size_t address = 0; address < buffer.data.size(); ++address) {
        const bool in_file = address >= low && address - low < input.size();
        const std::uint8_t wanted = in_file ? input[address - low] : std::uint8_t{0};
        if (buffer.data[address] != wanted && buffer.data[address] != 0)
            return "address " + std::to_string(address) + " holds a byte that is not the file's";
    }
    return {};
}

} // namespace fuzz
