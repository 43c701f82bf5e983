// The two images of a job, code and EEPROM data, and the controls that belong to each. What a file brings in is the
// business of file_loader.h; what the user sees of the bytes, of buffer_view.h.
#pragma once

#include "form/shell.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vrk {

enum class BufferKind { code, data };

// By its name: "AP_FILE" in any case of letters is the code buffer, every other name the EEPROM buffer.
BufferKind kind_of(const FileBuffer& buffer);
AutoIncrease& increase_of(Shell& shell, const FileBuffer& buffer); // the record of the buffer's serial number

// The controls of one buffer.
struct BufferControls {
    TextBox& start; // hexadecimal start address of the next load
    CheckBox& clear_first; // clear the buffer before a load
    TextBox& checksum;
    Frame& path_frame; // its caption shows the path
    std::string_view path_caption; // what stands in front of the path
    TextBox& dump; // the box that the user sees
    TextBox& dump_twin;
    int scroll_index; // in vscFile
    Label& length;
};
BufferControls controls_of(Shell& shell, const FileBuffer& buffer);

// Back to an empty image: fills the buffer, forgets the load, redraws the view from address 0. Clearing the code buffer
// also clears file_loaded; clearing the EEPROM buffer leaves it, since the flag speaks of a code file.
void clear_buffer(Shell& shell, std::uint8_t fill, FileBuffer& buffer);
void fill_buffer(std::uint8_t fill, FileBuffer& buffer); // the bytes alone

// Takes `start` and `clear_first` from the controls. An empty text is 0; four digits from 8000 up come out negative,
// see load_base.
void read_load_parameters(Shell& shell, FileBuffer& buffer);
// The address at which a load begins: a negative `start` is a four-digit one and gets its 0x10000 back.
std::int32_t load_base(std::int32_t start);
// False, and the user is told, if the start address lies past the device of the selected model. Nothing has changed
// then.
bool start_address_fits(Shell& shell, const FileBuffer& buffer);

// A load adds to what earlier loads left if a file is open and the clear box is off; otherwise it replaces it.
void merge_or_replace(Shell& shell, FileBuffer& buffer);

// Writes the effective length, high + 1, behind the two labels; a buffer without a load shows the bare label.
void show_effective_lengths(Shell& shell);

// Seven digits; of larger sums the last seven. Then "H", and blanks that keep it clear of the box's edge.
std::string checksum_text(std::int32_t checksum);

} // namespace vrk
