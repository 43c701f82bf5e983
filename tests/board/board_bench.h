// A bench for the off-line board: one job, virtual time, a simulated board on a simulated line. The board judges every
// frame by its own code; the bench judges a job by what the board holds.
#pragma once

#include "board/board_download.h"
#include "board/board_image.h"
#include "board/board_link.h"
#include "board/memory_reader.h"
#include "sim/board_programs.h"
#include "talk_bench.h"

namespace vrk {

inline BoardJob job_for(const char* model, std::size_t code_size = 0x3000)
{
    BoardJob job;
    job.model = catalog_test::record(model);
    job.model_name = model;
    job.line.port_path = "board";
    job.code = image_with(pattern(code_size), code_buffer_size);
    job.data.bytes.resize(data_buffer_size);
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

struct BoardBench : TalkBench {
    explicit BoardBench(BoardJob its_job)
        : BoardBench(its_job, board_for(its_job.model))
    {
    }
    BoardBench(BoardJob its_job, sim::BoardSetup setup)
        : TalkBench("board")
        , job(std::move(its_job))
        , board(setup)
    {
        wire.attach(board);
        board.on_frame = [this](std::uint8_t code) {
            if (at_frame && code == at_code && --at_count == 0)
                at_frame();
        };
    }
    ~BoardBench()
    {
        if (::testing::Test::HasFailure())
            std::printf("--- board: %s\n", board.violations().c_str());
    }

    void power_up_after_ms(std::int64_t ms)
    {
        after_ms(ms, [this] { board.power(true); });
    }
    void stop_after_ms(std::int64_t ms)
    {
        after_ms(ms, [this] { stop(); });
    }
    // Once, when the board has the n-th frame with this code in hand.
    void when_frame(std::uint8_t code, int n, std::function<void()> act)
    {
        at_code = code;
        at_count = n;
        at_frame = std::move(act);
    }

    void talk(const std::function<void(Session&)>& story)
    {
        talk_on(job.line, job.model, story);
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
    sim::Board board;
    BoardOutcome outcome;

    std::uint8_t at_code = 0;
    int at_count = 0;
    std::function<void()> at_frame;
};

} // namespace vrk
