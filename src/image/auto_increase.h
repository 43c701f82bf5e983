// Serial numbers for production runs. A number lies at a fixed address of the code or of the EEPROM image; it is
// stamped into the buffer before a chip, and after a good chip the next one takes its place. Each buffer has a record
// of its own.
//
// `address` holds the number's last byte. Hexadecimal and BCD numbers end there and are big-endian; an ASCII number has
// its first digit there and reads backwards down the memory, which is how the programs that read it expect it.
#pragma once

#include "catalog/mcu_record.h"
#include "image/file_buffer.h"
#include "report/text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

struct AutoIncrease {
    enum System : std::int16_t { hex, bcd, ascii };

    explicit AutoIncrease(BufferKind its_kind = BufferKind::code)
        : kind(its_kind)
    {
    }

    BufferKind kind; // the buffer that the number is stamped into
    std::int32_t address = 0; // of the number's last byte in the buffer
    std::int16_t bytes = 0;
    std::string next_value; // decimal, zero padded
    std::int16_t increment = 0;
    bool valid = false; // the enabled record passed its checks
    bool left_behind = false; // came in an image with its project and is not in use: nobody would move it on
    std::int16_t system = hex;
};

// What is wrong with the fields of a number as they are typed. The place and the value are looked at by their own
// rules.
enum class FieldFault {
    none,
    bytes_no_whole_number,
    increment_no_whole_number,
    increment_too_large,
    address_no_number
};
FieldFault counts_fault(std::string_view bytes, std::string_view increment);
FieldFault address_fault(std::string_view address);
std::int16_t record_number(std::string_view text); // of bytes and increment, rounded and held to 16 bits
const Text& field_text(FieldFault fault); // of a fault, not of none

// What is wrong with the place of a number. The bytes from address + 1 - bytes to address must lie in the model.
enum class PlaceFault { none, code_past_code_flash, code_past_flash, code_below_zero, data_past_end, data_below_zero };
PlaceFault place_fault(const McuRecord& model, BufferKind kind, std::int32_t address, std::int32_t bytes);
Line place_text(PlaceFault fault, const McuRecord& model); // of a fault, not of none

// What is wrong with the value, in the order in which it is looked at. Leading zeros count for nothing; a value without
// a digit and a number without a byte are none.
enum class ValueFault { none, no_decimal, too_large, too_few_bytes, too_many_bytes_for_hex, too_many_bytes };
ValueFault value_fault(const AutoIncrease& record);
const Text& value_text(ValueFault fault); // of a fault, not of none

const Text& increase_title(BufferKind kind); // over what is told of a buffer's number

// The number as hexadecimal digits; its last two go to `address`, the two before them below it, and so on.
std::string stamp_digits(const AutoIncrease& record);
// The bytes in that order: address, address - 1, ... `bytes` of them; 0 where the digits have run out. Meant for a
// value without a fault.
std::vector<std::uint8_t> stamp_bytes(const AutoIncrease& record);
// Writes the number into its buffer. False: the value has a fault or the place lies outside the buffer, and not a byte
// has changed.
bool stamp(const AutoIncrease& record, FileBuffer& buffer);

// A value as the record shows it, padded with zeros to its width; digits above it are lost.
std::string padded_value(const AutoIncrease& record, double value);
// The value one increment further, padded with zeros to its width. Digits above the width are lost: the counter wraps.
std::string advanced_value(const AutoIncrease& record);

} // namespace vrk
