// The two buffers and the controls that belong to each: what the user sees of the bytes and of their load. Only the
// lines that fit are ever drawn; view_lines says how many.
#pragma once

#include "image/range_rules.h"
#include "shell/shell.h"

#include <cstdint>
#include <string_view>

namespace vrk {

FileBuffer& buffer_of(Shell& shell, BufferKind kind);
AutoIncrease& increase_of(Shell& shell, BufferKind kind); // the record of the buffer's serial number

// The controls of one buffer.
struct BufferControls {
    TextBox& start; // hexadecimal start address of the next load
    CheckBox& clear_first; // clear the buffer before a load
    TextBox& checksum;
    Frame& path_frame; // its caption shows the path
    std::string_view path_caption; // what stands in front of the path
    TextBox& dump; // the box that the user sees
    TextBox& dump_twin;
    ScrollBar& bar;
    Label& length;
    Label& edited_sum;
};
BufferControls controls_of(Shell& shell, BufferKind kind);

// Back to an empty image: fills the buffer, forgets the load, redraws the view from address 0. Clearing the code buffer
// also clears file_loaded; clearing the EEPROM buffer leaves it, since the flag speaks of a code file.
void clear_buffer(Shell& shell, std::uint8_t fill, FileBuffer& buffer);

// The bytes are those of a load again: no hand has changed them, and there is nothing to undo.
void forget_edits(Shell& shell, BufferKind kind);
// Something else than a hand has changed the bytes, a serial number for one: an undo would put old ones back.
void forget_history(Shell& shell, BufferKind kind);
// Beside the checksum of the load, which stays: that of the bytes as they are, once a hand has changed some of them.
void show_edited_sum(Shell& shell, const FileBuffer& buffer);

// Writes the effective length, high + 1, behind the two labels; a buffer without a load shows the bare label.
void show_effective_lengths(Shell& shell);

// Draws the buffer from first_address on into its box and the box's twin. A valid number is selected, so that it stands
// out.
void render(Shell& shell, const FileBuffer& buffer, std::int32_t first_address, std::int32_t last_address);

// What the scroll bar reaches: all merged loads, and a valid number wherever it lies. What is downloaded and saved does
// not grow by it.
AddressRange shown_range(Shell& shell, const FileBuffer& buffer);

// Index 0 is the code buffer, 1 the EEPROM buffer. A bar's value is the first line shown, from that range's first on.
void vscFile_Change(Shell& shell, int index);

// After the bytes of a buffer or its number have changed: the scroll bar follows, the view is drawn anew.
void update_view(Shell& shell, const FileBuffer& buffer);
// The same, with the line of that address as the first one shown, as far as the bar goes.
void show_from(Shell& shell, const FileBuffer& buffer, std::int32_t address);
// Highlights what of the bytes from `first` to `last` is in view; scrolls where the first of them is not.
void show_stretch(Shell& shell, const FileBuffer& buffer, std::int32_t first, std::int32_t last);

} // namespace vrk
