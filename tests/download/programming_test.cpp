// What goes into the flash, in which frames, and how often a block is tried.
#include "download/frame_tape.h"

using namespace vrk;

namespace {

struct Station : Bench {
    Station(const sim::ChipSetup& setup, std::size_t size, bool english = true)
        : Bench(setup, english)
    {
        open_code(pattern(size));
        form.option("optBeepNo").set_value(true);
    }
    Station(const char* model, std::size_t size, bool english = true)
        : Station(setup_of(model), size, english)
    {
    }
};

using Blocks = std::vector<std::string>;

} // namespace

TEST(WriteRange, ThatBeginsInsideABlockHasAShorterFirstBlock)
{
    Bench bench("Birch-8");
    bench.form.text_box("txtAP_FileStart").set_text("01F0");
    bench.open_code(Bench::pattern(0x110));
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.blocks(), (Blocks{"01F0+10", "0200+80", "0280+80", "0300+80", "0380+80"}));
    EXPECT_EQ(bench.flash(0x1F0, 0x2FF), bench.code(0x1F0, 0x2FF));
}

TEST(WriteRange, OfAShortFileGoesOnToTheEndOfASecondBlock)
{
    Station bench("Birch-8", 0x40);
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.blocks().size(), 8U);
    EXPECT_EQ(tape.blocks().back(), "0380+80");
}

TEST(WriteRange, OfSeries0IsWrittenInSingleFramesOf128Bytes)
{
    Station bench("Alder-64", 0x40);
    bench.chip.refuse_block(0x100, 2);
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.blocks(), (Blocks{"0000+80", "0080+80", "0100+80", "0100+80!", "0100+80!", "0180+80", "0200+80"}));
}

TEST(WriteRange, AboveTheLimitOfTheSeriesIsCutInSilence)
{
    Station bench("Larch-12", 0x2000);
    bench.shell.code_buffer.high = 0x5000;
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.blocks().back(), "3380+80");
    EXPECT_EQ(bench.dialogs.beeps, 0);
    EXPECT_FALSE(bench.report_says("Enable"));
}

TEST(WriteRange, OfCodeAndDataIsBothBuffersMergedIntoOneImage)
{
    Station bench("Hazel-2R", 0x300);
    bench.open_data(Bench::pattern(0x180, 5));
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    const Blocks blocks = tape.blocks();
    EXPECT_EQ(blocks.front(), "0000+80");
    EXPECT_EQ(blocks.size(), 20U + 8U); // the code and then the data, a block more of each than they fill
    EXPECT_EQ(bench.flash(0x800, 0x97F), Bench::pattern(0x180, 5));
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(BlockAnswer, WithoutASumIsGoodInTheOlderProtocol)
{
    sim::ChipSetup setup = setup_of("Birch-8");
    setup.short_block_answers = true;
    Station bench(setup, 0x300);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x30), 0);
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(BlockAnswer, WithoutASumIsBadInTheNewerProtocol)
{
    sim::ChipSetup setup = setup_of("Juniper-8");
    setup.short_block_answers = true;
    Station bench(setup, 0x300);
    bench.download();
    bench.expect_failed_honestly();
}

// The sum of 128 bytes of FF has a high byte; only the low one comes back.
TEST(BlockAnswer, IsComparedByItsLowByteWithLongFramesToo)
{
    Bench bench("Juniper-8");
    bench.open_code(std::vector<std::uint8_t>(0x300, 0xFE));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x30), 0);
}

class RefusedBlock : public ::testing::TestWithParam<int> { };

TEST_P(RefusedBlock, IsRepeatedFromItsBeginWithAMark)
{
    const int times = GetParam();
    Station bench("Birch-8", 0x600);
    bench.chip.refuse_block(0x280, times); // the second frame of the second block
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.chip.frame_count(0x00), 4 + 2 + 4);
    EXPECT_EQ(bench.chip.frame_count(0x30), 2 * (times - 1) + 4);
    EXPECT_EQ(bench.chip.violations(), "");
}

INSTANTIATE_TEST_SUITE_P(UpToThreeTimes, RefusedBlock, ::testing::Values(1, 2, 3),
    [](const auto& row) { return "Times" + std::to_string(row.param); });

class FailingBlock : public ::testing::TestWithParam<int> { };

TEST_P(FailingBlock, EndsTheDownloadAfterFourTries)
{
    Station bench("Birch-8", 0x600);
    bench.chip.refuse_block(0x280, GetParam());
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x00), 4 + 2);
    EXPECT_EQ(bench.chip.frame_count(0x30), 3 * 2);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.times_said("\nPrograming failed. (End: 08:00:"), 1);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(")\nTry to use the lower baud. "));
    bench.expect_a_clean_next_download();
}

TEST_P(FailingBlock, EndsTheDownloadIntoANewerChip)
{
    Station bench("Juniper-8", 0x600, false);
    bench.chip.refuse_block(0x280, GetParam());
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x30), 3 * 2);
    EXPECT_EQ(bench.chip.frame_count(0x69), 0);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.times_said("\n下载失败 (End: 08:00:"), 1);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(")\n请尝试用稍低的波特率下载。"));
    bench.expect_a_clean_next_download();
}

INSTANTIATE_TEST_SUITE_P(FromFourTimesOn, FailingBlock, ::testing::Values(4, 5, 100),
    [](const auto& row) { return "Times" + std::to_string(row.param); });

