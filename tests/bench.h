// The bench of a download test: the program on virtual time, wired to a simulated chip, with the words that a story
// needs. The chip judges every frame by its own rules; the bench judges the result by the chip's true flash.
#pragma once

#include "catalog/attributes.h"
#include "catalog/ranges.h"
#include "image/buffers.h"
#include "image/file_loader.h"
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"
#include "shell/device.h"
#include "shell/events.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace vrk {

inline sim::ChipSetup setup_of(const char* model)
{
    McuTable table;
    load_mcu_tables(table, false);
    return chip_setup_of(table, model).value();
}

struct Bench : Rehearsal {
    explicit Bench(const sim::ChipSetup& setup, bool english = true)
        : Rehearsal(setup, nullptr, english)
    {
        select(setup.model.name);
    }
    explicit Bench(const char* model, bool english = true)
        : Bench(setup_of(model), english)
    {
    }
    ~Bench()
    {
        EXPECT_TRUE(dialogs.replies.empty()) << "a reply was left over";
        if (::testing::Test::HasFailure())
            std::printf("--- report%s\n--- chip: %s\n%s%s", form.textMsg.text().c_str(), chip.state_name().c_str(),
                chip.violations().c_str(), chip.line_faults().c_str());
    }

    // Models without a node in the tree come from a project or from a connected chip: their name stands in the box.
    void select(const std::string& model)
    {
        form.txtDevice.set_text(model);
        apply_selected_device(form);
        clear_buffer(form, 0, form.code_buffer);
        clear_buffer(form, 0, form.data_buffer);
    }

    // Files of made-up content, written where tests may write.
    static std::vector<std::uint8_t> pattern(std::size_t size, unsigned seed = 1)
    {
        std::vector<std::uint8_t> bytes(size);
        std::uint32_t state = seed;
        for (std::uint8_t& byte : bytes) {
            state = state * 1664525U + 1013904223U;
            byte = static_cast<std::uint8_t>(state >> 24);
        }
        return bytes;
    }
    void open_code(const std::vector<std::uint8_t>& bytes) { open(bytes, form.code_buffer, "code.bin"); }
    void open_data(const std::vector<std::uint8_t>& bytes) { open(bytes, form.data_buffer, "data.bin"); }

    void press_download(int row = 0)
    {
        loop.call_at(loop.now_us(), [this, row] { click(form, form.comDownload[row]); });
    }
    void press_stop_after_ms(std::int64_t ms)
    {
        loop.call_at(loop.now_us() + ms * 1000, [this] { click(form, form.comStop_Download); });
    }
    void power_up_after_ms(std::int64_t ms)
    {
        loop.call_at(loop.now_us() + ms * 1000, [this] { chip.power_up(); });
    }
    void after_ms(std::int64_t ms, std::function<void()> act) { loop.call_at(loop.now_us() + ms * 1000, std::move(act)); }

    // Until no sequence runs; ten minutes of bench time are the end of every story.
    void run_until_idle()
    {
        const std::int64_t end = loop.now_us() + 600'000'000;
        do
            loop.yield();
        while (form.job.sequence_running && loop.now_us() < end);
        ASSERT_FALSE(form.job.sequence_running) << "the sequence does not end";
    }
    void run_for_ms(std::int64_t ms) { loop.run_for_ms(ms); }

    // A whole good download: press, power, wait.
    void download()
    {
        press_download();
        power_up_after_ms(500);
        run_until_idle();
    }

    bool report_says(std::string_view text) const { return form.textMsg.text().find(text) != std::string::npos; }
    int count() const { return std::stoi(form.txtWrite_OK_Count.text()); }
    std::vector<std::uint8_t> flash(std::size_t first, std::size_t last) const { return chip.flash(first, last); }
    std::vector<std::uint8_t> code(std::size_t first, std::size_t last) const
    {
        return {form.code_buffer.data.begin() + static_cast<std::ptrdiff_t>(first),
            form.code_buffer.data.begin() + static_cast<std::ptrdiff_t>(last + 1)};
    }
    bool buttons_are_free() const
    {
        return form.comDownload[0].enabled() && form.comDownload[1].enabled() && !form.comStop_Download.enabled();
    }

private:
    void open(const std::vector<std::uint8_t>& bytes, FileBuffer& buffer, const char* name)
    {
        const std::string path = ::testing::TempDir() + std::to_string(getpid()) + name;
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
        take_path(form, &buffer == &form.code_buffer ? BufferKind::code : BufferKind::data, path);
        ASSERT_TRUE(load_file(form, path, buffer));
        std::remove(path.c_str());
    }
};

} // namespace vrk
