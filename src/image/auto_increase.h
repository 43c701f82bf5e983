// Serial numbers for production runs. A number lies at a fixed address of the code or of the EEPROM image; it is
// stamped into the buffer before a chip, and after a good chip the next one takes its place. Each buffer has a record
// of its own.
//
// `address` holds the number's last byte. Hexadecimal and BCD numbers end there and are big-endian; an ASCII number has
// its first digit there and reads backwards down the memory, which is how the programs that read it expect it.
#pragma once

#include "form/shell.h"
#include "image/buffers.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vrk {

// What is wrong with the place of a number. The bytes from address + 1 - bytes to address must lie in the model.
enum class PlaceFault { none, code_past_code_flash, code_past_flash, code_below_zero, data_past_end, data_below_zero };
PlaceFault place_fault(const McuRecord& model, BufferKind kind, std::int32_t address, std::int32_t bytes);

// What is wrong with the value, in the order in which it is looked at. Leading zeros count for nothing.
enum class ValueFault { none, no_decimal, too_large, too_few_bytes, too_many_bytes_for_hex, too_many_bytes };
ValueFault value_fault(const AutoIncrease& record);

// The number as hexadecimal digits; its last two go to `address`, the two before them below it, and so on.
std::string stamp_digits(const AutoIncrease& record);
// The bytes in that order: address, address - 1, ... `bytes` of them; 0 where the digits have run out. Meant for a
// value without a fault.
std::vector<std::uint8_t> stamp_bytes(const AutoIncrease& record);

// The value one increment further, padded with zeros to its width. Digits above the width are lost: the counter wraps.
std::string advanced_value(const AutoIncrease& record);

// Both records as the controls have them now; the address comes out in upper case. `valid` stays.
void read_records(Shell& shell);
// Sets `valid`; tells the user why not.
void check_record(Shell& shell, AutoIncrease& record);
// Writes the number into the buffer. False: the value does not fit or the place lies outside the buffer, and not a byte
// has changed; of the value the user has been told.
bool stamp(Shell& shell, const AutoIncrease& record);
void advance(Shell& shell, AutoIncrease& record); // the control takes the new value too

void load_increase_settings(Shell& shell);
void save_increase_settings(Shell& shell);

void scroll_to(Shell& shell, const AutoIncrease& record); // the number comes into view

void cheAuto_Increase_Click(Shell& shell);
void cheData_Auto_Increase_Click(Shell& shell);

// For the sequences. A number that is valid stands in the buffer already: it was stamped when its box was set or came
// with its project. Before the first chip it is only seen to that it fits. After each good chip the next number takes
// its place, in the buffer, on the screen and in the settings. False: a number does not fit any more, and the user has
// been told; what stands in the buffer belongs to a chip that has it already.
bool numbers_fit(Shell& shell);
bool move_numbers(Shell& shell);
// A load brings the file's own bytes: the user has to switch the numbers on again.
void stop_stamping(Shell& shell);

} // namespace vrk
