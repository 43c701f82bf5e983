// The bench of a download test: the program on virtual time, wired to a simulated chip, with the words that a story
// needs. The chip judges every frame by its own rules; the bench judges the result by the chip's true flash.
#pragma once

#include "catalog/attributes.h"
#include "catalog/ranges.h"
#include "link/option_commit.h"
#include "platform/text_number.h"
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"
#include "shell/buffer_view.h"
#include "shell/device.h"
#include "shell/events.h"
#include "shell/open_file.h"
#include "shell/panel_state.h"
#include "shell/press.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vrk {

inline sim::ChipSetup setup_of(const char* model)
{
    McuTable table;
    load_mcu_tables(table, false);
    return chip_setup_of(table, model).value();
}

struct Bench : Rehearsal {
    explicit Bench(const sim::ChipSetup& setup, bool english = true, SettingsStore* its_settings = nullptr)
        : Rehearsal(setup, its_settings, english)
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
            std::printf("--- report%s\n--- chip: %s\n%s%s", form.text_box("textMsg").text().c_str(),
                chip.state_name().c_str(), chip.violations().c_str(), chip.line_faults().c_str());
    }

    // Models without a node in the tree come from a project or from a connected chip: their name stands in the box.
    void select(const std::string& model)
    {
        form.text_box("txtDevice").set_text(model);
        apply_selected_device(shell);
        clear_buffer(shell, 0, shell.code_buffer);
        clear_buffer(shell, 0, shell.data_buffer);
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
    void open_code(const std::vector<std::uint8_t>& bytes)
    {
        open(bytes, shell.code_buffer, "code.bin");
        code_size = bytes.size();
    }
    void open_data(const std::vector<std::uint8_t>& bytes) { open(bytes, shell.data_buffer, "data.bin"); }

    void press_download(int row = 0)
    {
        loop.call_at(loop.now_us(), [this, row] { click(shell, form.button("comDownload", row)); });
    }
    void press_stop_after_ms(std::int64_t ms)
    {
        loop.call_at(loop.now_us() + ms * 1000, [this] { click(shell, form.button("comStop_Download")); });
    }
    void power_up_after_ms(std::int64_t ms)
    {
        loop.call_at(loop.now_us() + ms * 1000, [this] { chip.power_up(); });
    }
    void after_ms(std::int64_t ms, std::function<void()> act)
    {
        loop.call_at(loop.now_us() + ms * 1000, std::move(act));
    }

    // Until no sequence runs. A sequence that still waits after ten minutes of bench time waits for good: it is told,
    // and stopped as a user would stop it.
    void run_until_idle()
    {
        const auto end = loop.call_at(loop.now_us() + 600'000'000, [this] {
            ADD_FAILURE() << "the sequence does not end";
            form.button("comStop_Download").set_enabled(true);
            click(shell, form.button("comStop_Download"));
        });
        do
            loop.yield();
        while (shell.running);
        loop.cancel(end);
    }
    // Between sequences only: a sequence runs on the stack of whoever yields, so this would not come back before its
    // end. What is to happen in the middle of one is told beforehand, by after_ms and when.
    void run_for_ms(std::int64_t ms) { loop.run_for_ms(ms); }

    // A whole good download: press, power, wait.
    void download()
    {
        press_download();
        power_up_after_ms(500);
        run_until_idle();
    }

    // As run_until_idle, for a chip that a fault may have put out of hearing: the user gives up after two minutes.
    void run_until_idle_or_given_up()
    {
        const auto giving_up =
            loop.call_at(loop.now_us() + 120'000'000, [this] { click(shell, form.button("comStop_Download")); });
        run_until_idle();
        loop.cancel(giving_up);
    }

    // Once, as soon as the chip has got that far.
    void when(sim::Chip::State state, std::function<void()> act)
    {
        chip.on_state_change.push_back([this, state, act = std::move(act), done = false](sim::Chip::State now) mutable {
            if (now == state && !std::exchange(done, true))
                loop.call_at(loop.now_us(), act);
        });
    }

    // The hand at the bench puts the chip right, takes its power away, and presses Download once more.
    void repair()
    {
        chip.faults = sim::ChipFaults{};
        wire.replies = sim::ReplyFaults{};
        wire.bytes_to_tool = sim::ByteFaults{};
        wire.bytes_to_target = sim::ByteFaults{};
        run_for_ms(5000); // what was arranged for the last download comes to pass
        chip.power_off();
        run_for_ms(100);
    }
    void expect_a_clean_next_download()
    {
        repair();
        const int before = count();
        const std::string violations = chip.violations();
        download();
        EXPECT_TRUE(shell.succeeded);
        EXPECT_EQ(count(), before + 1);
        EXPECT_TRUE(report_says("Program OK"));
        EXPECT_TRUE(chip_holds_the_code());
        EXPECT_EQ(chip.violations(), violations) << "the next download is not clean";
        EXPECT_TRUE(buttons_are_free());
        EXPECT_EQ(panel_state(shell), 0);
    }

    // No word of success, no count, and the user can go on.
    void expect_failed_honestly()
    {
        EXPECT_FALSE(shell.succeeded);
        EXPECT_FALSE(report_says("OK"));
        EXPECT_EQ(count(), 0);
        EXPECT_EQ(shell.platform.settings.get("Settings", "Write_OK_Count", "0"), "0");
        EXPECT_TRUE(buttons_are_free());
    }

    // The code file is in the chip's true flash, whatever anybody says.
    bool chip_holds_the_code() const { return code_size > 0 && flash(0, code_size - 1) == code(0, code_size - 1); }
    // The option rows in which a chip of this family tells what it was given.
    std::vector<int> telling_rows() const
    {
        const std::int16_t series = shell.selected.series;
        if (series < 2)
            return {};
        if (!is_newer_series(series))
            return {1};
        const auto rows = compared_rows(shell.selected, shell.talk().chip.fw_letter, shell.talk().chip.fw_version);
        return {rows.begin(), rows.end()};
    }
    // Those rows hold in the chip what was wanted, but for two bits that newer chips set by themselves.
    bool chip_holds_the_options() const
    {
        const std::vector<int> rows = telling_rows();
        return std::all_of(rows.begin(), rows.end(), [this](int row) {
            const int mask = row == 1 && shell.selected.series >= 7 ? 0x88 : 0;
            const auto at = static_cast<std::size_t>(row);
            return (chip.options()[at] | mask) == (shell.options.bytes[at][0] | mask);
        });
    }
    std::vector<OptionButton*> buttons_of(std::size_t strip) { return form.options("Option" + std::to_string(strip)); }
    void wipe_chip() { chip.preset_flash(0, std::vector<std::uint8_t>(chip.flash().size(), 0xA5)); }

    std::size_t code_size = 0;

    bool report_says(std::string_view text) const
    {
        return form.text_box("textMsg").text().find(text) != std::string::npos;
    }
    int times_said(std::string_view text) const
    {
        const std::string& report = form.text_box("textMsg").text();
        int times = 0;
        for (std::size_t at = report.find(text); at != std::string::npos; at = report.find(text, at + text.size()))
            ++times;
        return times;
    }
    int count() const
    {
        return static_cast<int>(std::clamp(number_in(form.text_box("txtWrite_OK_Count").text()), -1e9, 1e9));
    }
    std::vector<std::uint8_t> flash(std::size_t first, std::size_t last) const { return chip.flash(first, last); }
    std::vector<std::uint8_t> code(std::size_t first, std::size_t last) const
    {
        return {shell.code_buffer.data.begin() + static_cast<std::ptrdiff_t>(first),
            shell.code_buffer.data.begin() + static_cast<std::ptrdiff_t>(last + 1)};
    }
    bool buttons_are_free() const
    {
        return form.button("comDownload", 0).enabled() && form.button("comDownload", 1).enabled() &&
            !form.button("comStop_Download").enabled();
    }

private:
    void open(const std::vector<std::uint8_t>& bytes, FileBuffer& buffer, const char* name)
    {
        const std::string path = ::testing::TempDir() + std::to_string(getpid()) + name;
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        take_path(shell, buffer.kind, path);
        ASSERT_TRUE(load_file(shell, path, buffer));
        std::remove(path.c_str());
    }
};

} // namespace vrk
