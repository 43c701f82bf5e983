// The words of a recipe on a command line.
#pragma once

#include "recipe/recipe.h"
#include "report/text.h"

#include <CLI/CLI.hpp>

#include <string>
#include <variant>
#include <vector>

namespace vrk {

struct RecipeOptions {
    Recipe recipe;
    std::vector<std::string> options; // NAME=CHOICE
    std::vector<std::string> numbers;
};

void describe_recipe(CLI::App& app, RecipeOptions& words);
std::variant<Recipe, Line> recipe_of(const RecipeOptions& words); // a Line: which word is wrong

} // namespace vrk
