// Project files on the disk: where they lie.
#pragma once

#include "shell/loader_state.h"

#include <string>

namespace vrk {

// VRK_Project beside the program where one can write there, else with the user's documents. Does not make it. Empty:
// the program has told neither place.
std::string project_folder(const LoaderState& places);
void make_folder(const std::string& folder); // where it is missing; one that cannot be made shows at the first save

} // namespace vrk
