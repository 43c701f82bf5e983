// The monitor: a program on the target stops, sends its registers or a piece of its memory, and waits for a word to go
// on. Here is what it has sent, as lines to be shown.
#pragma once

#include "monitor/frame_scan.h"
#include "monitor/registers.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vrk {

namespace monitor_command {

constexpr std::uint8_t received = 0x50; // the frame has come whole
constexpr std::uint8_t repeat = 0x52;
constexpr std::uint8_t go_on = 0x54;

} // namespace monitor_command

std::array<std::uint8_t, 4> monitor_command_bytes(std::uint8_t command); // FE AA, the command, a sum

// One list: its lines, and which of them differ from the frame before.
struct MonitorList {
    std::vector<std::string> lines;
    std::vector<bool> changed;
};

struct Monitor {
    static constexpr std::int16_t unknown = 256; // a byte that no frame has told; it is shown as blank

    enum class Kind { registers, ram, external_ram, data_flash };

    MonitorList registers; // special function registers, in the order of the series' table
    MonitorList ram; // direct and indirect, eight bytes a line
    MonitorList external_ram;
    MonitorList data_flash;

    // All lists as they are before a frame has come. `series`: the model's.
    void clear(int series);
    // A good frame goes into its list; one of an unknown type is left alone.
    void show(std::span<const std::uint8_t> frame);

private:
    void show_registers(std::span<const std::uint8_t> frame);
    void show_ram(std::span<const std::uint8_t> frame);

    std::span<const Register> table_;
    std::array<std::int16_t, 256> register_values_{};
};

} // namespace vrk
