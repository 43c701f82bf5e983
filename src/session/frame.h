// The frames of the boot loader's wire: how one is built and how one is checked. Bytes only, no port.
//
// To the target:    46 B9 6A  length(2)  command  parameters  check  16
// From the target:        68  length(2)  code     payload     check  16     (46 B9 in front is never stored)
// The length counts from the direction byte through 16. The check is the sum from the direction byte on: its low byte,
// or, where the model has the long form, its low 16 bits, high byte first. Multi-byte numbers are big-endian.
#pragma once

#include "catalog/mcu_record.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vrk {

using Bytes = std::vector<std::uint8_t>;

enum class Check { sum8, sum16, crc16 }; // one byte, two bytes of sum, two bytes of CRC (off-line board)

// Commands of the boot loader.
namespace command {
constexpr std::uint8_t write_block = 0x00;
constexpr std::uint8_t write_block_again = 0x30; // a block that is sent once more
constexpr std::uint8_t read_status = 0x50;
constexpr std::uint8_t rc_test = 0x65;
constexpr std::uint8_t end_of_code = 0x69;
constexpr std::uint8_t ready = 0x80;
constexpr std::uint8_t leave_isp = 0x82;
constexpr std::uint8_t erase = 0x84;
constexpr std::uint8_t feed_pin = 0x86;
constexpr std::uint8_t probe = 0x8A;
constexpr std::uint8_t write_options = 0x8D;
constexpr std::uint8_t set_baud = 0x8E;
constexpr std::uint8_t test_baud = 0x8F;
constexpr std::uint8_t demo_write = 0xB3;
constexpr std::uint8_t demo_write_again = 0xB4;
} // namespace command

// The bytes of a number as frames carry it: its lowest, and the one above that.
constexpr std::uint8_t low(std::uint32_t value) { return static_cast<std::uint8_t>(value & 0xFF); }
constexpr std::uint8_t high(std::uint32_t value) { return static_cast<std::uint8_t>((value >> 8) & 0xFF); }

constexpr std::array<std::uint8_t, 2> sync_pair = {0x7F, 0x7F}; // what the boot loader listens for at power-up

std::uint32_t byte_sum(std::span<const std::uint8_t> bytes);

Bytes build_command_frame(std::uint8_t code, std::span<const std::uint8_t> parameters, Check check);

// A command without parameters behind FE FE FE FE. Empty for a code that has no short form.
Bytes build_short_frame(std::uint8_t code, Check check);

// Two id bytes of a model frame. A two-digit id is followed by FF. A chip that reports the model's older id is
// addressed by that one.
std::array<std::uint8_t, 2> model_id_bytes(const McuRecord& model, std::string_view reported_id);
constexpr std::size_t model_frame_size = 15; // the longer of its two forms
Bytes build_model_frame(
    std::uint8_t code, std::uint8_t parameter, const McuRecord& model, std::string_view reported_id, Check check);

// A block of data for the chip. `data` holds at most 128 bytes.
struct DataFrame {
    Bytes bytes;
    std::uint16_t data_sum = 0; // of the data alone: low 8 bits, or 16 with the long form
};
DataFrame build_data_frame(std::uint8_t code, std::uint32_t address, std::span<const std::uint8_t> data, Check check);

// 5A A5  length(2)  command  parameters  sum(2)  16: the wire of chips that already run user code. The length counts
// the whole frame.
Bytes build_demo_frame(std::uint8_t code, std::span<const std::uint8_t> parameters);
DataFrame build_demo_data_frame(std::uint8_t code, std::uint32_t address, std::span<const std::uint8_t> data);

// A whole frame from the target, from 68 through 16.
bool reply_check_good(std::span<const std::uint8_t> frame, Check check);
// A whole 5A A5 frame.
bool demo_check_good(std::span<const std::uint8_t> frame);

} // namespace vrk
