#include "recipe/recipe_words.h"

#include "recipe/number_words.h"

#include "platform/text_number.h"

#include <string_view>

namespace vrk {

namespace {

constexpr std::string_view plain_characters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_=+.,:/@%";

std::string quoted(const std::string& word)
{
    if (!word.empty() && word.find_first_not_of(plain_characters) == std::string::npos)
        return word;
    std::string text = "'";
    for (const char c : word)
        text += c == '\'' ? std::string{"'\\''"} : std::string{c};
    return text + "'";
}

} // namespace

std::vector<std::string> flash_words(const Recipe& recipe)
{
    const LineChoice standard;
    std::vector<std::string> words{"vrk", "flash", recipe.file};
    const auto add = [&words](const char* option, const std::string& value) {
        words.insert(words.end(), {option, value});
    };
    if (!recipe.line.port_path.empty())
        add("--port", recipe.line.port_path);
    if (!recipe.model.empty())
        add("--model", recipe.model);
    if (!recipe.eeprom.empty())
        add("--eeprom", recipe.eeprom);
    if (signed_hex_number(recipe.start) != 0)
        add("--start", recipe.start);
    if (signed_hex_number(recipe.eeprom_start) != 0)
        add("--eeprom-start", recipe.eeprom_start);
    for (const OptionWish& wish : recipe.options)
        add("--option", wish.name + "=" + wish.choice);
    for (const NumberWish& wish : recipe.numbers)
        add("--number", words_of(wish));
    if (recipe.line.max_baud != standard.max_baud)
        add("--max-baud", std::to_string(recipe.line.max_baud));
    if (recipe.line.contact_baud != standard.contact_baud)
        add("--contact-baud", std::to_string(recipe.line.contact_baud));
    if (recipe.line.fixed_115200)
        words.emplace_back("--fixed-115200");
    add("--language", recipe.english ? "en" : "zh");
    return words;
}

std::string shell_line(const std::vector<std::string>& words)
{
    std::string line;
    for (const std::string& word : words)
        line += (line.empty() ? "" : " ") + quoted(word);
    return line;
}

} // namespace vrk
