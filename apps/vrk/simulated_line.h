// A line without a port: a simulated chip in virtual time, so that a run takes no time to speak of.
#pragma once

#include "rehearsal/chip_of_model.h"

#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"

#include <memory>

namespace vrk {

struct SimulatedLine {
    static constexpr const char* port_path = "simulated";

    SimulatedLine() { ports.add(port_path, wire); }

    // The first one, and each that takes its place: without power until it has been called for a moment.
    void put_chip_on(const McuRecord& model)
    {
        constexpr int hand_ms = 100;
        if (chip == nullptr) {
            chip = std::make_unique<sim::Chip>(sim::default_setup(chip_model_of(model)));
            wire.attach(*chip);
        }
        chip->power_off();
        chip->power_up_after_ms(hand_ms);
    }

    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    std::unique_ptr<sim::Chip> chip;
    sim::SimPortDriver ports{loop};
};

} // namespace vrk
