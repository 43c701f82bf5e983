#include "bench/chip_process.h"

#include "bench/figures.h"

#include "catalog/ranges.h"
#include "rehearsal/chip_of_model.h"
#include "sim/chip.h"
#include "sim/posix_loop.h"
#include "sim/pty_target.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace bench {

namespace {

[[noreturn]] void serve(sim::ChipSetup setup, int tell_path)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setup.answers_at_once();
    setup.boot_window_us = 60'000'000;
    sim::PosixLoop loop;
    sim::Chip chip{setup};
    sim::PtyTarget target{loop, chip};
    if (!target.open())
        _exit(1);
    chip.power_up();
    const std::string& path = target.path();
    if (write(tell_path, path.data(), path.size()) != static_cast<ssize_t>(path.size()))
        _exit(1);
    close(tell_path);
    for (;;)
        loop.yield();
}

} // namespace

ChipProcess::ChipProcess(const char* model)
{
    vrk::McuTable table;
    vrk::load_mcu_tables(table, false);
    const auto setup = vrk::chip_setup_of(table, model);
    require(setup.has_value(), std::string{model} + " is not in the catalogue");
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0, "no pipe to be had");
    process_ = fork();
    require(process_ >= 0, "no process to be had");
    if (process_ == 0)
        serve(*setup, ends[1]);
    close(ends[1]);
    std::array<char, 128> path{};
    const ssize_t count = read(ends[0], path.data(), path.size());
    close(ends[0]);
    require(count > 0, "the chip found no pseudo terminal");
    path_.assign(path.data(), static_cast<std::size_t>(count));
}

ChipProcess::~ChipProcess()
{
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

} // namespace bench
