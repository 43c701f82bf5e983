// The program on the Qt host without a window: a main object, real time, ports as it is given them.
#pragma once

#include "catalog/rows.h"
#include "form/named_controls.h"
#include "host/qt_loop.h"
#include "host/qt_ports.h"
#include "platform/scripted_dialogs.h"
#include "shell/device.h"
#include "shell/shell.h"
#include "shell/start_up.h"

namespace bench {

struct QtBench {
    vrk::QtLoop loop;
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell;
    const vrk::NamedControls form{shell.controls};

    // The first port of the driver's list is the one in use.
    QtBench(vrk::PortDriver& ports, const char* model)
        : shell({loop, ports, dialogs, settings})
    {
        shell.language_is_english = true;
        vrk::start_up(shell);
        form.text_box("txtDevice").set_text(model);
        vrk::apply_selected_device(shell);
        form.list("combCommPort").choose(0);
    }
};

} // namespace bench
