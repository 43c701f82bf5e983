// vrk flash: programs chips.
#include "vrk/flash_run.h"
#include "vrk/image_sum.h"
#include "vrk/place.h"
#include "vrk/recipe_options.h"
#include "vrk/subcommands.h"

#include "catalog/ranges.h"
#include "ledger/sql_books.h"
#include "recipe/prepare.h"

#include <algorithm>
#include <filesystem>
#include <memory>

namespace vrk {

namespace {

struct FlashOptions {
    TalkOptions talk;
    RecipeOptions recipe;
    FlashOrder order;
    std::string station;
    std::string ledger; // its address; empty: the user's own file
    bool keeps_books = false;
    std::string number_order; // that the numbers are drawn for; empty: the file's name
    int chips = 0; // of --repeat
};

RunBegin begin_of(const Batch& batch, const FlashOptions& options)
{
    const ImageSums sums = sums_of(batch);
    return {
        batch.line.port_path, batch.model.mcu_name, options.recipe.recipe.file, sums.code, sums.data, options.station};
}

LineWishes wishes_of(const Batch& batch, const FlashOptions& options)
{
    LineWishes wishes;
    wishes.record = options.keeps_books;
    wishes.numbers = options.keeps_books && (batch.code_number.valid || batch.data_number.valid);
    const std::filesystem::path file = std::filesystem::absolute(options.recipe.recipe.file).lexically_normal();
    wishes.order = options.number_order.empty() ? file.stem().string() : options.number_order;
    wishes.station = options.station;
    wishes.job = file.string();
    wishes.english = batch.english;
    return wishes;
}

int flash_at(Place& place, Teller& teller, const Recipe& wanted, const FlashOptions& options)
{
    Recipe recipe = wanted;
    recipe.line = options.talk.line;
    recipe.line.port_path = place.port_path;
    recipe.english = speaks_english(options.talk);
    recipe.numbers_are_kept = options.keeps_books;
    static McuTable catalogue;
    load_mcu_tables(catalogue, false);
    auto prepared = prepare(recipe, catalogue, teller);
    if (const Refusal* refused = std::get_if<Refusal>(&prepared)) {
        if (!refused->result)
            return refuse_words(refused->why.in(recipe.english));
        return tell_refusal(teller, *refused->result, refused->why);
    }
    Batch& batch = std::get<Batch>(prepared);
    teller.begin(begin_of(batch, options));
    SqlBooks books(options.ledger, options.station);
    FlashRun run(place.loop, place.port, catalogue, teller, &books, wishes_of(batch, options));
    run.on_chip_awaited = [&] { place.chip_awaited(batch.model); };
    place.on_interrupt([&run] { run.stop(); });
    return run.run(batch, options.order).exit_code;
}

int flash(const FlashOptions& options)
{
    if (options.keeps_books && options.talk.simulate && options.ledger.empty())
        return refuse_words("--ledger needs an ADDRESS with --simulate: simulated chips would use up real numbers");
    const auto recipe = recipe_of(options.recipe);
    if (const Line* wrong = std::get_if<Line>(&recipe))
        return refuse_words(wrong->in(speaks_english(options.talk)));
    return at_place(options.talk,
        [&](Place& place, Teller& teller) { return flash_at(place, teller, std::get<Recipe>(recipe), options); });
}

} // namespace

Action describe_flash(CLI::App& app)
{
    const auto options = std::make_shared<FlashOptions>();
    describe_recipe(app, options->recipe);
    describe_talk(app, options->talk);
    const auto* repeat = app.add_option("--repeat", options->chips, "chip after chip: N good ones, or until stopped")
                             ->type_name("[N]")
                             ->expected(0, 1)
                             ->check(CLI::Range(1, 1'000'000'000));
    app.add_flag("--keep-going", options->order.keep_going, "a bad chip does not end a repeat");
    app.add_option("--pause", options->order.pause_s, "seconds to change chips in a repeat: 5")
        ->type_name("N")
        ->check(CLI::Range(0, 3600));
    app.add_option("--wait", options->order.wait_s, "seconds for a chip to answer: as long as it takes unless told")
        ->type_name("N")
        ->check(CLI::Range(1, 1'000'000));
    app.add_option("--station", options->station, "the name of this station, for the records")->type_name("NAME");
    const auto* ledger = app.add_option("--ledger", options->ledger,
                                "each chip is recorded and its numbers are drawn there: a file or the address of a "
                                "server; the user's own")
                             ->type_name("[ADDRESS]")
                             ->expected(0, 1);
    app.add_option("--order", options->number_order, "the order that the numbers belong to: the file's name")
        ->type_name("NAME")
        ->needs(app.get_option("--ledger"));
    return [options, repeat, ledger] {
        options->keeps_books = ledger->count() > 0;
        options->order.chips = repeat->count() > 0 ? options->chips : 1;
        return flash(*options);
    };
}

} // namespace vrk
