#include "vrk/talk_options.h"

#include "vrk/json_teller.h"
#include "vrk/plain_teller.h"

#include "session/line_items.h"
#include "shell/about.h"
#include "shell/language.h"

#include <cstdlib>
#include <iostream>
#include <set>
#include <span>
#include <unistd.h>

namespace vrk {

namespace {

std::set<std::int32_t> set_of(std::span<const std::int32_t> bauds) { return {bauds.begin(), bauds.end()}; }

void add_language(CLI::App& app, TalkOptions& options, const char* what)
{
    app.add_option("--language", options.language, what)->type_name("WORD")->check(CLI::IsMember({"zh", "en"}));
}

} // namespace

void describe_talk(CLI::App& app, TalkOptions& options)
{
    app.add_option("--port", options.port, "the serial port: a path, a name under by-id, an adapter's serial number")
        ->type_name("PORT");
    app.add_flag("--simulate", options.simulate, "no port: a simulated chip of the model");
    app.add_option("--max-baud", options.line.max_baud, "highest baud that the chip may be written at: 115200")
        ->type_name("N")
        ->check(CLI::IsMember(set_of(max_bauds)));
    app.add_option("--contact-baud", options.line.contact_baud, "baud at which the chip is called: 2400")
        ->type_name("N")
        ->check(CLI::IsMember(set_of(contact_bauds)));
    app.add_flag("--fixed-115200", options.line.fixed_115200, "called at 115200 and left there");
    add_language(app, options, "zh or en; also which edition's options a model has");
    auto* json = app.add_flag("--json", options.json, "tells the run as JSON, an object a line (docs/json.md)");
    app.add_flag("--quiet", options.quiet, "tells nothing but what went wrong")->excludes(json);
    app.add_flag("--yes", options.yes, "answers what is asked with yes; no unless told");
}

void describe_manner(CLI::App& app, TalkOptions& options)
{
    add_language(app, options, "zh or en");
    app.add_flag("--json", options.json, "as JSON, an object a line");
}

bool speaks_english(const TalkOptions& options)
{
    const char* environment = std::getenv(language_variable);
    const std::string word = options.language.empty() && environment != nullptr ? environment : options.language;
    return is_english(word).value_or(false);
}

std::unique_ptr<Teller> make_teller(EventLoop& loop, const TalkOptions& options)
{
    const bool english = speaks_english(options);
    if (options.json)
        return std::make_unique<JsonTeller>(
            loop, english, options.yes, std::cout, "vrk " + std::string{program_version()});
    using enum PlainTeller::Manner;
    const PlainTeller::Manner manner = options.quiet ? quiet : isatty(STDOUT_FILENO) != 0 ? drawn : lines;
    return std::make_unique<PlainTeller>(loop, english, options.yes, std::cout, manner);
}

int tell_refusal(Teller& teller, Result result, const Line& why)
{
    if (!why.en.empty())
        teller.say(why.as(Tone::bad));
    ChipEnd none;
    none.result = result;
    const RunEnd end{class_of(result).exit_code, 0, 0};
    teller.end_of_chip(none, end);
    teller.end(end);
    return end.exit_code;
}

} // namespace vrk
