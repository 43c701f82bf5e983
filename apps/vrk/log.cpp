// vrk log: the record of every chip.
#include "vrk/books_refusal.h"
#include "vrk/json_line.h"
#include "vrk/subcommands.h"
#include "vrk/talk_options.h"

#include "ledger/sql_books.h"

#include <iostream>
#include <memory>
#include <string>

namespace vrk {

namespace {

struct LogOptions {
    TalkOptions talk; // its language and its manner alone
    std::string ledger;
    ChipFilter filter;
    std::string day;
    bool csv = false;
    bool hours = false;
};

// "2025-03-09" ends before this text and after every time of that day.
std::string end_of_day(const std::string& day) { return day + " 99"; }

ChipFilter filter_of(const LogOptions& options)
{
    ChipFilter filter = options.filter;
    if (!options.day.empty()) {
        filter.from = options.day;
        filter.to = end_of_day(options.day);
    }
    return filter;
}

void write_plain(const ChipRecord& record)
{
    const std::string number = record.number.empty() ? record.data_number : record.number;
    std::cout << record.at << "\t" << record.result << "\t" << record.model << "\t" << number << "\t"
              << record.factory_number << "\t" << record.station << "\t" << record.last_line << "\n";
}

int write_out()
{
    std::cout.flush();
    return std::cout ? status_good : status_different;
}

int list_hours(Books& books, const LogOptions& options)
{
    const auto hours = books.hours(filter_of(options));
    if (hours.fault)
        return refuse_books(*hours.fault, options.talk);
    for (const HourTotal& hour : hours.value) {
        if (options.talk.json)
            write_json_line(std::cout, {{"hour", hour.hour}, {"good", hour.good}, {"bad", hour.bad}});
        else
            std::cout << hour.hour << "\t" << hour.good << "\t" << hour.bad << "\n";
    }
    return write_out();
}

int list_chips(Books& books, const LogOptions& options)
{
    const auto chips = books.chips(filter_of(options));
    if (chips.fault)
        return refuse_books(*chips.fault, options.talk);
    if (options.csv)
        std::cout << csv_head() << "\r\n";
    for (const ChipRecord& record : chips.value) {
        if (options.csv)
            std::cout << csv_line(record) << "\r\n";
        else if (options.talk.json)
            std::cout << json_line(record) << "\n";
        else
            write_plain(record);
    }
    return write_out();
}

int list(const LogOptions& options)
{
    SqlBooks books(options.ledger);
    return options.hours ? list_hours(books, options) : list_chips(books, options);
}

} // namespace

Action describe_log(CLI::App& app)
{
    const auto options = std::make_shared<LogOptions>();
    const auto text = [&app](const char* name, std::string& value, const char* what, const char* type) {
        return app.add_option(name, value, what)->type_name(type);
    };
    text("--ledger", options->ledger, "a file or the address of a server: the user's own file", "ADDRESS");
    text("--day", options->day, "of one day", "YYYY-MM-DD");
    text("--from", options->filter.from, "not before", "\"YYYY-MM-DD hh:mm:ss\"");
    text("--to", options->filter.to, "before", "\"YYYY-MM-DD hh:mm:ss\"");
    text("--result", options->filter.result, "the word of a result; bad: all but good", "WORD");
    text("--model", options->filter.model, "of this model", "MODEL");
    text("--station", options->filter.station, "of this station", "NAME");
    text("--order", options->filter.order, "with a number of this order", "NAME");
    text("--number", options->filter.number, "with this number", "N");
    text("--factory-number", options->filter.factory_number, "of this very chip", "HEX");
    app.add_option("--last", options->filter.at_most, "the newest N alone")->type_name("N")->check(CLI::PositiveNumber);
    app.add_flag("--csv", options->csv, "all fields, parted by commas");
    app.add_flag("--hours", options->hours, "good and bad chips by hour");
    describe_manner(app, options->talk);
    return [options] { return list(*options); };
}

} // namespace vrk
