// The simulated serial ports: paths that lead to wires.
#pragma once

#include "platform/event_loop.h"
#include "platform/serial_port.h"
#include "sim/wire.h"

#include <functional>
#include <string>
#include <vector>

namespace sim {

class SimPort;

enum class PortCall { list, open, set_line, read, write };

class SimPortDriver final : public vrk::PortDriver {
public:
    explicit SimPortDriver(vrk::EventLoop& loop)
        : loop_(&loop)
    {
    }
    ~SimPortDriver() override;

    // A device appears. The wire must outlive it.
    void add(const std::string& path, Wire& wire, const std::string& caption = {}, const std::string& description = {});
    // It vanishes, also from under an open port: that reads closed from then on and loses what is written to it.
    void remove(const std::string& path);
    // The next `times` openings fail, as when another program has the port.
    void refuse_open(const std::string& path, int times = 1, const vrk::PortRefusal& why = {});
    // Asked at each call that a driver can refuse; true: this one fails. A list is empty then, a read brings nothing
    // and leaves what waits, and what was to be written is lost.
    std::function<bool(PortCall)> fails;
    // How ports close; see Wire::Closing. A Linux tty drains.
    Wire::Closing closing = Wire::Closing::drains;

    std::vector<vrk::PortInfo> list() override;
    std::unique_ptr<vrk::SerialPort> make(const std::string& path) override; // an unknown path makes a port too

private:
    friend class SimPort;
    struct Device {
        vrk::PortInfo info;
        Wire* wire;
        int refusals;
        vrk::PortRefusal why;
        SimPort* opened_by;
    };
    Device* find(const std::string& path);
    bool failed(PortCall call) const { return fails && fails(call); }
    void tell_list_changed();

    vrk::EventLoop* loop_;
    std::vector<Device> devices_;
    vrk::EventLoop::CallId call_ = 0;
};

// Bytes that arrive while the port is closed are lost. on_receive runs in a task of its own, once for each batch that
// arrives, whether or not earlier bytes have been read. The driver outlives its ports.
class SimPort final : public vrk::SerialPort {
public:
    SimPort(SimPortDriver& driver, vrk::EventLoop& loop, std::string path)
        : driver_(&driver)
        , loop_(&loop)
        , path_(std::move(path))
    {
    }
    ~SimPort() override;

    bool open(const vrk::LineSettings& line) override;
    void close() override;
    bool is_open() const override { return wire_ != nullptr; }
    bool gone() const override { return gone_; }
    vrk::PortRefusal refusal() const override;
    bool set_line(const vrk::LineSettings& line) override;
    std::size_t bytes_available() const override;
    std::size_t read(std::span<std::uint8_t> into) override;
    std::size_t bytes_to_write() const override;
    void write(std::span<const std::uint8_t> bytes) override;
    void discard() override;

private:
    friend class SimPortDriver;
    void arrived(std::span<const std::uint8_t> bytes);
    void pulled_out();
    void let_go(Wire::Closing closing);

    SimPortDriver* driver_;
    vrk::EventLoop* loop_;
    std::string path_;
    Wire* wire_ = nullptr; // while open
    bool gone_ = false;
    vrk::LineSettings line_;
    std::vector<std::uint8_t> input_;
    vrk::EventLoop::CallId call_ = 0; // the on_receive to come
};

} // namespace sim
