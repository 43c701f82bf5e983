// A recipe as the words of a command line, and the line that a shell reads them from.
#pragma once

#include "recipe/recipe.h"

#include <string>
#include <vector>

namespace vrk {

std::vector<std::string> flash_words(const Recipe& recipe); // "vrk", "flash", "blink.hex", "--port", ...

// One line for a shell: what a shell would read otherwise is put between quotes.
std::string shell_line(const std::vector<std::string>& words);

} // namespace vrk
