// Chip after chip from one batch: what surrounds each, as the window does it for its repeat.
#pragma once

#include "vrk/teller.h"

#include "bookkeeping/chip_in_books.h"
#include "catalog/mcu_table.h"
#include "platform/port.h"
#include "recipe/batch.h"
#include "session/session.h"

#include <functional>
#include <utility>

namespace vrk {

struct FlashOrder {
    int chips = 1; // good ones; 0: until somebody stops it
    bool keep_going = false; // a bad chip does not end it
    int pause_s = 5; // to change chips
    int wait_s = 0; // for a chip to answer; 0: as long as it takes
};

class FlashRun {
public:
    // What it is given outlives it. The books may be none where nothing is wished of them.
    FlashRun(EventLoop& loop, Port& port, const McuTable& catalogue, Teller& teller, Books* books = nullptr,
        LineWishes wishes = {})
        : loop_(loop)
        , port_(port)
        , catalogue_(catalogue)
        , teller_(teller)
        , books_(books)
        , wishes_(std::move(wishes))
    {
    }

    std::function<void()> on_chip_awaited; // before each is called

    RunEnd run(Batch& batch, const FlashOrder& order);
    // As the stop button: the talk ends at once, and no further chip is called. From inside a yield.
    void stop();

private:
    ChipEnd flash_chip(Batch& batch, const FlashOrder& order, bool last);
    Result talk(const Job& job, const FlashOrder& order, ChipEnd& end, Batch& batch, ChipInBooks& report, bool last);
    void pause(int seconds);

    EventLoop& loop_;
    Port& port_;
    const McuTable& catalogue_;
    Teller& teller_;
    Books* books_;
    LineWishes wishes_;
    Session* session_ = nullptr; // while one goes on
    bool stop_requested_ = false;
    bool number_for_next_ = true;
    RunEnd so_far_;
};

} // namespace vrk
