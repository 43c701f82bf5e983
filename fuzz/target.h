// The fuzz targets. Each takes one input, does with it what the program would, and answers what came out wrong: an
// empty text where all is well. A crash or a hang is for the sanitizers and the fuzzer to notice.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace fuzz {

using Input = std::span<const std::uint8_t>;

std::string fuzz_hex_loader(Input input);
std::string fuzz_bin_loader(Input input);
std::string fuzz_project(Input input);
std::string fuzz_receive_isp(Input input);
std::string fuzz_receive_demo(Input input);
std::string fuzz_status_frame(Input input);
std::string fuzz_monitor_frames(Input input);
std::string fuzz_hex_to_send(Input input);
std::string fuzz_board_talk(Input input);

// The first byte of an input, taken off it; 0 where it has none.
inline std::uint8_t take_byte(Input& input)
{
    if (input.empty())
        return 0;
    const std::uint8_t byte = input.front();
    input = input.subspan(1);
    return byte;
}

inline Input take_bytes(Input& input, std::size_t at_most)
{
    const Input taken = input.first(at_most < input.size() ? at_most : input.size());
    input = input.subspan(taken.size());
    return taken;
}

} // namespace fuzz
