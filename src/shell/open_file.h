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

// The file dialog of a buffer. Empty: cancelled, and nothing has changed.
std::string choose_file(Shell& shell, BufferKind kind);
// Makes the path the current one, shows it over the buffer and stores it for the next run.
void take_path(Shell& shell, BufferKind kind, const std::string& path);

// Takes `start` and `clear_first` from the controls. An empty text is 0; four digits from 8000 up come out negative,
// see load_base.
void read_load_parameters(Shell& shell, FileBuffer& buffer);

// The whole load into one of the shell's buffers. Until the file has been read, the buffer holds what it held before.
// False: the buffer holds no file, since the path is empty, the start address lies past the device (nothing has changed
// then), or the user gave up on wrong checksums or cleared the buffer meanwhile. A file that cannot be read counts as
// an empty one.
bool load_file(Shell& shell, const std::string& path, FileBuffer& buffer);

// Makes the stored path of the code file the current one again. False, and the user is told, if the file is gone.
bool reload_last_path(Shell& shell);
// The code file once more, before a download or after it has changed on disk. If it is gone, the current file stands
// in. Nothing is loaded while a project is open.
void reload_code_file(Shell& shell);

} // namespace vrk
