// vrk check: what the chip on the line tells of itself.
#include "vrk/place.h"
#include "vrk/subcommands.h"

#include "catalog/near_names.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "link/sequencer.h"

#include <memory>

namespace vrk {

namespace {

struct CheckOptions {
    TalkOptions talk;
    std::string model;
};

int check_at(Place& place, Teller& teller, const McuTable& catalogue, const McuRecord& model, const TalkOptions& talk)
{
    Job job;
    job.model = model;
    job.model_name = model.mcu_name;
    job.english = speaks_english(talk);
    job.line = talk.line;
    job.line.port_path = place.port_path;
    teller.begin_chip(1);
    place.chip_awaited(model);
    ChipEnd end;
    end.index = 1;
    {
        Session session(place.loop, place.port, catalogue, job.model, job.line);
        place.on_interrupt([&session] { session.stop_requested = true; });
        end.result = read_one_chip(session, job, teller);
        place.on_interrupt([] {});
        end.take_facts(session);
    }
    place.port.close();
    end.seconds = teller.seconds();
    const bool good = end.result == Result::good;
    const bool bad = !good && end.result != Result::stopped && teller.answered();
    const RunEnd run{class_of(end.result).exit_code, good ? 1 : 0, bad ? 1 : 0};
    teller.end_of_chip(end, run);
    teller.end(run);
    return run.exit_code;
}

int check(const CheckOptions& options)
{
    static McuTable catalogue;
    load_mcu_tables(catalogue, false);
    const auto name = model_named(catalogue, options.model);
    if (!name)
        return refuse_words(unknown_model_text(catalogue, options.model));
    const auto found = locate_mcu_by_name(catalogue, *name);
    const McuRecord model = read_mcu_row(catalogue, found->series, found->row);
    return at_place(options.talk,
        [&](Place& place, Teller& teller) { return check_at(place, teller, catalogue, model, options.talk); });
}

} // namespace

Action describe_check(CLI::App& app)
{
    const auto options = std::make_shared<CheckOptions>();
    app.add_option("--model", options->model, "the model that is called; the chip tells which it is")
        ->type_name("MODEL")
        ->required();
    describe_talk(app, options->talk);
    return [options] { return check(*options); };
}

} // namespace vrk
