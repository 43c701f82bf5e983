// What a target sends, looked through for the monitor's frames and put into the lists:
//   0     how many bytes come in one burst, from 1 on
//   1     series of the model, low five bits; bit 7: the lists are cleared between two frames
//   2..   the bytes of the line
#include "fuzz/target.h"

#include "monitor/frame_scan.h"
#include "monitor/monitor.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace fuzz {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t shortest = 17;

struct Finder {
    vrk::FrameScan scan;
    std::vector<Bytes> good;
    std::size_t bad = 0;

    void look(Input bytes)
    {
        while (!bytes.empty()) {
            const std::size_t before = bytes.size();
            const auto found = scan.look(bytes);
            if (found == vrk::FrameScan::Found::good)
                good.emplace_back(scan.frame().begin(), scan.frame().end());
            bad += found == vrk::FrameScan::Found::bad ? 1U : 0U;
            if (bytes.size() == before)
                return; // a search that takes nothing would not end; the counts then differ
        }
    }
};

bool is_frame(const Bytes& frame)
{
    const unsigned sum = std::accumulate(frame.begin(), frame.end() - 1, 0U);
    return frame.size() >= shortest && frame.size() <= vrk::FrameScan::longest &&
        frame[1] * 256U + frame[2] == frame.size() && frame.back() == (sum & 0xFFU);
}

std::string complaint_of(const vrk::MonitorList& list, std::size_t lines, std::size_t width)
{
    if (list.lines.size() != lines || list.changed.size() != lines)
        return "a list has gained or lost lines";
    const bool even =
        std::all_of(list.lines.begin(), list.lines.end(), [width](const auto& line) { return line.size() == width; });
    return even ? "" : "a line of memory is out of its columns";
}

std::string complaint_of(const vrk::Monitor& monitor, int series)
{
    constexpr std::size_t width = 28;
    if (monitor.registers.lines.size() != vrk::registers_of(series).size())
        return "a register has come or gone";
    std::string complaint = complaint_of(monitor.ram, 32, width);
    if (complaint.empty())
        complaint = complaint_of(monitor.external_ram, 128, width);
    return complaint.empty() ? complaint_of(monitor.data_flash, 64, width) : complaint;
}

} // namespace

std::string fuzz_monitor_frames(Input input)
{
    const std::size_t burst = take_byte(input) + std::size_t{1};
    const std::uint8_t how = take_byte(input);
    const int series = how & 31;

    Finder in_one;
    in_one.look(input);
    Finder in_bursts;
    for (Input rest = input; !rest.empty();)
        in_bursts.look(take_bytes(rest, burst));
    if (in_one.good != in_bursts.good || in_one.bad != in_bursts.bad)
        return "what is found depends on how the bytes come in";

    vrk::Monitor monitor;
    monitor.clear(series);
    for (const Bytes& frame : in_one.good) {
        if (!is_frame(frame))
            return "a frame that is none was called good";
        monitor.show(frame);
        if (std::string complaint = complaint_of(monitor, series); !complaint.empty())
            return complaint;
        if ((how & 128) != 0)
            monitor.clear(series);
    }
    return {};
}

} // namespace fuzz
