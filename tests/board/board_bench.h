// A bench for the off-line board: one job, virtual time, a simulated board on a simulated line. The board judges every
// frame by its own code; the bench judges a job by what the board holds.
#pragma once

#include "board/board_download.h"
#include "board/board_image.h"
#include "board/board_link.h"
#include "board/memory_reader.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "sim/board_programs.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"
#include "written_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vrk {

using Bytes = std::vector<std::uint8_t>;

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

inline BoardJob job_for(const char* model, std::size_t code_size = 0x3000)
{
    BoardJob job;
    job.model = model_named(model);
    job.model_name = model;
    job.line.port_path = "board";
    job.code = image_with(pattern(code_size), 0x12001);
    job.data.bytes.resize(0x10001);
    job.pins = 40;
    for (std::size_t row = 0; row < option_rows; ++row)
        job.options.bytes[row][0] = static_cast<std::uint8_t>(0x10 + row);
    return job;
}

inline sim::BoardSetup board_for(const McuRecord& model)
{
    sim::BoardSetup setup;
    setup.series = static_cast<std::uint8_t>(model.series);
    setup.id = model_id_bytes(model, "");
    return setup;
}

inline sim::ChipSetup chip_of(const McuRecord& model)
{
    sim::ChipModel chip;
    chip.name = model.mcu_name;
    chip.series = model.series;
    chip.id = model.mcu_id;
    chip.ap_last = model.ap_last;
    chip.eeprom_first = model.eeprom_first;
    chip.eeprom_last = model.eeprom_last;
    chip.isp_start = model.isp_start;
    return sim::default_setup(chip);
}

struct BoardBench {
    explicit BoardBench(BoardJob its_job)
        : BoardBench(its_job, board_for(its_job.model))
    {
    }
    BoardBench(BoardJob its_job, sim::BoardSetup setup)
        : job(std::move(its_job))
        , board(setup)
    {
        wire.attach(board);
        ports.add("board", wire);
        board.on_frame = [this](std::uint8_t code) {
            if (at_frame && code == at_code && --at_count == 0)
                at_frame();
        };
    }
    ~BoardBench()
    {
        if (::testing::Test::HasFailure()) {
            for (const std::string& line : report.lines)
                std::printf("%s\n", line.c_str());
            std::printf("--- board: %s\n", board.violations().c_str());
        }
    }

    void power_up_after_ms(std::int64_t ms)
    {
        loop.call_at(loop.now_us() + ms * 1000, [this] { board.power(true); });
    }
    void stop_after_ms(std::int64_t ms)
    {
        loop.call_at(loop.now_us() + ms * 1000, [this] { stop(); });
    }
    void stop() { session->stop_requested = true; }
    // Once, when the board has the n-th frame with this code in hand.
    void when_frame(std::uint8_t code, int n, std::function<void()> act)
    {
        at_code = code;
        at_count = n;
        at_frame = std::move(act);
    }

    void talk(const std::function<void(Session&)>& story)
    {
        Session talk_(loop, port, whole_catalogue(), job.model, job.line);
        session = &talk_;
        const std::int64_t began_us = loop.now_us();
        story(talk_);
        took_ms = (loop.now_us() - began_us) / 1000;
        session = nullptr;
        EXPECT_FALSE(talk_.board_mode);
        EXPECT_FALSE(port.is_open());
    }
    Result run()
    {
        talk([this](Session& talk_) { outcome = download_to_board(talk_, job, report); });
        return outcome.result;
    }
    Result run_with_power()
    {
        power_up_after_ms(300);
        return run();
    }
    MemoryRead read_memory()
    {
        MemoryRead read;
        power_up_after_ms(300);
        talk([&](Session& talk_) { read = read_board_memory(talk_, job, report); });
        return read;
    }

    bool says(const std::string& text) const
    {
        return std::any_of(report.lines.begin(), report.lines.end(),
            [&](const std::string& line) { return line.find(text) != std::string::npos; });
    }
    Bytes held(std::size_t first, std::size_t last) const
    {
        return {board.memory().begin() + static_cast<std::ptrdiff_t>(first),
            board.memory().begin() + static_cast<std::ptrdiff_t>(last) + 1};
    }
    // The image of the job as it is, for a board of its own capacity.
    Bytes planned(std::size_t first, std::size_t last) const
    {
        BoardSource source = build_board_source(job);
        const BoardFit fit = board_fit(job.model, board.setup().capacity_kb * 1024, source.last);
        leave_numbers_open(job, source);
        const BoardImage image = build_board_image(job, source, fit);
        return {
            image.begin() + static_cast<std::ptrdiff_t>(first), image.begin() + static_cast<std::ptrdiff_t>(last) + 1};
    }

    BoardJob job;
    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::Board board;
    sim::SimPortDriver ports{loop};
    Port port{ports};
    WrittenReport report;
    Session* session = nullptr;
    BoardOutcome outcome;
    std::int64_t took_ms = 0;

    std::uint8_t at_code = 0;
    int at_count = 0;
    std::function<void()> at_frame;
};

} // namespace vrk
