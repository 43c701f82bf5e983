// From a recipe to a batch: the files are read, the words looked up, the numbers put into their images. What a window
// would ask and tell on this way goes to the boxes.
#pragma once

#include "recipe/batch.h"
#include "recipe/recipe.h"

#include "catalog/mcu_table.h"
#include "report/report.h"
#include "session/result.h"

#include <optional>
#include <variant>

namespace vrk {

struct Refusal {
    std::optional<Result> result; // nothing: the recipe's own words are wrong
    Line why; // empty: it has been told in a box
};

std::variant<Batch, Refusal> prepare(const Recipe& recipe, const McuTable& catalogue, Boxes& boxes);

} // namespace vrk
