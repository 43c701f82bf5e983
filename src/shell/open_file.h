// From a file on disk to a buffer: asks for the file, loads it, shows what came of it, and can do so again for the file
// that was open last. The load itself is the business of image/load.h.
#pragma once

#include "shell/shell.h"

#include <string>

namespace vrk {

// What a click on comLoadFile or comLoadDataFile brought. A file of which nothing could be loaded leaves its path in
// the settings alone, for the next dialog; over the buffer stands what the buffer holds. A project (".VRK" in its path)
// may be chosen in either dialog and is left to the caller; its path stands in shell.loader.current_path.
enum class Chosen { nothing, file, project };
Chosen comLoadFile_Click(Shell& shell);
Chosen comLoadDataFile_Click(Shell& shell);

// What was chosen goes into the buffer; numbers that the load has switched off are told. The path stands over the
// buffer already: where it brings nothing in, what stood there before stands there again.
Chosen load_chosen(Shell& shell, const std::string& path, FileBuffer& buffer, const std::string& caption_before);

// The file dialog of a buffer. Empty: cancelled, and nothing has changed.
std::string choose_file(Shell& shell, BufferKind kind);
// Makes the path the current one, shows it over the buffer and stores it for the next run. What a reload brings in
// stays the file that was loaded last.
void take_path(Shell& shell, BufferKind kind, const std::string& path);

// Takes `start` and `clear_first` from the controls. An empty text is 0; four digits from 8000 up come out negative,
// see load_base.
void read_load_parameters(Shell& shell, FileBuffer& buffer);

// The whole load into one of the shell's buffers. Until the file has been read, the buffer holds what it held before,
// and it keeps that where the path is empty, the file cannot be read, is too large, changes meanwhile or brings no
// data, or the start address lies past the device; all but the empty path are told. False also if the user gave up on
// wrong checksums: the buffer is empty then.
bool load_file(Shell& shell, const std::string& path, FileBuffer& buffer);

enum class Asker { hand, watch }; // who is told why a file cannot be had: in a box, or beside a watch in the report
// The code file that is open once more, before a download or after it has changed on disk; a number that is set is
// checked and stamped into the fresh image. False: it could not be brought in whole, a HEX file without its end record
// being half a one, or its number does not fit. The user has been told then, and the buffer is as it was. Nothing is
// loaded while a project is open.
bool reload_code_file(Shell& shell, Asker asker = Asker::hand);

} // namespace vrk
