// What the report says of a connected chip: model, firmware, and the oscillator and serial lines of the chips that have
// them.
#pragma once

#include "form/shell.h"

namespace vrk {

// Model and firmware lines, the double-speed line of the two oldest letters, then the options. Reads the status frame
// in rx_buffer and status_bytes.
void report_status(Shell& shell);

// The RC oscillator's last and factory frequency, from the status frame; Chinese only. Nothing is said of a chip whose
// figures lie below 2 MHz.
void report_rc_frequency(Shell& shell, bool after_download);

// The factory serial number, from the answer to the erase frame; kept in target.serial_number, said in Chinese only.
void report_serial(Shell& shell);

} // namespace vrk
