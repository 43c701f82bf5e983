#include "shell/ports.h"

#include "form/main_form.h"

#include "shell/arm_save.h"
#include "shell/messages.h"
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

// Those that a hand has named, and behind them the system's.
std::vector<PortInfo> all_ports(Shell& shell)
{
    std::vector<PortInfo> ports = shell.platform.ports.list();
    for (const std::string& path : shell.added_ports) {
        if (std::ranges::find(ports, path, &PortInfo::path) == ports.end())
            ports.insert(ports.begin(), {path, path, ""});
    }
    return ports;
}

} // namespace

void refresh_ports(Shell& shell)
{
    std::vector<std::string> paths;
    std::vector<std::string> captions;
    std::vector<std::string> notes;
    for (const PortInfo& port : all_ports(shell)) {
        paths.push_back(port.path);
        captions.push_back(port.caption);
        notes.push_back(port.description);
    }
    shell.form.combCommPort.set_notes(std::move(notes));
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

void add_port(Shell& shell, const std::string& path)
{
    if (std::ranges::find(shell.port_paths, path) == shell.port_paths.end())
        shell.added_ports.push_back(path);
    refresh_ports(shell);
    choose_port(shell, path);
}

void comOtherPort_Click(Shell& shell)
{
    constexpr Text title = {"选择串口", "Choose the serial port"};
    FileDialog dialog;
    dialog.title = in_language(shell, title);
    dialog.filter = "All Files (*.*)|*.*";
    dialog.initial_dir = "/dev";
    dialog.devices = true;
    const auto path = choose_path(shell, dialog);
    if (!path || path->empty())
        return;
    add_port(shell, *path);
    arm_save(shell);
}

const std::string& chosen_port(Shell& shell)
{
    const int item = shell.form.combCommPort.index_chosen();
    if (item != none)
        shell.chosen_port = shell.port_paths[static_cast<std::size_t>(item)];
    return shell.chosen_port;
}

} // namespace vrk
