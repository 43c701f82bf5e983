// From a file on disk to a buffer: asks for the file, loads it, shows what came of it, and can do so again for the file
// that was open last. The load itself is the business of image/load.h.
#pragma once

#include "shell/shell.h"

#include <string>

namespace vrk {

// What a click on comLoadFile or comLoadDataFile brought. A project (".VRK" in its path) may be chosen in either dialog
// and is left to the caller; its path stands in shell.loader.current_path.
bool names_project(const std::string& path);
enum class Chosen { nothing, file, project };
Chosen comLoadFile_Click(Shell& shell);
Chosen comLoadDataFile_Click(Shell& shell);

// What was chosen goes into the buffer; numbers that the load has switched off are told.
Chosen load_chosen(Shell& shell, const std::string& path, FileBuffer& buffer);

// The file dialog of a buffer. Empty: cancelled, and nothing has changed.
std::string choose_file(Shell& shell, BufferKind kind);
// Makes the path the current one, shows it over the buffer and stores it for the next run.
void take_path(Shell& shell, BufferKind kind, const std::string& path);

// Takes `start` and `clear_first` from the controls. An empty text is 0; four digits from 8000 up come out negative,
// see load_base.
void read_load_parameters(Shell& shell, FileBuffer& buffer);

// HEX files in the field may lack their end record. Where nobody looks on, one is wanted: the file is whole then.
enum class EndRecord { may_lack, wanted };

// The whole load into one of the shell's buffers. Until the file has been read, the buffer holds what it held before,
// and it keeps that where the path is empty, the file cannot be read, is too large, changes meanwhile or brings no
// data, or the start address lies past the device; all but the empty path are told. False also if the user gave up on
// wrong checksums: the buffer is empty then.
bool load_file(Shell& shell, const std::string& path, FileBuffer& buffer, EndRecord end_record = EndRecord::may_lack);

// The code file that is open once more, before a download or after it has changed on disk; a number that is set is
// checked and stamped into the fresh image. False: it could not be brought in whole, or its number does not fit. The
// user has been told then, and the buffer is as it was. Nothing is loaded while a project is open.
bool reload_code_file(Shell& shell, EndRecord end_record = EndRecord::may_lack);

} // namespace vrk
