// A model by a name that a hand has typed outside of the window, where there is no tree to pick from; and what comes
// near any word that was typed.
#pragma once

#include "catalog/mcu_table.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// As the catalogue writes it, whatever letters the hand has written large. Nothing: there is no such model.
std::optional<std::string> model_named(const McuTable& table, std::string_view name);

// Up to five of the words that a hand may have meant, the likeliest first, and none twice.
std::vector<std::string> words_near(const std::vector<std::string>& words, std::string_view word);

// Up to five names that a hand may have meant, the likeliest first; none where nothing comes near.
std::vector<std::string> names_near(const McuTable& table, std::string_view name);

// "no model 'Junipr-60Q' in the catalogue; near it: Juniper-60Q, Juniper-60"
std::string unknown_model_text(const McuTable& table, std::string_view name);

} // namespace vrk
