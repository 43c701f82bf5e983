// A bench for one engine alone: virtual time, a line of its own, one talk after the other, and what was told written
// down. What stands at the far end is the business of the engine's own bench.
#pragma once

#include "catalog/loaded_table.h"
#include "platform/port.h"
#include "session/image_job.h"
#include "session/session.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"
#include "written_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace vrk {

inline Bytes pattern(std::size_t size, unsigned seed = 1)
{
    Bytes bytes(size);
    std::uint32_t state = seed;
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bytes;
}

// A buffer that a file has been loaded into; what lies behind the file is 00.
inline JobImage image_with(const Bytes& file, std::size_t size)
{
    JobImage image;
    image.bytes = file;
    image.bytes.resize(size);
    image.high = std::max(static_cast<std::int32_t>(file.size()) - 1, 1023);
    image.view_high = image.high;
    image.loaded = true;
    return image;
}

inline constexpr std::size_t code_buffer_size = 0x12001;
inline constexpr std::size_t data_buffer_size = 0x10001;

struct TalkBench {
    explicit TalkBench(const std::string& port_path) { ports.add(port_path, wire); }
    ~TalkBench()
    {
        if (::testing::Test::HasFailure()) {
            for (const std::string& line : report.lines)
                std::printf("%s\n", line.c_str());
        }
    }

    void talk_on(const LineChoice& line, const McuRecord& model, const std::function<void(Session&)>& story)
    {
        Session talk_(loop, port, catalog_test::table(), model, line);
        session = &talk_;
        const std::int64_t began_us = loop.now_us();
        story(talk_);
        took_ms = (loop.now_us() - began_us) / 1000;
        session = nullptr;
        EXPECT_FALSE(talk_.board_mode);
        EXPECT_FALSE(talk_.demo_mode);
    }
    void stop() { session->stop_requested = true; }
    void after_ms(std::int64_t ms, std::function<void()> act)
    {
        loop.call_at(loop.now_us() + ms * 1000, std::move(act));
    }
    bool says(const std::string& text) const
    {
        return std::ranges::any_of(
            report.lines, [&](const std::string& line) { return line.find(text) != std::string::npos; });
    }

    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::SimPortDriver ports{loop};
    Port port{ports};
    WrittenReport report;
    Session* session = nullptr;
    std::int64_t took_ms = 0;
};

} // namespace vrk
