// The keys of a project file: which options it keeps, and how files of earlier days are read.
#pragma once

#include "image/project_format.h"

#include <span>
#include <string_view>
#include <vector>

namespace vrk {

// The options in the order of the file. A model has those of its option page.
std::span<const std::string_view> project_option_keys();

// The keys of a file from before versions were written, in its order, by option page of the model: the two layouts of
// that time. Empty for the later pages, whose files have the option keys of today.
std::span<const std::string_view> old_project_keys(int page);

// What counts of a project for a model with this option page, under the keys of today, in the order of the file. The
// model itself is not among it.
std::vector<ProjectValue> values_in_use(const Project& project, int page);

} // namespace vrk
