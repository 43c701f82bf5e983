// What vrk can do: a line a subcommand in the table of subcommands.cpp, a file each beside it.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <span>

namespace vrk {

// Runs what the words asked for; gives the status that the program ends with.
using Action = std::function<int()>;

struct Subcommand {
    const char* name;
    const char* what; // of it in one line
    Action (*describe)(CLI::App& app); // its words and what they do
};

std::span<const Subcommand> subcommands();

// Each one's routine describes its arguments and options on `app`.
Action describe_flash(CLI::App& app);
Action describe_line(CLI::App& app);
Action describe_check(CLI::App& app);
Action describe_models(CLI::App& app);
Action describe_options(CLI::App& app);
Action describe_ports(CLI::App& app);
Action describe_info(CLI::App& app);
Action describe_diff(CLI::App& app);
Action describe_log(CLI::App& app);
Action describe_numbers(CLI::App& app);
Action describe_completion(CLI::App& app);

// Statuses that are no result of a chip.
inline constexpr int status_good = 0;
inline constexpr int status_different = 1; // of diff; of the others: the output cannot be written
inline constexpr int status_bad_words = 2; // the command line cannot be understood

int refuse_words(const std::string& why); // says so on the standard error; gives status_bad_words

} // namespace vrk