TEST(WrongSum, ThreeTimesIsMadeUpForByRepeats)
{
    Station bench("Juniper-8", 0x300);
    bench.chip.send_wrong_sum(3);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x30), 2 + 4);
}

TEST(WrongSum, FourTimesEndsTheDownload)
{
    Station bench("Juniper-8", 0x300);
    bench.chip.send_wrong_sum(4);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x30), 3);
    EXPECT_TRUE(bench.report_says("Programing failed. (End: "));
    bench.expect_a_clean_next_download();
}

TEST(EndOfCode, AnsweredWithAnotherCodeLeavesTheOptionsAlone)
{
    Station bench("Juniper-8", 0x300);
    bench.chip.noise_before_reply(14, sim::reply_frame(0x50, {}, true));
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x69), 1);
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(
        "\nThe code has already programed, but the Options haven't been modified."));
    EXPECT_TRUE(bench.chip_holds_the_code());
    bench.expect_a_clean_next_download();
}

TEST(EndOfCode, AnsweredWithAnotherCodeIsToldInChinese)
{
    Station bench("Juniper-8", 0x300, false);
    bench.chip.noise_before_reply(14, sim::reply_frame(0x50, {}, true));
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\n程序已下载，但 Options 未修改。"));
}

TEST(EndOfCode, IsNotToldToAModelWithoutOptionsToWrite)
{
    Station bench("Hazel-6R", 0x300);
    EXPECT_TRUE(bench.shell.selected.cap_no_option_write);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x69), 0);
}

TEST(BootBlock, OfTheReportedSizeCutsTheCode)
{
    sim::ChipSetup setup = setup_of("Birch-14");
    setup.boot_size_code = 3;
    Station bench(setup, 0x3800);
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.blocks().back(), "3580+80");
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_TRUE(bench.report_says("\nEnable 13K file size for this Version firmware."
                                  "\nEnable 13K file size for this Version firmware(program 13K only)."));
    EXPECT_EQ(bench.flash(0, 0x35FF), bench.code(0, 0x35FF));
}

TEST(BootBlock, OfTheReportedSizeCutsTheCodeOfTheLargestAspen)
{
    sim::ChipSetup setup = setup_of("Aspen-63");
    setup.boot_size_code = 3;
    Station bench(setup, 0xFC00, false);
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(tape.blocks().back(), "F980+80");
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_TRUE(bench.report_says("\nChinese:此版本固件最多可编程 62K, 您的文件已超长，\n        超长部分不下载。"));
}

TEST(BootBlock, OfAFirmwareThatDoesNotTellFollowsFromItsVersion)
{
    sim::ChipSetup setup = setup_of("Birch-14");
    setup.version = 0x25;
    setup.boot_size_code = 3;
    Station bench(setup, 0x3800, false);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.shell.talk().chip.boot_size, 2048);
    EXPECT_EQ(bench.dialogs.beeps, 0) << "2 KB end right above the code of this model";
}

TEST(BootBlock, OfTheSmallestSizeCutsNothing)
{
    Station bench("Birch-14", 0x3800);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
    EXPECT_EQ(bench.dialogs.beeps, 0);
}

TEST(Progress, CountsBytesAndKilobytesBlockByBlock)
{
    Station bench("Birch-8", 0x600);
    Blocks shown;
    std::vector<int> values;
    bench.loop.before_sleep = [&] {
        if (bench.form.progress("ProgressBar1").visible() &&
            (shown.empty() || shown.back() != bench.form.label("labKbyte").caption())) {
            shown.push_back(bench.form.label("labKbyte").caption());
            values.push_back(bench.form.progress("ProgressBar1").value());
        }
        return false;
    };
    bench.download();
    EXPECT_EQ(shown, (Blocks{"", ".500K", "1.000K", "1.500K"}));
    EXPECT_EQ(values, (std::vector<int>{values[0], 0x200, 0x400, 0x600}));
    EXPECT_EQ(bench.form.progress("ProgressBar1").min(), 0);
    EXPECT_EQ(bench.form.progress("ProgressBar1").max(), 0x600);
    EXPECT_FALSE(bench.form.progress("ProgressBar1").visible());
}

TEST(Progress, CountsIn256BytesAbove32Kilobytes)
{
    Station bench("Juniper-60Q", 0x9000);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.form.progress("ProgressBar1").min(), 0);
    EXPECT_EQ(bench.form.progress("ProgressBar1").max(), 0x92);
    EXPECT_EQ(bench.form.progress("ProgressBar1").value(), 0x92);
    EXPECT_EQ(bench.form.label("labKbyte").caption(), "36.500K");
}

TEST(Programming, TellsWhenItBegan)
{
    Station bench("Juniper-8", 0x300);
    bench.download();
    EXPECT_TRUE(bench.report_says("\nProgramming... ( Begin: 08:00:0"));
    Station chinese("Juniper-8", 0x300, false);
    chinese.download();
    EXPECT_TRUE(chinese.report_says("\n正在下载... ( 开始时间: 08:00:0"));
}

TEST(Programming, IsStoppedWithTwoBeeps)
{
    Station bench("Juniper-8", 0x2000);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::writing, [&bench] { bench.press_stop_after_ms(100); });
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    bench.expect_a_clean_next_download();
}

TEST(Programming, IsStoppedInChineseWithItsOwnWords)
{
    Station bench("Juniper-8", 0x2000, false);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::writing, [&bench] { bench.press_stop_after_ms(100); });
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\n操作被停止."));
}
