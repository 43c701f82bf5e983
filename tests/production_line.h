// What the hands at a production line do: they take up a number, and change the chips of a repeat.
#pragma once

#include "bench.h"

#include <functional>
#include <utility>

namespace vrk {

// Into the four bytes up to 0x0203, one more with each chip.
inline void take_up_number(Bench& bench, const char* next, int system = AutoIncrease::hex)
{
    const char* fields[] = {"203", "4", next, "1"};
    for (std::size_t field = 0; field < 4; ++field)
        type_text(bench.shell, bench.form.text_box("texAuto_Increase", field), fields[field]);
    choose_option(bench.shell, bench.form.option("optAuto_Increase", static_cast<std::size_t>(system)));
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
}

// Presses Re-Download with the first of so many chips in the socket. Each one that the tool has let go of is looked at
// and gives way to another, with something else in it; behind the last one the user stops.
inline void press_repeat(Bench& bench, int chips, std::function<void()> look)
{
    const auto change_chip = [&bench, look = std::move(look)](bool was_last) {
        look();
        bench.chip.power_off();
        if (was_last)
            return bench.press_stop_after_ms(5000);
        bench.wipe_chip();
        bench.power_up_after_ms(4000);
    };
    bench.chip.on_state_change.push_back([&bench, change_chip, chips_left = chips](sim::Chip::State state) mutable {
        if (state == sim::Chip::State::user_code)
            bench.after_ms(500, [change_chip, was_last = --chips_left <= 0] { change_chip(was_last); });
    });
    bench.press_download(1);
    bench.power_up_after_ms(300);
}

} // namespace vrk
