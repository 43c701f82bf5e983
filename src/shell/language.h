// Which of its two languages the program speaks: chosen in the menu, stored, and in force from the next start on.
#pragma once

#include "shell/shell.h"

#include <optional>
#include <string_view>

namespace vrk {

// In the environment: the language of one run, which is not stored.
inline constexpr const char* language_variable = "VRK_ISP_LANGUAGE";

std::optional<bool> is_english(std::string_view word); // "zh", "en" in any case; nothing: no language of ours

// A word for this run goes before the stored one; a word of neither language counts as none. Chinese where nothing is
// stored.
bool starts_in_english(SettingsStore& settings, std::string_view for_this_run);

void show_language_choice(Shell& shell); // the menu: what is stored, whatever this run speaks
void mnuLanguage_Click(Shell& shell);

} // namespace vrk
