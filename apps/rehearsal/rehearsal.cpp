#include "rehearsal/rehearsal.h"

#include "shell/start_up.h"

namespace vrk {

Rehearsal::Rehearsal(const sim::ChipSetup& setup, SettingsStore* its_settings, bool english)
    : chip(setup)
    , shell(Platform{loop, ports, dialogs, its_settings != nullptr ? *its_settings : own_settings})
{
    wire.attach(chip);
    ports.add(port_path, wire);
    shell.language_is_english = english;
    start_up(shell);
}

} // namespace vrk
