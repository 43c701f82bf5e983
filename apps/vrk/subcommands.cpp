#include "vrk/subcommands.h"

#include <iostream>

namespace vrk {

namespace {

// clang-format off
constexpr Subcommand table[] = {
    { "flash",      "programs chips with a file or a project",                        describe_flash },
    { "line",       "programs the chips of several fixtures at once",                 describe_line },
    { "check",      "reads firmware and options of the chip on the line",             describe_check },
    { "models",     "lists the models of the catalogue",                              describe_models },
    { "options",    "lists the options of a model, their choices and defaults",       describe_options },
    { "ports",      "lists the serial ports, and which can be opened",                describe_ports },
    { "info",       "tells what a file of code or data holds",                        describe_info },
    { "diff",       "compares two images or two projects",                            describe_diff },
    { "log",        "lists what the ledger knows of the chips that were programmed",  describe_log },
    { "numbers",    "lists the numbers of the ledger that are open, and settles one", describe_numbers },
    { "completion", "writes the completion of these words for bash",                  describe_completion },
};
// clang-format on

} // namespace

std::span<const Subcommand> subcommands() { return table; }

int refuse_words(const std::string& why)
{
    std::cerr << "vrk: " << why << std::endl;
    return status_bad_words;
}

} // namespace vrk
