// The command line as all programs take it: --help and --version to standard output with status 0, a line that cannot
// be understood to standard error with status 2.
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vrk {

// `app`: its options and arguments. Gives the status that the program ends with at once; nothing: it goes on.
std::optional<int> parse_command_line(CLI::App& app, int argc, char** argv);

std::string version_line(const CLI::App& app); // "vrk-isp 1.0.0"

// An option that may be given more than once, with one value each time.
CLI::Option* add_repeated(
    CLI::App& app, const std::string& name, std::vector<std::string>& values, const std::string& description);

} // namespace vrk
