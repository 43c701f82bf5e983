#include "command_line.h"

#include "shell/about.h"

#include <iostream>

namespace vrk {

std::string version_line(const CLI::App& app) { return app.get_name() + " " + std::string{program_version()}; }

std::optional<int> parse_command_line(CLI::App& app, int argc, char** argv)
{
    constexpr int bad_command_line = 2;
    if (app.get_option_no_throw("--version") == nullptr)
        app.set_version_flag("--version", version_line(app), "tells which version this is");
    app.get_formatter()->column_width(28);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        const bool told = app.exit(end, std::cout, std::cerr) == 0;
        std::cout.flush();
        if (!told)
            return bad_command_line;
        return std::cout ? 0 : 1;
    }
    return std::nullopt;
}

CLI::Option* add_repeated(
    CLI::App& app, const std::string& name, std::vector<std::string>& values, const std::string& description)
{
    return app.add_option(name, values, description)->allow_extra_args(false);
}

} // namespace vrk
