// A target that only listens and repeats, on a wire with a port.
#pragma once

#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <vector>

namespace sim::test {

using vrk::LineSettings;
using vrk::Parity;

// Hears all, and sends what it is told.
class Ear final : public Target {
public:
    void connect(Surroundings& surroundings) override
    {
        around = &surroundings;
        listen_as({9600, Parity::none, 8, 1});
    }
    void receive(const Arrival& arrival) override
    {
        heard.push_back(arrival.value);
        last = arrival;
        heard_at_us = around->now_ns() / 1000;
    }
    LineSettings line() const override { return settings; }
    void power(bool) override { }
    void listen_as(const LineSettings& line, bool measures = false)
    {
        settings = line;
        around->set_line(line, measures);
    }

    Surroundings* around = nullptr;
    LineSettings settings;
    std::vector<std::uint8_t> heard;
    Arrival last;
    std::int64_t heard_at_us = 0;
};

class WireTest : public testing::Test {
protected:
    WireTest()
    {
        wire.attach(ear);
        driver.add("/sim/0", wire, "a wire");
        port = driver.make("/sim/0");
        port->on_receive = [this] { ++receive_events; };
    }
    void write(std::initializer_list<std::uint8_t> bytes) { port->write(std::vector<std::uint8_t>(bytes)); }
    void send(std::initializer_list<std::uint8_t> bytes) { ear.around->send(std::vector<std::uint8_t>(bytes)); }
    std::vector<std::uint8_t> received()
    {
        std::vector<std::uint8_t> bytes(port->bytes_available());
        port->read(bytes);
        return bytes;
    }
    using Bytes = std::vector<std::uint8_t>;

    VirtualLoop loop;
    Wire wire{loop};
    Ear ear;
    SimPortDriver driver{loop};
    std::unique_ptr<vrk::SerialPort> port;
    int receive_events = 0;
};

} // namespace sim::test
