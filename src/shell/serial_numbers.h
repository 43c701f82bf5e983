// The serial numbers at the form: read from their fields, checked, stamped, stored, and moved on after a good chip.
// What a number is and which bytes it makes tells image/auto_increase.h.
#pragma once

#include "shell/shell.h"

namespace vrk {

// Both records as the controls have them now; the address comes out in upper case. `valid` stays.
void read_records(Shell& shell);

void load_increase_settings(Shell& shell);

// A box that was set: the number is checked, stored and stamped. Where it cannot be used, the user has been told why
// and the box is off again.
void cheAuto_Increase_Click(Shell& shell);
void cheData_Auto_Increase_Click(Shell& shell);
// The same for the boxes that a project has set; its numbers stand in its images already. False: it has set none.
bool take_up_project_numbers(Shell& shell);

// For the sequences. A number that is valid stands in the buffer already: it was stamped when its box was set or came
// with its project. Before a chip it is only seen to that it fits, that none came with its project and is not in use,
// and that the one behind it will be on the disk; the user is told why not.
bool numbers_fit(Shell& shell);
bool numbers_are_safe(Shell& shell);
// After each good chip the next number takes its place, in the buffer, on the screen and in the settings, which are to
// be written through. False: it does not fit any more, as numbers_fit will tell; what stands in the buffer belongs to a
// chip that has it already.
bool move_numbers(Shell& shell);
// The value that the next chip gets takes the place of what is shown, in the buffer, on the screen and in the settings.
// False: it does not fit.
bool put_next_value(Shell& shell, BufferKind kind, const std::string& value);
// As move_numbers, from the ledger where the numbers come from it, and on the disk before anybody is told of the chip.
// `number_for_next` tells whether another chip may follow.
void use_up_numbers(Shell& shell);

// Which numbers are switched on, to be put back into an image that has been loaded again. False: one does not fit any
// more, and the user has been told.
struct NumbersInUse {
    bool code = false;
    bool data = false;
    bool any() const { return code || data; }
};
NumbersInUse numbers_in_use(const Shell& shell);
bool put_numbers_back(Shell& shell, const NumbersInUse& numbers);
void keep_numbers(Shell& shell, const NumbersInUse& numbers); // that stand in their images already

// A load brings the file's own bytes: the user has to switch the numbers on again.
void stop_stamping(Shell& shell);

} // namespace vrk
