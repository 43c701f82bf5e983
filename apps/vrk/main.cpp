// vrk: the command line.
#include "vrk/subcommands.h"

#include "command_line.h"

#include <csignal>

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // the chip in hand is finished, whoever reads of it
    CLI::App app("programs 8051-compatible microcontrollers in the system, over a serial port", "vrk");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "tells all subcommands with their options");
    vrk::Action chosen;
    for (const vrk::Subcommand& one : vrk::subcommands()) {
        CLI::App& sub = *app.add_subcommand(one.name, one.what);
        sub.callback([&chosen, act = one.describe(sub)] { chosen = act; });
    }
    app.footer("status: 0 good, 130 stopped, 2 a command line that cannot be understood, 10 and up: how a chip ended;\n"
               "        docs/exit-codes.md tells each");
    if (const auto status = vrk::parse_command_line(app, argc, argv))
        return *status;
    return chosen();
}
