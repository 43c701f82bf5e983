#include "vrk/recipe_options.h"

#include "command_line.h"

#include "recipe/number_words.h"

#include <string_view>

namespace vrk {

namespace {

std::string hexadecimal(const std::string& text)
{
    const bool good =
        !text.empty() && text.size() <= 6 && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
    return good ? std::string{} : "'" + text + "' is no hexadecimal address";
}

} // namespace

void describe_recipe(CLI::App& app, RecipeOptions& words)
{
    Recipe& recipe = words.recipe;
    app.add_option("FILE", recipe.file, "a code file (.hex, .bin), or a project (.vrk), which tells all but the port")
        ->required();
    app.add_option("--model", recipe.model, "the model of the chip: vrk models lists them")->type_name("MODEL");
    app.add_option("--eeprom", recipe.eeprom, "a file for the data flash")->type_name("FILE");
    app.add_option("--start", recipe.start, "where in the code FILE is put: 0 unless told")
        ->type_name("HEX")
        ->check(hexadecimal);
    app.add_option("--eeprom-start", recipe.eeprom_start, "where in the data flash its file is put: 0 unless told")
        ->type_name("HEX")
        ->check(hexadecimal);
    add_repeated(app, "--option", words.options, "an option of the chip: vrk options MODEL lists them")
        ->type_name("NAME=CHOICE");
    add_repeated(app, "--number", words.numbers,
        "a serial number: address=HEX,bytes=N,next=N[,step=N][,system=hex|bcd|ascii][,in=eeprom]; of a project next=N")
        ->type_name("FIELDS");
}

std::variant<Recipe, Line> recipe_of(const RecipeOptions& words)
{
    Recipe recipe = words.recipe;
    for (const std::string& word : words.options) {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos)
            return Line{"--option " + word + ": NAME=CHOICE"};
        recipe.options.push_back({word.substr(0, equals), word.substr(equals + 1)});
    }
    for (const std::string& word : words.numbers) {
        const auto number = number_in_words(word);
        if (const Line* wrong = std::get_if<Line>(&number))
            return *wrong;
        recipe.numbers.push_back(std::get<NumberWish>(number));
    }
    return recipe;
}

} // namespace vrk
