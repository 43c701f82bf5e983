// A serial port of the system: a device, a link to one, or a pseudo terminal, by its path.
#pragma once

#include "platform/serial_port.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace vrk {

class QtPort final : public SerialPort {
public:
    explicit QtPort(std::string path);

    bool open(const LineSettings& line) override;
    void close() override;
    bool is_open() const override { return port_.isOpen() && !gone_; }
    PortRefusal refusal() const override { return refusal_; }
    bool gone() const override { return gone_; }
    bool set_line(const LineSettings& line) override;
    std::size_t bytes_available() const override;
    std::size_t read(std::span<std::uint8_t> into) override;
    std::size_t bytes_to_write() const override;
    void write(std::span<const std::uint8_t> bytes) override;
    void discard() override;
    void set_outputs(bool dtr, bool rts) override;
    std::optional<ControlInputs> inputs() override;
    void let_gather(int ms) override { gather_.setInterval(ms); }

private:
    bool open_with(const LineSettings& line);
    bool driver_took(const LineSettings& line) const;
    void receive_straight();
    void take_in();
    void tell();
    void lose();
    bool is_slow(std::size_t count);
    void hold_back_reading();
    void read_on();

    std::string path_;
    bool is_pseudo_terminal_ = false;
    bool receiving_ = false;
    bool gone_ = false;
    PortRefusal refusal_;
    QSerialPort port_;
    std::unique_ptr<QSocketNotifier> hang_up_; // while open
    std::unique_ptr<QSocketNotifier> readable_; // the same
    std::vector<std::uint8_t> input_; // that has come and was not read
    QElapsedTimer paced_; // since the line's pace was looked at
    std::size_t came_ = 0; // bytes since then
    bool slow_ = false;
    QTimer gather_; // while it runs, nothing is read; an interval of 0: it never does
};

} // namespace vrk
