// A whole bench in one process: the program's main object, a virtual clock, a simulated wire and one simulated chip.
#pragma once

#include "form/named_controls.h"
#include "platform/scripted_dialogs.h"
#include "shell/shell.h"
#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"

namespace vrk {

struct Rehearsal {
    static constexpr const char* port_path = "simulated";

    // The chip is wired up and has no power. The settings are those given, or forgotten at the end.
    explicit Rehearsal(const sim::ChipSetup& setup, SettingsStore* its_settings = nullptr, bool english = false);

    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::Chip chip;
    sim::SimPortDriver ports{loop};
    ScriptedDialogs dialogs;
    MemoryStore own_settings;
    Shell shell;
    const NamedControls form{shell.controls};
};

} // namespace vrk
