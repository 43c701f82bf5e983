#include "sim/monitor_program.h"

#include "sim/hex_text.h"

#include <numeric>
#include <utility>

namespace sim {

namespace {

constexpr std::int64_t runs_for_ns = 500'000'000; // between two stops
constexpr std::uint8_t delivered = 0x50;
constexpr std::uint8_t again = 0x52;
constexpr std::uint8_t run = 0x54;
constexpr std::size_t first_register = 0x80;

} // namespace

MonitorProgram::MonitorProgram(const vrk::LineSettings& line)
    : UserProgram(line)
{
    std::iota(registers.begin(), registers.end(), std::uint8_t{0x80});
    std::iota(ram.begin(), ram.end(), std::uint8_t{0});
    std::iota(external_ram.begin(), external_ram.end(), std::uint8_t{1});
    std::iota(data_flash.begin(), data_flash.end(), std::uint8_t{2});
    ram[counter_at] = 0;
}

void MonitorProgram::begin()
{
    command_.clear();
    commands_.clear();
    sendings_.clear();
    next_ = 0;
    send_frame();
}

void MonitorProgram::hear(std::uint8_t byte)
{
    constexpr std::array<std::uint8_t, 2> head{0xFE, 0xAA};
    if (command_.size() < head.size() && byte != head[command_.size()])
        command_.clear();
    if (command_.size() >= head.size() || byte == head[command_.size()])
        command_.push_back(byte);
    if (command_.size() < 4)
        return;
    const std::vector<std::uint8_t> whole = std::exchange(command_, {});
    const bool known = whole[2] == delivered || whole[2] == again || whole[2] == run;
    if (!known || whole[3] != static_cast<std::uint8_t>(head[1] + whole[2])) {
        complaints_ += "no command: " + hex_bytes(whole) + "\n";
        return;
    }
    commands_.push_back({whole[2], now_ns()});
    obey(whole[2]);
}

void MonitorProgram::obey(std::uint8_t command)
{
    if (!waits_) {
        complaints_ += "not waiting for " + hex(command, 2) + "\n";
        return;
    }
    if (command == run)
        return run_on();
    if (next_ == stop.size())
        return; // all is told; only the last word helps
    if (command == delivered)
        ++next_;
    if (next_ < stop.size())
        send_frame();
}

void MonitorProgram::send_frame()
{
    std::vector<std::uint8_t> bytes = frame_bytes(stop[next_]);
    if (damaged > 0) {
        --damaged;
        bytes.back() ^= 0x01;
    }
    if (cut_off > 0) {
        --cut_off;
        bytes.resize(bytes.size() / 2);
    }
    const std::int64_t gone_ns = send(bytes);
    sendings_.push_back(gone_ns);
    waits_ = true;
}

void MonitorProgram::run_on()
{
    waits_ = false;
    ++times_run_on_;
    ++ram[counter_at];
    call_at(now_ns() + runs_for_ns, [this] {
        next_ = 0;
        send_frame();
    });
}

std::vector<std::uint8_t> MonitorProgram::frame_bytes(Frame frame) const
{
    std::span<const std::uint8_t> dump = ram;
    std::size_t address = 0;
    switch (frame) {
    case Frame::registers:
        dump = registers;
        address = first_register;
        break;
    case Frame::ram:
        break;
    case Frame::external_ram:
        dump = external_ram;
        break;
    case Frame::data_flash:
        dump = data_flash;
        address = data_flash_address;
        break;
    }
    const auto special = [this](std::size_t at) { return registers[at - first_register]; };
    const std::size_t length = 16 + dump.size() + 1; // from the byte behind the header through the check
    std::vector<std::uint8_t> bytes{0xA5, 0x5A, 0x00, static_cast<std::uint8_t>(length / 256),
        static_cast<std::uint8_t>(length % 256), static_cast<std::uint8_t>(frame), 0x00,
        static_cast<std::uint8_t>(address / 256), static_cast<std::uint8_t>(address % 256), special(0xD0),
        special(0xE0), special(0x88), special(0xC8), special(0xD8), special(0xA8), special(0x81), ram[1], ram[0]};
    bytes.insert(bytes.end(), dump.begin(), dump.end());
    bytes.push_back(static_cast<std::uint8_t>(std::accumulate(bytes.begin() + 2, bytes.end(), 0U)));
    return bytes;
}

} // namespace sim
