// vrk numbers: the numbers of the ledger that are in somebody's hands, and what becomes of one that is unsure.
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

struct NumbersOptions {
    TalkOptions talk; // its language and its manner alone
    std::string ledger;
    std::string order;
    std::string number;
    std::string state;
    bool all = false;
    bool of_eeprom = false;
};

void write_row(const NumberRow& row, bool json)
{
    const char* image = row.kind == BufferKind::code ? "code" : "eeprom";
    if (json)
        write_json_line(std::cout,
            {{"order", row.order}, {"image", image}, {"number", row.value}, {"state", word_of(row.state)},
                {"changed", row.changed}, {"station", row.station}});
    else
        std::cout << row.order << "\t" << image << "\t" << row.value << "\t" << word_of(row.state) << "\t"
                  << row.changed << "\t" << row.station << "\n";
}

int list(const NumbersOptions& options)
{
    SqlBooks books(options.ledger);
    const auto rows = books.numbers(options.order, options.all);
    if (rows.fault)
        return refuse_books(*rows.fault, options.talk);
    for (const NumberRow& row : rows.value)
        write_row(row, options.talk.json);
    std::cout.flush();
    return std::cout ? status_good : status_different;
}

int settle(const NumbersOptions& options)
{
    SqlBooks books(options.ledger);
    if (const auto fault = books.open()) // a station that was cut off may have told in a file how its chip ended
        return refuse_books(*fault, options.talk);
    const SettleWish wish{options.order, options.of_eeprom ? BufferKind::data : BufferKind::code, options.number,
        number_state(options.state).value_or(NumberState::spent)};
    const auto fault = books.settle(wish);
    return fault ? refuse_books(*fault, options.talk) : status_good;
}

} // namespace

Action describe_numbers(CLI::App& app)
{
    const auto options = std::make_shared<NumbersOptions>();
    app.require_subcommand(0, 1);
    app.add_option("--ledger", options->ledger, "a file or the address of a server: the user's own file")
        ->type_name("ADDRESS");
    app.add_flag("--all", options->all, "those that are spent or free, too");
    describe_manner(app, options->talk);
    CLI::App* settled = app.add_subcommand("settle", "somebody has looked at the chip of a number that is unsure");
    settled->add_option("ORDER", options->order, "that the number belongs to")->required();
    settled->add_option("NUMBER", options->number, "decimal")->required();
    settled->add_option("STATE", options->state, "spent: a good chip holds it; free: none does")
        ->required()
        ->check(CLI::IsMember({"spent", "free"}));
    settled->add_flag("--eeprom", options->of_eeprom, "the number of the EEPROM image");
    return [options, settled] { return settled->parsed() ? settle(*options) : list(*options); };
}

} // namespace vrk
