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

namespace {

// What has become of the file since it was opened, and the box that says so.
struct Lost {
    const char* name;
    void (*lose)(const LinkerBench& bench);
    const char* box;
    std::vector<Reply> replies;
};
void PrintTo(const Lost& lost, std::ostream* to) { *to << lost.name; }

class ReloadBeforeADownload : public testing::TestWithParam<Lost> { };

void replace_by(const LinkerBench& bench, std::string_view contents) { bench.folder.file("lamp.hex", contents); }

} // namespace

// Zeros or half a program went into the chip, and it was counted as good.
TEST_P(ReloadBeforeADownload, OfAFileThatIsLostLeavesTheChipAlone)
{
    LinkerBench bench;
    bench.form.check_box("cekReloadFileWhileFileChange").set_value(false);
    bench.form.check_box("cekReloadFile").set_value(true);
    GetParam().lose(bench);
    bench.dialogs.replies.assign(GetParam().replies.begin(), GetParam().replies.end());
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(), 0) << "nobody has called the chip";
    EXPECT_EQ(bench.count(), 0);
    ASSERT_FALSE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.dialogs.shown[0].box.text, GetParam().box);
    EXPECT_TRUE(bench.report_says("The file could not be loaded again. Nothing was programmed."));
    EXPECT_EQ(bench.code(0, 0x3FF), Bench::pattern(0x400, 1)) << "the buffer is as it was";
    EXPECT_TRUE(bench.buttons_are_free());

    std::filesystem::remove_all(bench.shell.loader.code_path);
    replace_by(bench, bench.text);
    bench.chip.power_off();
    bench.download();
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_EQ(bench.flash(0, bench.linked.size() - 1), bench.linked);
}

INSTANTIATE_TEST_SUITE_P(As, ReloadBeforeADownload,
    testing::Values(
        Lost{"Gone", [](const LinkerBench& bench) { std::filesystem::remove(bench.shell.loader.code_path); },
            "Can not find the file.", {}},
        Lost{"AFolder",
            [](const LinkerBench& bench) {
                std::filesystem::remove(bench.shell.loader.code_path);
                std::filesystem::create_directory(bench.shell.loader.code_path);
            },
            "Can not find the file.", {}},
        Lost{"Empty", [](const LinkerBench& bench) { replace_by(bench, ""); }, "The file contains no data.", {}},
        Lost{"Text", [](const LinkerBench& bench) { replace_by(bench, "hello"); }, "The file contains no data.", {}},
        Lost{"WrongChecksums",
            [](const LinkerBench& bench) {
                replace_by(bench, ":0100000001AA\n:0100010001AA\n:0100020001AA\n:00000001FF\n");
            },
            "The checksum is incorrect:\n\n:0100000001AA", {Reply::ok, Reply::ok, Reply::ok, Reply::no}},
        Lost{"HalfWritten",
            [](const LinkerBench& bench) {
                replace_by(bench, std::string_view{bench.text}.substr(0, bench.text.size() / 2));
            },
            "The HEX file has no end record: it may not have been written to its end.", {}}),
    [](const auto& row) { return std::string{row.param.name}; });
