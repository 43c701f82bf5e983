// Ports that count what passes during the write stage and take its times. Else they are the ports that they are given.
#pragma once

#include "platform/serial_port.h"

#include <cstdint>

namespace bench {

struct WriteStage {
    std::int64_t bytes = 0; // both ways
    double began = 0; // seconds: when the first data frame was handed over
    double ended = 0; // when the last reply was read
    int bits = 0; // a byte
    std::int32_t baud = 0;

    double efficiency_percent() const { return static_cast<double>(bytes) * bits / baud / (ended - began) * 100; }
};

class MeteredPorts final : public vrk::PortDriver {
public:
    explicit MeteredPorts(vrk::PortDriver& ports)
        : ports_(&ports)
    {
    }
    std::vector<vrk::PortInfo> list() override { return ports_->list(); }
    std::unique_ptr<vrk::SerialPort> make(const std::string& path) override;
    const WriteStage& stage() const { return stage_; }

private:
    class Port;
    vrk::PortDriver* ports_;
    WriteStage stage_;
};

} // namespace bench
