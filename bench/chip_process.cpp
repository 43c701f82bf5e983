#include "bench/chip_process.h"

#include "bench/figures.h"

#include "catalog/ranges.h"
#include "rehearsal/chip_of_model.h"
#include "sim/chip.h"
#include "sim/posix_loop.h"
#include "sim/pty_target.h"

namespace bench {

namespace {

sim::ChipSetup setup_of(const char* model)
{
    vrk::McuTable table;
    vrk::load_mcu_tables(table, false);
    auto setup = vrk::chip_setup_of(table, model);
    require(setup.has_value(), std::string{model} + " is not in the catalogue");
    setup->answers_at_once();
    setup->boot_window_us = 60'000'000;
    return *setup;
}

[[noreturn]] void serve(const sim::ChipSetup& setup, const PeerProcess::Tell& tell)
{
    sim::PosixLoop loop;
    sim::Chip chip{setup};
    sim::PtyTarget target{loop, chip};
    require(target.open(), "no pseudo terminal to be had");
    chip.power_up();
    tell(target.path());
    for (;;)
        loop.yield();
}

} // namespace

ChipProcess::ChipProcess(const char* model)
    : PeerProcess([setup = setup_of(model)](const Tell& tell) { serve(setup, tell); })
{
}

} // namespace bench
