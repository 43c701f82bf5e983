// The seam: all that lies outside the program. Two houses stand behind it: host/ (Qt, real time, real ports) and
// sim/ (virtual time, a simulated wire). A program picks one implementation of each part.
#pragma once

#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/serial_port.h"
#include "platform/settings_store.h"

namespace vrk {

struct Platform {
    EventLoop& loop;
    PortDriver& ports;
    Dialogs& dialogs;
    SettingsStore& settings;
};

} // namespace vrk
