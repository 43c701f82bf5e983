// A tool operated by hand: it sends what a test tells it to and keeps what comes back. It builds its frames from the
// wire description alone, and knows nothing of how the chip reads them.
#pragma once

#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

namespace sim::test {

using Bytes = std::vector<std::uint8_t>;

inline Bytes command(const Bytes& code_and_parameters, bool long_frame)
{
    Bytes frame{0x46, 0xB9, 0x6A, 0x00};
    frame.push_back(static_cast<std::uint8_t>(code_and_parameters.size() + (long_frame ? 6U : 5U)));
    frame.insert(frame.end(), code_and_parameters.begin(), code_and_parameters.end());
    unsigned sum = 0;
    for (std::size_t i = 2; i < frame.size(); ++i)
        sum += frame[i];
    if (long_frame)
        frame.push_back(static_cast<std::uint8_t>(sum >> 8U));
    frame.push_back(static_cast<std::uint8_t>(sum));
    frame.push_back(0x16);
    return frame;
}

inline Bytes model_frame(std::uint8_t code, int series, std::uint8_t id_high, std::uint8_t id_low)
{
    return {code, static_cast<std::uint8_t>(series), 0, 0x36, 0x01, id_high, id_low};
}

inline Bytes block(std::uint8_t code, std::uint32_t address, const Bytes& data)
{
    Bytes frame{code, 0, static_cast<std::uint8_t>(address >> 16U), static_cast<std::uint8_t>(address >> 8U),
        static_cast<std::uint8_t>(address), 0, static_cast<std::uint8_t>(data.size())};
    frame.insert(frame.end(), data.begin(), data.end());
    return frame;
}

// Erase of the whole code area, in the long form.
inline Bytes long_erase(std::uint32_t first, std::uint32_t last)
{
    Bytes frame{0x84, 255};
    for (const std::uint32_t address : {first, last})
        for (const unsigned shift : {16U, 8U, 0U})
            frame.push_back(static_cast<std::uint8_t>(address >> shift));
    frame.resize(19, 0);
    for (std::uint8_t fill = 0x80; fill >= 0x0E; --fill)
        frame.push_back(fill);
    return frame;
}

inline ChipModel juniper_60q() { return {"Juniper-60Q", 7, "D17E"}; }

inline ChipModel birch_20()
{
    return {"Birch-20", 2, "F105", "", 0x4FFF, 0x5000, 0xF3FF, 0xF400, false, false, false, false};
}

inline ChipModel holly_4() { return {"Holly-4", 16, "F384", "", 0x0FFF, 0x1000, 0x13FF, 0x1400}; }

// A chip on a wire, and the hand.
struct HandTool {
    explicit HandTool(ChipSetup setup)
        : chip(std::move(setup))
        , line{2400, chip.line().parity, 8, 1}
    {
        wire.attach(chip);
        wire.log = &loop.log;
        driver.add("/sim/0", wire);
        port = driver.make("/sim/0");
        port->on_receive = [this] { ++receive_events; };
    }
    explicit HandTool(const ChipModel& model)
        : HandTool(default_setup(model))
    {
    }

    bool open(std::int32_t baud)
    {
        line.baud = baud;
        return port->open(line);
    }
    void write(const Bytes& bytes) { port->write(bytes); }
    void pass_ms(std::int64_t ms) { loop.run_for_ms(ms); }
    Bytes take()
    {
        Bytes bytes(port->bytes_available());
        port->read(bytes);
        return bytes;
    }
    Bytes after_ms(std::int64_t ms)
    {
        pass_ms(ms);
        return take();
    }

    // A pair of sync bytes each 10 ms.
    void call(int pairs = 10)
    {
        for (int i = 0; i < pairs; ++i) {
            write({0x7F, 0x7F});
            pass_ms(10);
        }
    }
    // Powers the chip and calls it; the status frame comes back.
    Bytes call_up(std::int32_t baud = 2400)
    {
        open(baud);
        chip.power_up();
        pass_ms(6);
        call(12);
        return after_ms(800);
    }
    // Sends a command and returns what came back within the time.
    Bytes ask(const Bytes& code_and_parameters, std::int64_t ms = 1000)
    {
        take();
        write(command(code_and_parameters, chip.setup().model.long_frame));
        return after_ms(ms);
    }
    void turn_to(std::int32_t baud)
    {
        port->close();
        open(baud);
    }
    // The road of the newer protocol up to the final speed: 115200 from a clock of 11.0592 MHz.
    void reach_final_speed()
    {
        call_up();
        ask(model_frame(0x50, 7, 0xD1, 0x7E), 300);
        offer_speed(0x8F);
        turn_to(2400);
        offer_speed(0x8E);
    }
    // Mode 192, S = 6: clock / 16 / 6. The answer comes at the new speed.
    Bytes offer_speed(std::uint8_t code)
    {
        take();
        Bytes frame{code, 192, 250, 63, 12, 45};
        if (code == 0x8F)
            frame.push_back(0x83);
        write(command(frame, true));
        pass_ms(100);
        turn_to(115200);
        return after_ms(900);
    }
    void erase() { ask(long_erase(0xF001, 0xF001), 3000); }

    VirtualLoop loop;
    Wire wire{loop};
    Chip chip;
    SimPortDriver driver{loop};
    vrk::LineSettings line;
    std::unique_ptr<vrk::SerialPort> port;
    int receive_events = 0;
};

// Reply code of a frame with its header; 256 for none.
inline int code_of(const Bytes& reply) { return reply.size() > 5 ? reply[5] : 256; }
// A byte by its index from 0x68 on.
inline int rx(const Bytes& reply, std::size_t index) { return index + 2 < reply.size() ? reply[index + 2] : 256; }

} // namespace sim::test
