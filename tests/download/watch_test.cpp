// The watch of the code file, down to the chip: who compiles and tries in quick succession gets what was compiled.
#include "bench.h"

#include "image/bench.h"

using namespace vrk;

namespace {

std::string hex_text_of(const std::vector<std::uint8_t>& bytes)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 16)
        text += image_test::hex_line(static_cast<int>(at),
            {bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.begin() + static_cast<std::ptrdiff_t>(at) + 16});
    return text + image_test::end_line;
}

// A file that is open and watched, and a linker that writes it anew in pieces.
struct LinkerBench : Bench {
    LinkerBench()
        : Bench("Juniper-60Q")
    {
        const std::string path = folder.file("lamp.hex", hex_text_of(pattern(0x400, 1)));
        take_path(shell, BufferKind::code, path);
        EXPECT_TRUE(load_file(shell, path, shell.code_buffer));
        click(shell, form.check_box("cekReloadFileWhileFileChange"));
        run_for_ms(1500);
        press_stop_after_ms(30'000); // of a call that nobody should have begun
    }
    void writes_after_ms(std::int64_t ms, std::string_view so_far)
    {
        after_ms(ms, [this, contents = std::string{so_far}] { folder.file("lamp.hex", contents); });
    }

    const image_test::Folder folder;
    const std::vector<std::uint8_t> linked = pattern(0x400, 2);
    const std::string text = hex_text_of(linked);
};

} // namespace

// Half of it reached the chip, and was counted as good.
TEST(Watch, ProgramsWhatTheLinkerHasWrittenToItsEnd)
{
    LinkerBench bench;
    for (std::size_t piece = 1; piece <= 8; ++piece)
        bench.writes_after_ms(static_cast<std::int64_t>(piece) * 700,
            std::string_view{bench.text}.substr(0, bench.text.size() * piece / 8));
    bench.power_up_after_ms(9000);
    bench.run_for_ms(12'000);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.chip.power_ups(), 1);
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_EQ(bench.flash(0, bench.linked.size() - 1), bench.linked);
}

TEST(Watch, LeavesTheChipAloneWhereTheLinkerHasBrokenOff)
{
    LinkerBench bench;
    bench.writes_after_ms(100, std::string_view{bench.text}.substr(0, bench.text.size() / 2));
    bench.run_for_ms(10'000);
    EXPECT_FALSE(bench.shell.running);
    EXPECT_EQ(bench.count(), 0);
    EXPECT_TRUE(bench.report_says("The HEX file has no end record"));
    EXPECT_TRUE(bench.report_says("Nothing was programmed."));
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.shell.code_buffer.data[0], Bench::pattern(1, 1)[0]) << "the buffer is as it was";
}

// So it did by a press with the reload switched on, while the linker was at work.
TEST(ReloadBeforeADownload, LeavesTheChipAloneWhereTheFileIsHalfWritten)
{
    LinkerBench bench;
    bench.form.check_box("cekReloadFileWhileFileChange").set_value(false);
    bench.form.check_box("cekReloadFile").set_value(true);
    bench.folder.file("lamp.hex", std::string_view{bench.text}.substr(0, bench.text.size() / 2));
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(), 0) << "nobody has called the chip";
    EXPECT_EQ(bench.count(), 0);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(
        bench.dialogs.shown[0].box.text, "The HEX file has no end record: it may not have been written to its end.");
    EXPECT_TRUE(bench.report_says("Nothing was programmed."));

    bench.dialogs.shown.clear();
    bench.folder.file("lamp.hex", bench.text);
    bench.download();
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_EQ(bench.flash(0, bench.linked.size() - 1), bench.linked);
}
