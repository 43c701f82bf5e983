// The serial numbers at the form: read from their fields, checked, stamped, stored, and moved on after a good chip.
// What a number is and which bytes it makes tells image/auto_increase.h.
#pragma once

#include "shell/shell.h"

namespace vrk {

// Both records as the controls have them now; the address comes out in upper case. `valid` stays.
void read_records(Shell& shell);
// Sets `valid`; tells the user why not.
void check_record(Shell& shell, AutoIncrease& record);
// Writes the number into its buffer. False: the value does not fit or the place lies outside the buffer, and not a byte
// has changed; of the value the user has been told.
bool stamp_number(Shell& shell, const AutoIncrease& record);

void load_increase_settings(Shell& shell);
void save_increase_settings(Shell& shell);

void cheAuto_Increase_Click(Shell& shell);
void cheData_Auto_Increase_Click(Shell& shell);

// For the sequences. A number that is valid stands in the buffer already: it was stamped when its box was set or came
// with its project. Before the first chip it is only seen to that it fits. After each good chip the next number takes
// its place, in the buffer, on the screen and in the settings. False: a number does not fit any more, and the user has
// been told; what stands in the buffer belongs to a chip that has it already.
bool numbers_fit(Shell& shell);
bool move_numbers(Shell& shell);

// Which numbers are switched on, to be put back into an image that has been loaded again. False: one does not fit any
// more, and the user has been told.
struct NumbersInUse {
    bool code = false;
    bool data = false;
};
NumbersInUse numbers_in_use(const Shell& shell);
bool put_numbers_back(Shell& shell, const NumbersInUse& numbers);
void keep_numbers(Shell& shell, const NumbersInUse& numbers); // that stand in their images already

// A load brings the file's own bytes: the user has to switch the numbers on again.
void stop_stamping(Shell& shell);

} // namespace vrk
