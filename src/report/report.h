// What an engine tells while it works, and the few things that it asks. The engine prints nothing and draws nothing;
// each front end - the window's shell, a test, a command line - shows the same events in its own way.
#pragma once

#include "report/text.h"

#include <cstdint>

namespace vrk {

struct ChipStatus; // options/chip_status.h

// Boxes that the user has to answer. Both return when he has; events are served meanwhile.
struct Boxes {
    virtual ~Boxes() = default;
    virtual void show_box(const Line& text, const Line& title = {}) = 0; // no title: the program's name
    virtual bool ask(const Line& question, const Line& title = {}) = 0; // true: yes. The default is no
};

// The chapters of one chip, in their order.
enum class Stage {
    calling, // a new talk begins: what was said of the chip before can go
    found, // the target has answered; from here on it is being worked on
    writing, // the progress bar belongs to this stage
    settling, // all is written, and the chip puts its last block away
    options,
};

// How far the write stage has come: addresses, inclusive. written_to lies below first until a block is in the chip.
// Steps of the tool's own before it have no size to tell.
struct Progress {
    enum class Unit { byte, step };

    std::int32_t first = 0;
    std::int32_t last = 0;
    std::int32_t written_to = -1;
    Unit unit = Unit::byte;
    std::int32_t before = 0; // of the same job in front of this range, in the same unit
    std::int32_t behind = 0; // and after it
};

struct Report : Boxes {
    virtual void say(const Line& line) = 0; // a line of the report
    virtual void beep(int times) = 0; // 150 ms apart; returns when the last one has sounded
    virtual void enter(Stage stage) = 0;
    virtual void progress(const Progress& progress) = 0;
    virtual void port_is_open(bool open) = 0; // for the lamp
    virtual void options_read(const ChipStatus& status) = 0; // firmware and options of the chip, as decoded
    // The chip is known, fits the job, and is erased next. False: it stays as it is, and it has been said why.
    virtual bool may_erase() { return true; }
};

} // namespace vrk
