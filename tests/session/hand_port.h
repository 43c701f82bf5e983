// A talk on a port whose bytes the test hands in, and whose output it reads: for the receive paths, where the moment
// and the pieces of an arrival matter.
#pragma once

#include "session/session.h"
#include "sim/virtual_loop.h"

#include <cstring>
#include <deque>
#include <functional>

struct HandPort final : vrk::SerialPort {
    std::deque<std::uint8_t> in;
    std::vector<std::uint8_t> out;
    bool opened = false;
    std::function<void(std::size_t count)> on_write;

    bool open(const vrk::LineSettings&) override { return opened = true; }
    void close() override { opened = false; }
    bool is_open() const override { return opened; }
    bool gone() const override { return false; }
    bool set_line(const vrk::LineSettings&) override { return true; }
    std::size_t bytes_available() const override { return in.size(); }
    std::size_t read(std::span<std::uint8_t> into) override
    {
        std::size_t count = 0;
        while (count < into.size() && !in.empty()) {
            into[count++] = in.front();
            in.pop_front();
        }
        return count;
    }
    std::size_t bytes_to_write() const override { return 0; }
    void write(std::span<const std::uint8_t> bytes) override
    {
        out.insert(out.end(), bytes.begin(), bytes.end());
        if (on_write)
            on_write(bytes.size());
    }
    void discard() override { in.clear(); }
};

struct HandPorts final : vrk::PortDriver {
    HandPort* made = nullptr;
    std::vector<vrk::PortInfo> list() override { return {{"hand", "hand"}}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override
    {
        auto port = std::make_unique<HandPort>();
        made = port.get();
        return port;
    }
};

struct HandLink {
    sim::VirtualLoop loop;
    HandPorts ports;
    vrk::Port port{ports};
    vrk::McuTable catalogue;
    vrk::Session session{loop, port, catalogue, {}, {.port_path = "hand"}};

    HandLink()
    {
        port.open();
        session.rx.accept_frames = true;
    }

    // One receive event with these bytes.
    void arrive(std::initializer_list<int> bytes)
    {
        for (const int byte : bytes)
            ports.made->in.push_back(static_cast<std::uint8_t>(byte));
        ports.made->on_receive();
    }
};
