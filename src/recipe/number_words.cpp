#include "recipe/number_words.h"

#include "catalog/near_names.h"
#include "platform/text_number.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

constexpr std::string_view systems[] = {"hex", "bcd", "ascii"}; // by AutoIncrease::System
constexpr std::string_view in_word = "in";
constexpr std::string_view code_word = "code";
constexpr std::string_view data_word = "eeprom";

struct Field {
    std::string_view word;
    std::optional<std::string> NumberWish::*value;
};
constexpr Field fields[] = {
    {"address", &NumberWish::address},
    {"bytes", &NumberWish::bytes},
    {"next", &NumberWish::next},
    {"step", &NumberWish::step},
    {"system", &NumberWish::system},
};

Line no_word(std::string_view word)
{
    const std::string wrong{word};
    Line line;
    line.zh = "编号中没有 '" + wrong + "'；可用的有: address, bytes, next, step, system, in";
    line.en = "a number has no '" + wrong + "'; there are: address, bytes, next, step, system, in";
    return line;
}

Line no_value(std::string_view word, std::string_view value, std::string_view wanted)
{
    const std::string wrong = std::string{word} + "=" + std::string{value};
    Line line;
    line.zh = "编号: '" + wrong + "' 不可用；应为 " + std::string{wanted};
    line.en = "number: '" + wrong + "' can not be; it takes " + std::string{wanted};
    return line;
}

} // namespace

std::string_view system_word(std::int16_t system)
{
    return system >= 0 && system < 3 ? systems[system] : systems[AutoIncrease::hex];
}

std::variant<NumberWish, Line> number_in_words(std::string_view words)
{
    NumberWish wish;
    while (!words.empty()) {
        const std::string_view part = words.substr(0, words.find(','));
        words.remove_prefix(std::min(words.size(), part.size() + 1));
        const std::size_t equals = part.find('=');
        const std::string_view word = part.substr(0, equals);
        const std::string_view value = equals == std::string_view::npos ? std::string_view{} : part.substr(equals + 1);
        const auto field = std::ranges::find(fields, word, &Field::word);
        if (field == std::end(fields) && word != in_word)
            return no_word(word);
        if (value.empty())
            return no_value(word, value, "a value");
        if (word == in_word) {
            if (value != code_word && value != data_word)
                return no_value(word, value, "code, eeprom");
            wish.kind = value == code_word ? BufferKind::code : BufferKind::data;
        } else {
            wish.*(field->value) = std::string{value};
        }
    }
    if (wish.system && std::ranges::find(systems, *wish.system) == std::end(systems))
        return no_value("system", *wish.system, "hex, bcd, ascii");
    return wish;
}

std::string words_of(const NumberWish& wish)
{
    std::string words;
    for (const Field& field : fields) {
        if (wish.*(field.value))
            words += std::string{words.empty() ? "" : ","} + std::string{field.word} + "=" + *(wish.*(field.value));
    }
    if (wish.kind == BufferKind::data)
        words += std::string{words.empty() ? "" : ","} + std::string{in_word} + "=" + std::string{data_word};
    return words;
}

std::optional<Line> take_wish(const NumberWish& wish, AutoIncrease& record)
{
    const std::string bytes = wish.bytes.value_or(std::to_string(record.bytes));
    const std::string step = wish.step.value_or(std::to_string(record.increment));
    if (const FieldFault fault = counts_fault(bytes, step); fault != FieldFault::none)
        return field_text(fault);
    if (wish.address && address_fault(*wish.address) != FieldFault::none)
        return field_text(address_fault(*wish.address));
    if (wish.address)
        record.address = hex_address_5(*wish.address);
    record.bytes = record_number(bytes);
    record.increment = record_number(step);
    if (wish.next)
        record.next_value = *wish.next;
    if (wish.system)
        record.system = static_cast<std::int16_t>(std::ranges::find(systems, *wish.system) - std::begin(systems));
    return std::nullopt;
}

} // namespace vrk
