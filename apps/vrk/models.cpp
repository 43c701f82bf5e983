// vrk models, vrk options: what the catalogue has, and what can be chosen of a model.
#include "vrk/json_line.h"
#include "vrk/subcommands.h"
#include "vrk/talk_options.h"

#include "catalog/near_names.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "options/option_sheet.h"
#include "platform/text_number.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

namespace vrk {

namespace {

struct ListOptions {
    std::string word; // a pattern, or a model
    TalkOptions talk; // its language and its manner alone
};

// "*" for any letters, "?" for one; a pattern without them is looked for anywhere in the name.
bool matches(std::string_view name, std::string_view pattern)
{
    if (pattern.empty())
        return name.empty();
    if (pattern.front() == '*')
        return matches(name, pattern.substr(1)) || (!name.empty() && matches(name.substr(1), pattern));
    return !name.empty() && (pattern.front() == '?' || pattern.front() == name.front()) &&
        matches(name.substr(1), pattern.substr(1));
}

bool is_wanted(const std::string& name, const std::string& pattern)
{
    const std::string upper = upper_case(pattern);
    const bool plain = upper.find_first_of("*?") == std::string::npos;
    return plain ? upper_case(name).find(upper) != std::string::npos : matches(upper_case(name), upper);
}

std::string kilobytes(std::int32_t bytes) { return bytes > 0 ? number_text(bytes / 1024.0) : "0"; }

void tell_model(const McuRecord& record, bool json)
{
    const std::int32_t code = record.ap_last - record.ap_first + 1;
    const std::int32_t data = std::max(0, record.eeprom_last - record.eeprom_first + 1);
    if (json) {
        write_json_line(std::cout,
            {{"model", record.mcu_name}, {"series", record.series}, {"id", record.mcu_id}, {"code_bytes", code},
                {"data_bytes", data}, {"options", !record.cap_no_option_write}});
    } else {
        std::cout << record.mcu_name << "\t" << kilobytes(code) << " KB code\t" << kilobytes(data) << " KB data\n";
    }
}

int list_models(const ListOptions& options)
{
    static McuTable table;
    load_mcu_tables(table, false);
    bool found = false;
    for (int series = 0; series < McuTable::page_count; ++series) {
        for (int row = 0; row < McuTable::row_count; ++row) {
            const std::string& name = table.cell(series, row, McuColumn::mcu_name);
            if (name.empty() || !is_wanted(name, options.word))
                continue;
            found = true;
            tell_model(read_mcu_row(table, series, row), options.talk.json);
        }
    }
    if (!found)
        return refuse_words(unknown_model_text(table, options.word));
    std::cout.flush();
    return std::cout ? status_good : status_different;
}

std::string choices_text(const OfferedOption& option)
{
    std::string text;
    for (const std::string& choice : option.choices)
        text += (text.empty() ? "" : "|") + choice;
    return text.empty() ? "N" : text;
}

int list_options(const ListOptions& options)
{
    static McuTable table;
    load_mcu_tables(table, false);
    const auto name = model_named(table, options.word);
    if (!name)
        return refuse_words(unknown_model_text(table, options.word));
    const auto found = locate_mcu_by_name(table, *name);
    const bool english = speaks_english(options.talk);
    const OptionSheet sheet(read_mcu_row(table, found->series, found->row), english);
    for (const OfferedOption& option : sheet.offered()) {
        if (options.talk.json)
            write_json_line(std::cout,
                {{"option", option.name}, {"choices", option.choices}, {"default", option.chosen},
                    {"label", in_language(english, option.label)}});
        else
            std::cout << option.name << "=" << option.chosen << "\t" << choices_text(option) << "\t"
                      << in_language(english, option.label) << "\n";
    }
    std::cout.flush();
    return std::cout ? status_good : status_different;
}

} // namespace

Action describe_models(CLI::App& app)
{
    const auto options = std::make_shared<ListOptions>();
    app.add_option("PATTERN", options->word, "part of a name; * and ? stand for any letters and for one");
    describe_manner(app, options->talk);
    return [options] { return list_models(*options); };
}

Action describe_options(CLI::App& app)
{
    const auto options = std::make_shared<ListOptions>();
    app.add_option("MODEL", options->word, "of the catalogue")->required();
    describe_manner(app, options->talk);
    return [options] { return list_options(*options); };
}

} // namespace vrk
