#include "isp/ports_with_target.h"

namespace vrk {

PortsWithTarget::PortsWithTarget(EventLoop& loop, std::vector<std::string> in_front, std::string_view caption)
    : loop_(loop)
    , caption_(caption)
    , system_(std::move(in_front))
    , simulated_(loop)
{
    system_.on_list_changed = [this] {
        if (on_list_changed)
            on_list_changed();
    };
}

std::vector<PortInfo> PortsWithTarget::list()
{
    std::vector<PortInfo> ports = system_.list();
    ports.push_back({path, caption_, ""});
    return ports;
}

std::unique_ptr<SerialPort> PortsWithTarget::make(const std::string& port)
{
    return port == path ? simulated_.make(port) : system_.make(port);
}

void PortsWithTarget::put_in(const sim::ChipSetup& setup)
{
    simulated_.remove(path);
    wire_ = nullptr; // before the chip that it leads to
    chip_ = std::make_unique<sim::Chip>(setup);
    wire_ = std::make_unique<sim::Wire>(loop_, sim::Wire::Waking::each_run);
    wire_->attach(*chip_);
    simulated_.add(path, *wire_);
}

} // namespace vrk
