#include "monitor/monitor.h"

#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

using Values = std::vector<std::int16_t>;

constexpr std::size_t type_at = 3;
constexpr std::size_t address_at = 5; // high, low
constexpr std::size_t r1_at = 14;
constexpr std::size_t r0_at = 15;
constexpr std::size_t dump_at = 16;
constexpr std::size_t bytes_per_line = 8;
constexpr std::size_t first_column = 5; // of a line of memory; three to a byte
constexpr std::size_t line_width = 28;
constexpr std::size_t ram_size = 256;
constexpr std::size_t external_ram_size = 1024;
constexpr std::size_t data_flash_size = 512;

struct Told { // registers that every frame carries, behind its address
    std::size_t at;
    std::uint8_t address;
};

// clang-format off
constexpr Told told_registers[] = {
    { 7, 208 },  // PSW
    { 8, 224 },  // ACC
    { 9, 136 },  // TCON
    { 10, 200 }, // T2CON
    { 11, 216 }, // CCON
    { 12, 168 }, // IE
    { 13, 129 }, // SP
    { r1_at, 1 },
    { r0_at, 0 },
};
// clang-format on

std::span<const std::uint8_t> dump_of(std::span<const std::uint8_t> frame)
{
    return frame.subspan(dump_at, frame.size() - dump_at - 1);
}

std::string digits_of(std::int16_t value)
{
    return value == Monitor::unknown ? std::string(2, ' ') : hex_text(value, 2);
}

std::string register_line(const Register& row, std::int16_t value)
{
    const std::string shown = value == Monitor::unknown ? "   " : hex_text(value, 2) + "H";
    return std::string(13, ' ') + hex_text(row.address, 2) + "H  " + shown + "  " + std::string{row.name};
}

std::string memory_line(std::size_t address, int digits, std::span<const std::int16_t> values)
{
    std::string line = hex_text(static_cast<std::int64_t>(address), digits);
    line.resize(line_width, ' ');
    for (std::size_t i = 0; i < values.size(); ++i)
        line.replace(first_column + 3 * i, 2, digits_of(values[i]));
    return line;
}

void put(MonitorList& list, std::vector<std::string> lines)
{
    list.changed.assign(lines.size(), false);
    for (std::size_t i = 0; i < lines.size() && i < list.lines.size(); ++i)
        list.changed[i] = lines[i] != list.lines[i];
    list.lines = std::move(lines);
}

void put_memory(MonitorList& list, std::size_t first_address, int digits, const Values& values)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < values.size(); at += bytes_per_line)
        lines.push_back(memory_line(first_address + at, digits, std::span{values}.subspan(at, bytes_per_line)));
    put(list, std::move(lines));
}

Values values_of(std::span<const std::uint8_t> dump, std::size_t size)
{
    Values values(size, Monitor::unknown);
    std::copy_n(dump.begin(), std::min(dump.size(), size), values.begin());
    return values;
}

std::vector<std::string> register_lines(std::span<const Register> table, const std::array<std::int16_t, 256>& values)
{
    std::vector<std::string> lines;
    for (const Register& row : table)
        lines.push_back(register_line(row, values[row.address]));
    return lines;
}

// What was shown before is gone, so nothing has changed.
void blank(MonitorList& list, std::size_t size, int digits)
{
    list = {};
    put_memory(list, 0, digits, Values(size, Monitor::unknown));
}

} // namespace

std::array<std::uint8_t, 4> monitor_command_bytes(std::uint8_t command)
{
    return {0xFE, 0xAA, command, static_cast<std::uint8_t>(0xAA + command)};
}

void Monitor::clear(int series)
{
    table_ = registers_of(series);
    register_values_.fill(unknown);
    registers = {};
    put(registers, register_lines(table_, register_values_));
    blank(ram, ram_size, 2);
    blank(external_ram, external_ram_size, 4);
    blank(data_flash, data_flash_size, 4);
}

void Monitor::show(std::span<const std::uint8_t> frame)
{
    switch (static_cast<Kind>(frame[type_at])) {
    case Kind::registers:
        return show_registers(frame);
    case Kind::ram:
        return show_ram(frame);
    case Kind::external_ram:
        return put_memory(external_ram, 0, 4, values_of(dump_of(frame), external_ram_size));
    case Kind::data_flash:
        return put_memory(data_flash, frame[address_at] * 256U + frame[address_at + 1], 4,
            values_of(dump_of(frame), data_flash_size));
    }
}

// The nine registers stand last: the dump has those of the routine that sends it, these are the program's.
void Monitor::show_registers(std::span<const std::uint8_t> frame)
{
    register_values_.fill(unknown);
    std::size_t address = frame[address_at + 1];
    for (const std::uint8_t byte : dump_of(frame)) {
        if (address < register_values_.size())
            register_values_[address++] = byte;
    }
    for (const Told& told : told_registers)
        register_values_[told.address] = frame[told.at];
    put(registers, register_lines(table_, register_values_));
}

void Monitor::show_ram(std::span<const std::uint8_t> frame)
{
    Values values = values_of(dump_of(frame), ram_size);
    values[0] = frame[r0_at];
    values[1] = frame[r1_at];
    put_memory(ram, 0, 2, values);
}

} // namespace vrk
