#include "shell/ports.h"

#include "form/main_form.h"

#include "shell/terminal_page.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vrk {

namespace {

constexpr int none = -1;

void show_choice(Shell& shell)
{
    const auto found = std::ranges::find(shell.port_paths, shell.chosen_port);
    shell.form.combCommPort.choose(
        found == shell.port_paths.end() ? none : static_cast<int>(found - shell.port_paths.begin()));
}

} // namespace

void refresh_ports(Shell& shell)
{
    std::vector<std::string> paths;
    std::vector<std::string> captions;
    for (const PortInfo& port : shell.platform.ports.list()) {
        paths.push_back(port.path);
        captions.push_back(port.caption);
    }
    if (captions == shell.form.combCommPort.items() && paths == shell.port_paths)
        return;
    const std::string chosen = chosen_port(shell);
    const std::vector<std::string> paths_before = std::exchange(shell.port_paths, std::move(paths));
    shell.form.combCommPort.set_items(std::move(captions));
    choose_port(shell, chosen);
    terminal_ports_Change(shell, paths_before);
}

void choose_port(Shell& shell, const std::string& path)
{
    shell.chosen_port = path.empty() && !shell.port_paths.empty() ? shell.port_paths.front() : path;
    show_choice(shell);
}

const std::string& chosen_port(Shell& shell)
{
    const int item = shell.form.combCommPort.index_chosen();
    if (item != none)
        shell.chosen_port = shell.port_paths[static_cast<std::size_t>(item)];
    return shell.chosen_port;
}

} // namespace vrk
