// The ports of the system, and behind them one more that leads to a simulated chip in this process: so the whole tool
// can be tried with nothing plugged in.
#pragma once

#include "host/qt_ports.h"
#include "report/text.h"
#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/wire.h"

#include <memory>

namespace vrk {

inline constexpr Text simulated_target = {"模拟目标板", "Simulated target"};

class PortsWithTarget final : public PortDriver {
public:
    static constexpr const char* path = "Simulated target";

    // `caption` is what the user reads in the list.
    PortsWithTarget(EventLoop& loop, std::vector<std::string> in_front, std::string_view caption = path);

    std::vector<PortInfo> list() override;
    std::unique_ptr<SerialPort> make(const std::string& port) override;

    // Another chip takes the place of the one on the wire, without power.
    void put_in(const sim::ChipSetup& setup);
    sim::Chip& chip() { return *chip_; }

private:
    EventLoop& loop_;
    std::string caption_;
    QtPorts system_;
    sim::SimPortDriver simulated_;
    std::unique_ptr<sim::Chip> chip_;
    std::unique_ptr<sim::Wire> wire_;
};

} // namespace vrk
