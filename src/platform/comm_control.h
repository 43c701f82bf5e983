// MSComm1: the serial control that the link, the board, the terminal and the monitor share. It gives the narrow port
// of the seam the properties that the sequences speak of: CommPort, Settings, PortOpen, Input, Output and the counts.
#pragma once

#include "platform/serial_port.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// "9600,n,8,1": baud, parity letter (n, e, o, m, s), data bits, stop bits. Nothing where it cannot be read.
std::optional<LineSettings> parse_line_settings(std::string_view text);

class CommControl {
public:
    static constexpr int event_receive = 2; // CommEvent: bytes have arrived

    explicit CommControl(PortDriver& driver)
        : driver_(&driver)
    {
    }

    // CommPort counts from 1 in this list. A port that is open stays with the device it was opened on.
    std::vector<std::string> port_paths;
    int CommPort = 1;

    // False: the text cannot be read, or the open port refused it; the setting in force then stays.
    bool set_Settings(const std::string& text);
    const std::string& Settings() const { return settings_text_; }
    const LineSettings& line() const { return line_; }
    std::int32_t baud() const { return line_.baud; }

    bool PortOpen() const { return port_ != nullptr && port_->is_open(); }
    bool open(); // false: no such port, or the driver refused; an open port is closed first
    void close();

    std::size_t InBufferCount() const { return PortOpen() ? port_->bytes_available() : 0; }
    std::size_t OutBufferCount() const { return PortOpen() ? port_->bytes_to_write() : 0; }
    void clear_InBuffer(); // InBufferCount := 0
    void clear_OutBuffer(); // OutBufferCount := 0

    int InputLen = 0; // how many bytes Input takes; 0: all that wait
    int InputMode = 1; // 1: binary; the only mode in use
    int RThreshold = 1; // bytes that raise the receive event; 0: never
    int SThreshold = 0;
    bool NullDiscard = false;
    bool EOFEnable = false;
    int CommEvent = 0; // why on_comm runs

    // Input: takes up to InputLen bytes. The view holds until the next call.
    std::span<const std::uint8_t> Input();
    // Output: queues the bytes in one piece. On a closed port they are lost, and false comes back.
    bool Output(std::span<const std::uint8_t> bytes);

    std::function<void()> on_comm; // the receive event; runs inside yields only

private:
    void received();

    PortDriver* driver_;
    std::unique_ptr<SerialPort> port_;
    std::string port_path_;
    std::string settings_text_ = "9600,n,8,1";
    LineSettings line_;
    std::vector<std::uint8_t> input_;
};

} // namespace vrk
