#include "sim/sim_port.h"

#include <algorithm>

namespace sim {

SimPortDriver::~SimPortDriver()
{
    if (call_ != 0)
        loop_->cancel(call_);
}

SimPortDriver::Device* SimPortDriver::find(const std::string& path)
{
    const auto found =
        std::find_if(devices_.begin(), devices_.end(), [&path](const Device& d) { return d.info.path == path; });
    return found == devices_.end() ? nullptr : &*found;
}

void SimPortDriver::add(const std::string& path, Wire& wire, const std::string& caption, const std::string& description)
{
    devices_.push_back({{path, caption.empty() ? path : caption, description}, &wire, 0, {}, nullptr});
    tell_list_changed();
}

void SimPortDriver::remove(const std::string& path)
{
    Device* device = find(path);
    if (device == nullptr)
        return;
    if (device->opened_by != nullptr)
        device->opened_by->pulled_out();
    devices_.erase(devices_.begin() + (device - devices_.data()));
    tell_list_changed();
}

void SimPortDriver::refuse_open(const std::string& path, int times, const vrk::PortRefusal& why)
{
    Device* device = find(path);
    if (device == nullptr)
        return;
    device->refusals = times;
    device->why = why;
}

std::vector<vrk::PortInfo> SimPortDriver::list()
{
    std::vector<vrk::PortInfo> infos;
    if (failed(PortCall::list))
        return infos;
    for (const Device& device : devices_)
        infos.push_back(device.info);
    return infos;
}

std::unique_ptr<vrk::SerialPort> SimPortDriver::make(const std::string& path)
{
    return std::make_unique<SimPort>(*this, *loop_, path);
}

void SimPortDriver::tell_list_changed()
{
    if (call_ != 0)
        return;
    call_ = loop_->call_at(loop_->now_us(), [this] {
        call_ = 0;
        if (on_list_changed)
            on_list_changed();
    });
}

SimPort::~SimPort() { close(); }

vrk::PortRefusal SimPort::refusal() const
{
    const SimPortDriver::Device* device = driver_->find(path_);
    return device != nullptr ? device->why : vrk::PortRefusal{};
}

bool SimPort::open(const vrk::LineSettings& line)
{
    close();
    SimPortDriver::Device* device = driver_->find(path_);
    gone_ = device == nullptr;
    if (device == nullptr || device->opened_by != nullptr || line.baud <= 0 || driver_->failed(PortCall::open))
        return false;
    if (device->refusals > 0) {
        --device->refusals;
        return false;
    }
    device->opened_by = this;
    wire_ = device->wire;
    line_ = line;
    wire_->on_tool_bytes = [this](std::span<const std::uint8_t> bytes) { arrived(bytes); };
    wire_->tool_open(line);
    return true;
}

void SimPort::close() { let_go(driver_->closing); }

void SimPort::pulled_out()
{
    gone_ = true;
    let_go(Wire::Closing::drops);
}

void SimPort::let_go(Wire::Closing closing)
{
    if (call_ != 0)
        loop_->cancel(call_);
    call_ = 0;
    input_.clear();
    if (wire_ == nullptr)
        return;
    Wire* wire = wire_;
    wire_ = nullptr;
    wire->on_tool_bytes = nullptr;
    wire->tool_close(closing);
    if (SimPortDriver::Device* device = driver_->find(path_))
        device->opened_by = nullptr;
}

bool SimPort::set_line(const vrk::LineSettings& line)
{
    if (wire_ == nullptr || line.baud <= 0 || driver_->failed(PortCall::set_line))
        return false;
    if (line != line_)
        wire_->tool_set_line(line);
    line_ = line;
    return true;
}

void SimPort::arrived(std::span<const std::uint8_t> bytes)
{
    input_.insert(input_.end(), bytes.begin(), bytes.end());
    if (call_ != 0)
        return;
    call_ = loop_->call_at(loop_->now_us(), [this] {
        call_ = 0;
        if (on_receive) {
            const auto event = on_receive; // a copy: the event may close, reopen or replace it
            event();
        }
    });
}

std::size_t SimPort::bytes_available() const
{
    if (wire_ != nullptr)
        wire_->catch_up();
    return input_.size();
}

std::size_t SimPort::read(std::span<std::uint8_t> into)
{
    if (driver_->failed(PortCall::read))
        return 0;
    const std::size_t count = std::min(into.size(), bytes_available());
    std::copy_n(input_.begin(), count, into.begin());
    input_.erase(input_.begin(), input_.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
}

std::size_t SimPort::bytes_to_write() const { return wire_ != nullptr ? wire_->tool_unsent() : 0; }

void SimPort::write(std::span<const std::uint8_t> bytes)
{
    if (wire_ != nullptr && !driver_->failed(PortCall::write))
        wire_->tool_write(bytes);
}

void SimPort::discard()
{
    if (wire_ != nullptr) {
        wire_->catch_up();
        wire_->tool_discard_output();
    }
    input_.clear();
}

} // namespace sim
