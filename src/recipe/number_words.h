// A serial number in words: "address=1FF0,bytes=4,next=0001000,step=1,system=hex,in=eeprom".
#pragma once

#include "recipe/recipe.h"

#include "image/auto_increase.h"
#include "report/text.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vrk {

std::variant<NumberWish, Line> number_in_words(std::string_view words); // a Line: which word is none, and what there is
std::string words_of(const NumberWish& wish);

// What is wished into a record; what is not wished stays. A Line: a field is no number of its kind.
std::optional<Line> take_wish(const NumberWish& wish, AutoIncrease& record);

std::string_view system_word(std::int16_t system); // "hex", "bcd", "ascii"

} // namespace vrk
