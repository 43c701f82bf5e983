// The one serial port that link, board, terminal and monitor take in turn: a driver's port with the line that it is to
// have. Each of them opens it, is told of what comes in, and closes it.
#pragma once

#include "platform/serial_port.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vrk {

std::string line_text(const LineSettings& line); // "9600,n,8,1": baud, letter of the parity, data bits, stop bits

class Port {
public:
    static constexpr std::size_t all = static_cast<std::size_t>(-1);

    explicit Port(PortDriver& driver)
        : driver_(&driver)
    {
    }

    std::string path; // the device that open takes; one that is open stays with its own until it is closed

    // Of the next opening, or from the next byte on. False: no baud, or the open port refused it; what was in force
    // stays.
    bool set_line(const LineSettings& line);
    const LineSettings& line() const { return line_; }

    bool open(); // false: no such port, or the driver refused; an open port is closed first
    void close();
    bool is_open() const { return port_ != nullptr && port_->is_open(); }
    bool gone() const { return port_ != nullptr && port_->gone(); } // see SerialPort

    std::size_t waiting() const { return is_open() ? port_->bytes_available() : 0; } // bytes that have come
    std::size_t queued() const { return is_open() ? port_->bytes_to_write() : 0; } // bytes that are still to go
    void drop(); // what has come and what is still to go

    std::span<const std::uint8_t> take(std::size_t at_most = all); // of what waits. The view holds until the next call
    bool send(std::span<const std::uint8_t> bytes); // queues them in one piece. On a closed port they are lost: false

    void set_outputs(bool dtr, bool rts); // of the open port; on at every opening
    void let_gather(int ms); // of the open port, see SerialPort
    std::optional<ControlInputs> inputs() const { return is_open() ? port_->inputs() : std::nullopt; }

    std::function<void()> on_receive; // bytes wait; runs inside yields only

private:
    PortDriver* driver_;
    std::unique_ptr<SerialPort> port_;
    std::string port_path_; // that port_ was made for
    LineSettings line_;
    std::vector<std::uint8_t> input_;
};

} // namespace vrk
