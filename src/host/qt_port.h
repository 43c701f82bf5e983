// A serial port of the system: a device, a link to one, or a pseudo terminal, by its path.
#pragma once

#include "platform/serial_port.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <string>

namespace vrk {

class QtPort final : public SerialPort {
public:
    explicit QtPort(std::string path);

    bool open(const LineSettings& line) override;
    void close() override;
    bool is_open() const override { return port_.isOpen() && !gone_; }
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
    void lose();
    bool is_slow(qint64 count);
    void hold_back_reading();
    void read_on();
    QSocketNotifier* reading() const;

    std::string path_;
    bool is_pseudo_terminal_ = false;
    bool receiving_ = false;
    bool gone_ = false;
    QSerialPort port_;
    std::unique_ptr<QSocketNotifier> hang_up_; // while open
    QElapsedTimer paced_; // since the line's pace was looked at
    qint64 came_ = 0; // bytes since then
    bool slow_ = false;
    QTimer gather_; // while it runs, nothing is read; an interval of 0: it never does
};

} // namespace vrk
