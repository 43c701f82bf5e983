// What the subcommands that talk to a chip have in common: the line, the language, how things are told.
#pragma once

#include "vrk/teller.h"

#include "session/session.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>

namespace vrk {

struct TalkOptions {
    std::string port;
    std::string language; // empty: the environment tells, else Chinese
    LineChoice line;
    bool simulate = false;
    bool json = false;
    bool quiet = false;
    bool yes = false;
};

void describe_talk(CLI::App& app, TalkOptions& options);
void describe_manner(CLI::App& app, TalkOptions& options); // language and JSON alone, for those that talk to no chip

bool speaks_english(const TalkOptions& options);
std::unique_ptr<Teller> make_teller(EventLoop& loop, const TalkOptions& options);

// What ends before there was a chip, told as a result. Gives the status.
int tell_refusal(Teller& teller, Result result, const Line& why);

} // namespace vrk
