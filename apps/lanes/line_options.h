// The words of a line on a command line: the same with a window and without.
#pragma once

#include "lanes/lane_process.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vrk::lanes {

struct LineOptions {
    std::string job;
    std::vector<std::string> ports;
    std::string language; // empty: the environment or the settings tell
    std::string station;
    std::string ledger; // an address; empty: the user's own
    std::string order;
    std::string number;
    std::string pause_s;
    CLI::Option* keeps_books = nullptr; // whether --ledger was told
};

void describe_line(CLI::App& app, LineOptions& options);

// What the lanes are told. Nothing: the job cannot be read, and it has been said. `folder`: where the programs are.
std::optional<LineTerms> terms_of(const LineOptions& options, bool english, const QString& folder);

QStringList ports_of(const LineOptions& options);

} // namespace vrk::lanes
