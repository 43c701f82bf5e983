// Project files on the disk: where they lie, and how one is read.
#pragma once

#include "shell/loader_state.h"

#include <optional>
#include <string>
#include <string_view>

namespace vrk {

// VRK_Project beside the program where one can write there, else with the user's documents. Does not make it. Empty:
// the program has told neither place.
std::string project_folder(const LoaderState& places);
void make_folder(const std::string& folder); // where it is missing; one that cannot be made shows at the first save

// Nothing: there is no such file, or it cannot be read. Of one that is far too long for a project only the beginning.
std::optional<std::string> read_project_file(const std::string& path);

} // namespace vrk
