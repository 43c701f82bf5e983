// The seam to a serial line. The tool knows ports by path; a driver lists and makes them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vrk {

enum class Parity { none, even, odd, mark, space };

struct LineSettings {
    std::int32_t baud = 9600;
    Parity parity = Parity::none;
    int data_bits = 8; // 5..8
    int stop_bits = 1; // 1 or 2

    friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

// Bits of one byte on the wire: start bit, data, parity where there is one, stop.
constexpr int bits_per_byte(const LineSettings& line)
{
    return 1 + line.data_bits + (line.parity == Parity::none ? 0 : 1) + line.stop_bits;
}

// One port. All calls come from our thread; none of them blocks for longer than the driver needs.
// What the other side says on its control lines.
struct ControlInputs {
    bool cts = false;
    bool dsr = false;
    bool dcd = false;
};

// Why a port that is there was refused at its last opening, as far as the system tells.
struct PortRefusal {
    enum class Kind { unknown, no_permission, in_use };
    Kind kind = Kind::unknown;
    std::string group; // whose members may open it; empty: not known
    std::string holder; // the program that has it open, as "name (PID 123)"; empty: not known
};

class SerialPort {
public:
    virtual ~SerialPort() = default;

    virtual bool open(const LineSettings& line) = 0; // false: not there, taken by another program, or refused
    virtual void close() = 0;
    virtual bool is_open() const = 0; // false too when the device has gone
    // The device was pulled out or has hung up since it was opened, or was not there at the last opening.
    virtual bool gone() const = 0;
    virtual PortRefusal refusal() const { return {}; }
    virtual bool set_line(const LineSettings& line) = 0; // on the open port, from the next byte on

    virtual std::size_t bytes_available() const = 0;
    virtual std::size_t read(std::span<std::uint8_t> into) = 0; // what waits, at most into.size(); never blocks
    virtual std::size_t bytes_to_write() const = 0; // still in the queue
    virtual void write(std::span<const std::uint8_t> bytes) = 0; // queues all of it and starts sending
    virtual void discard() = 0; // what has come and what is still in the queue

    // The control lines. A port without them, a pseudo terminal for one, takes no notice and tells nothing.
    virtual void set_outputs(bool /*dtr*/, bool /*rts*/) { }
    virtual std::optional<ControlInputs> inputs() { return std::nullopt; }

    // Of the open port: few bytes may be told of that much later, so that more gather and a busy line costs less. For a
    // receiver to whom a few milliseconds are nothing; 0 at each opening. A port may tell of them at once all the same.
    virtual void let_gather(int /*ms*/) { }

    // Called inside a yield, when bytes have arrived. May yield itself, and then looks for what came meanwhile before
    // it returns: it is up to the port whether it is called again inside.
    std::function<void()> on_receive;
};

struct PortInfo {
    std::string path; // what open() takes: a device, a link to one, a pseudo terminal
    std::string caption; // what the user reads
    std::string description; // what the device says that it is; empty: nothing
    std::string serial_number{}; // of the adapter; empty: it tells none
};

class PortDriver {
public:
    virtual ~PortDriver() = default;
    virtual std::vector<PortInfo> list() = 0;
    virtual std::unique_ptr<SerialPort> make(const std::string& path) = 0;
    std::function<void()> on_list_changed; // called inside a yield, when a device comes or goes
};

} // namespace vrk
