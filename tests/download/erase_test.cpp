// The erase frame as the chip of each firmware letter sees it, and what comes of it when it is not answered.
#include "download/frame_tape.h"

using namespace vrk;

namespace {

struct Station : Bench {
    explicit Station(const char* model, bool english = true)
        : Station(setup_of(model), english)
    {
    }
    explicit Station(const sim::ChipSetup& setup, bool english = true)
        : Bench(setup, english)
    {
        open_code(pattern(0x300));
        form.option("optBeepNo").set_value(true);
    }
};

// The frame from its length byte on: length, code, sectors, first address, last address.
std::vector<std::uint8_t> erase_head(const char* model)
{
    Station bench(model);
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.violations(), "");
    const auto frames = tape.frames(0x84);
    EXPECT_EQ(frames.size(), 1U);
    return {frames.at(0).begin() + 4, frames.at(0).begin() + 13};
}

using Head = std::vector<std::uint8_t>;

} // namespace

// The range begins one behind the first address of the data flash: a quirk of the loaders that the tool lives with.
TEST(EraseFrame, OfEachLetterIsAsItsLoaderWantsIt)
{
    // clang-format off
    //                                        L     code  sect. first address     last address
    EXPECT_EQ(erase_head("Alder-64"),    (Head{0x0D, 0x84, 0xFF, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33})); // A
    EXPECT_EQ(erase_head("Aspen-63"),    (Head{0x0D, 0x84, 0x7C, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33})); // B
    EXPECT_EQ(erase_head("Aspen-16"),    (Head{0x0D, 0x84, 0x20, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33}));
    EXPECT_EQ(erase_head("Birch-8"),     (Head{0x0D, 0x84, 0x10, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33})); // C
    EXPECT_EQ(erase_head("Cedar-4R"),    (Head{0x0D, 0x84, 0xFF, 0x00, 0x10, 0x01, 0x00, 0x10, 0x01})); // D, keeps its data
    EXPECT_EQ(erase_head("Fir-8R")[0],   0x8C);                                                         // G, the long form
    EXPECT_EQ(erase_head("Hazel-2R")[0], 0x8C);                                                         // H 5.8
    EXPECT_EQ(erase_head("Juniper-60Q")[0], 0x8C);
    // clang-format on
}

TEST(EraseFrame, OfAModelWithoutDataFlashNamesNoRange)
{
    const Head head = erase_head("Juniper-60");
    EXPECT_EQ(head[6], 0x00);
    EXPECT_EQ(Head(head.begin() + 3, head.begin() + 6), Head(head.begin() + 6, head.begin() + 9));
}

TEST(EraseStage, TellsItsTime)
{
    Station bench("Juniper-60Q");
    bench.download();
    EXPECT_TRUE(bench.report_says("\nWe are erasing MCU flash...\n ( 00:0"));
    EXPECT_EQ(bench.shell.talk().erase_time.size(), 5U);
}

TEST(EraseStage, TellsTheSerialNumberInChineseFromVersion63On)
{
    Station bench("Juniper-60Q", false);
    bench.download();
    EXPECT_TRUE(bench.report_says("\n正在擦除应用程序区..."));
    EXPECT_TRUE(bench.report_says("\nMCU 出厂序列号: F510C42A07319B"));
}

TEST(EraseStage, TellsNoSerialNumberInEnglish)
{
    Station bench("Juniper-60Q");
    bench.download();
    EXPECT_FALSE(bench.report_says("F510C42A07319B"));
    EXPECT_EQ(bench.shell.talk().chip.serial_number, "F510C42A07319B");
}

TEST(EraseStage, HasThreeTriesInTheOlderProtocol)
{
    Station bench("Birch-8");
    bench.chip.overhear(0x84, 2);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x84), 3);
    EXPECT_TRUE(bench.report_says(" ( 00:1"));
}

TEST(EraseStage, FailsAfterThreeTriesInTheOlderProtocol)
{
    Station bench("Birch-8");
    bench.chip.overhear(0x84, 1000);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x84), 3);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.times_said("\nErasing MCU failed. (End: 08:00:"), 1);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(")\nTry to use the lower baud."));
    bench.expect_a_clean_next_download();
}

TEST(EraseStage, HasOneTryInTheNewerProtocol)
{
    Station bench("Juniper-8");
    bench.chip.overhear(0x84, 1);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x84), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.times_said("\nErasing MCU failed. (End: 08:00:"), 1);
    bench.expect_a_clean_next_download();
}

TEST(EraseStage, FailsInChineseWithItsOwnWords)
{
    Station bench("Juniper-8", false);
    bench.chip.overhear(0x84, 1);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("\n擦除失败 (End: 08:00:"), 1);
    EXPECT_TRUE(
        bench.form.text_box("textMsg").text().ends_with(")\nTry to use the lower baud. / 请尝试用稍低的波特率下载。"));
}

TEST(EraseStage, IsNotBegunWhenTheBaudStageEndedWithAnotherAnswer)
{
    Station bench("Juniper-8");
    bench.chip.noise_before_reply(4, sim::reply_frame(0x8E, {}, true));
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    EXPECT_EQ(bench.times_said("\nErasing MCU failed. (End: 08:00:"), 1);
    bench.expect_a_clean_next_download();
}

TEST(EraseStage, FailsWhenTheAnswerIsARefusal)
{
    Station bench("Juniper-8");
    bench.chip.noise_before_reply(5, sim::reply_frame(0x01, {}, true));
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.chip.frame_count(0x84), 1);
    EXPECT_EQ(bench.chip.frame_count(0x00), 0);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    bench.expect_a_clean_next_download();
}

TEST(EraseStage, IsStoppedByTheUser)
{
    Station bench("Birch-8");
    bench.chip.overhear(0x84, 1000);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::speed_set, [&bench] { bench.press_stop_after_ms(2000); });
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    bench.expect_a_clean_next_download();
}

TEST(EraseStage, LeavesTheDataFlashWhereTheChipKeepsIt)
{
    sim::ChipSetup setup = setup_of("Juniper-32Q");
    setup.options[8] = 0xFF;
    Station bench(setup);
    const auto data = Bench::pattern(0x400, 9);
    bench.chip.preset_flash(0x9000, data);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0x9000, 0x93FF), data);
}

TEST(EraseStage, TakesTheDataFlashWithItWhereTheChipDoesNotKeepIt)
{
    sim::ChipSetup setup = setup_of("Juniper-32Q");
    setup.options[8] = 0xFD;
    Station bench(setup);
    bench.chip.preset_flash(0x9000, Bench::pattern(0x400, 9));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0x9000, 0x93FF), std::vector<std::uint8_t>(0x400, 0xFF));
}

TEST(EraseStage, IsLeftOutForTheVeryFirstFirmware)
{
    sim::ChipSetup setup = setup_of("Birch-8");
    setup.version = 0x02;
    Station bench(setup, false);
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    EXPECT_FALSE(bench.report_says("正在擦除应用程序区"));
}
