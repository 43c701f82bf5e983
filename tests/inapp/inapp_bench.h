// A bench for chips that run user code: virtual time, a line, and the user code on it, which leads into its downloader
// or into the boot loader.
#pragma once

#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "inapp/demo.h"
#include "inapp/hex_pairs.h"
#include "inapp/user_command.h"
#include "sim/demo_program.h"
#include "sim/sim_port.h"
#include "sim/user_code.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"
#include "written_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace vrk {

inline const McuTable& whole_catalogue()
{
    static const McuTable table = [] {
        McuTable filled;
        load_mcu_tables(filled, false);
        return filled;
    }();
    return table;
}

inline McuRecord model_named(const char* name)
{
    const auto found = locate_mcu_by_name(whole_catalogue(), name);
    return found ? read_mcu_row(whole_catalogue(), found->series, found->row) : McuRecord{};
}

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

// A code buffer that a file of this size has been loaded into.
inline JobImage code_of(std::size_t size)
{
    JobImage image;
    image.bytes = pattern(size);
    image.bytes.resize(0x12001);
    image.high = std::max(static_cast<std::int32_t>(size) - 1, 1023);
    image.view_high = image.high;
    image.loaded = true;
    return image;
}

struct InappBench {
    InappBench()
    {
        ports.add("line", wire);
        line.port_path = "line";
    }
    ~InappBench()
    {
        if (::testing::Test::HasFailure()) {
            for (const std::string& one : report.lines)
                std::printf("%s\n", one.c_str());
        }
    }

    void talk(const McuRecord& model, const std::function<void(Session&)>& story)
    {
        Session talk_(loop, port, whole_catalogue(), model, line);
        session = &talk_;
        const std::int64_t began_us = loop.now_us();
        story(talk_);
        took_ms = (loop.now_us() - began_us) / 1000;
        session = nullptr;
        EXPECT_FALSE(talk_.demo_mode);
        port.close();
    }
    void stop() { session->stop_requested = true; }
    void after_ms(std::int64_t ms, std::function<void()> act)
    {
        loop.call_at(loop.now_us() + ms * 1000, std::move(act));
    }
    bool says(const std::string& text) const
    {
        return std::any_of(report.lines.begin(), report.lines.end(),
            [&](const std::string& one) { return one.find(text) != std::string::npos; });
    }

    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::SimPortDriver ports{loop};
    Port port{ports};
    LineChoice line;
    WrittenReport report;
    Session* session = nullptr;
    std::int64_t took_ms = 0;
};

} // namespace vrk
