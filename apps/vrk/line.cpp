// vrk line: the lanes of vrk-line without its window.
#include "lanes/headless.h"
#include "lanes/line_options.h"
#include "vrk/subcommands.h"
#include "vrk/talk_options.h"

#include <QCoreApplication>

#include <memory>

namespace vrk {

namespace {

int run_line(const lanes::LineOptions& options)
{
    if (options.ports.empty())
        return refuse_words("--port is wanted, once for each lane");
    std::string name = "vrk";
    char* argv[] = {name.data(), nullptr};
    int argc = 1;
    QCoreApplication application(argc, argv);
    TalkOptions talk;
    talk.language = options.language;
    const auto terms = lanes::terms_of(options, speaks_english(talk), QCoreApplication::applicationDirPath());
    return terms ? lanes::run_headless(*terms, lanes::ports_of(options)) : status_bad_words;
}

} // namespace

Action describe_line(CLI::App& app)
{
    const auto options = std::make_shared<lanes::LineOptions>();
    lanes::describe_line(app, *options);
    return [options] { return run_line(*options); };
}

} // namespace vrk
