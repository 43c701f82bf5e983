#include "catalog/near_names.h"

#include "platform/text_number.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace vrk {

namespace {

constexpr std::size_t most_names = 5;

template <typename Act> void for_each_name(const McuTable& table, Act act)
{
    for (int series = 0; series < McuTable::page_count; ++series) {
        for (int row = 0; row < McuTable::row_count; ++row) {
            if (const std::string& name = table.cell(series, row, McuColumn::mcu_name); !name.empty())
                act(name);
        }
    }
}

// Letters to be put in, taken out or changed, to make one of the other.
std::size_t edits_between(std::string_view one, std::string_view other)
{
    std::vector<std::size_t> edits(other.size() + 1);
    std::iota(edits.begin(), edits.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t before = std::exchange(edits[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t changed = before + (one[i] == other[j] ? 0 : 1);
            before = edits[j + 1];
            edits[j + 1] = std::min({changed, before + 1, edits[j] + 1});
        }
    }
    return edits.back();
}

} // namespace

std::optional<std::string> model_named(const McuTable& table, std::string_view name)
{
    const std::string wanted = upper_case(trimmed(name));
    std::optional<std::string> found;
    for_each_name(table, [&](const std::string& one) {
        if (!found && upper_case(one) == wanted)
            found = one;
    });
    return found;
}

std::vector<std::string> words_near(const std::vector<std::string>& words, std::string_view word)
{
    const std::string wanted = upper_case(trimmed(word));
    const std::size_t most_edits = std::max<std::size_t>(2, wanted.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> all; // edits, word
    for (const std::string& one : words) {
        const std::size_t edits = edits_between(wanted, upper_case(one));
        if (edits <= most_edits)
            all.push_back({edits, one});
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end()); // a few names stand in two families
    std::vector<std::string> near;
    for (std::size_t i = 0; i < std::min(all.size(), most_names); ++i)
        near.push_back(all[i].second);
    return near;
}

std::vector<std::string> names_near(const McuTable& table, std::string_view name)
{
    std::vector<std::string> names;
    for_each_name(table, [&names](const std::string& one) { names.push_back(one); });
    return words_near(names, name);
}

std::string unknown_model_text(const McuTable& table, std::string_view name)
{
    std::string text = "no model '" + std::string{name} + "' in the catalogue";
    const char* before = "; near it: ";
    for (const std::string& near : names_near(table, name)) {
        text += before + near;
        before = ", ";
    }
    return text;
}

} // namespace vrk
