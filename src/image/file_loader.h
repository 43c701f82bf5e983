// From a file on disk to a buffer: asks for the file, tells Intel HEX from binary, loads it, shows what came of it, and
// can do so again for the file that was open last.
#pragma once

#include "form/shell.h"
#include "image/buffers.h"
#include "image/load_result.h"

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

// The whole load. False: nothing was loaded, since the path is empty, the start address lies past the device, or the
// user gave up on wrong checksums. A file that cannot be read counts as an empty one.
bool load_file(Shell& shell, const std::string& path, FileBuffer& buffer);
LoadEnd detect_and_parse(Shell& shell, const std::string& path, FileBuffer& buffer);

// Makes the stored path of the code file the current one again. False, and the user is told, if the file is gone.
bool reload_last_path(Shell& shell);
// The code file once more, before a download or after it has changed on disk. If it is gone, the current file stands
// in. Nothing is loaded while a project is open.
void reload_code_file(Shell& shell);

} // namespace vrk
