// The order of one download from the click to the result: what is refused, what is said, what is counted.
#include "download/frame_tape.h"

using namespace vrk;

namespace {

struct Station : Bench {
    explicit Station(const char* model = "Juniper-8", bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(0x300));
    }
};

// Milliseconds from the last answer of the programming stage to the first word of success.
std::int64_t settle_ms(const char* max_baud, const char* min_baud)
{
    Station bench;
    bench.form.list("cobBaudMax").set_text(max_baud);
    bench.form.list("cobBaudMin").set_text(min_baud);
    std::int64_t ended_us = 0;
    std::int64_t said_us = 0;
    bench.when(sim::Chip::State::code_ended, [&] { ended_us = bench.loop.now_us(); });
    bench.loop.before_sleep = [&] {
        if (said_us == 0 && bench.report_says("Program OK"))
            said_us = bench.loop.now_us();
        return false;
    };
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    return (said_us - ended_us) / 1000;
}

} // namespace

TEST(Download, WithNoFileOpenShowsTheBoxAndLeavesTheButtonsAlone)
{
    Bench bench("Juniper-8");
    bench.press_download();
    bench.run_until_idle();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "    Please open code file.   ");
    EXPECT_FALSE(bench.form.button("comStop_Download").enabled());
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_EQ(bench.form.text_box("textMsg").text(), "");
    EXPECT_EQ(panel_state(bench.shell), 0);
}

TEST(Download, WithNoFileOpenAsksInChinese)
{
    Bench bench("Juniper-8", false);
    bench.press_download();
    bench.run_until_idle();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "    Please open code file./请打开文件。    ");
}

TEST(Download, LocksThePanelWhileItRunsAndFreesItAtItsEnd)
{
    Station bench;
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.after_ms(100, [&bench] {
        EXPECT_EQ(panel_state(bench.shell), 1);
        EXPECT_FALSE(bench.form.button("comDownload", 0).enabled());
        EXPECT_FALSE(bench.form.button("comDownload", 1).enabled());
        EXPECT_TRUE(bench.form.button("comStop_Download").enabled());
        EXPECT_FALSE(bench.form.button("comLoadFile").enabled());
        EXPECT_FALSE(bench.form.text_box("txtDevice").enabled());
        EXPECT_FALSE(bench.form.button("comLoadDataFile").enabled());
    });
    bench.run_until_idle();
    EXPECT_EQ(panel_state(bench.shell), 0);
    EXPECT_TRUE(bench.form.button("comLoadFile").enabled());
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_FALSE(bench.shell.port.is_open());
}

TEST(Download, OfALockedPanelKeepsItLocked)
{
    Station bench;
    set_locked(bench.shell, true);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.after_ms(100, [&bench] { EXPECT_EQ(panel_state(bench.shell), 3); });
    bench.run_until_idle();
    EXPECT_EQ(panel_state(bench.shell), 2);
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_FALSE(bench.form.button("comLoadFile").enabled());
}

TEST(Download, PressedTwiceRunsOnce)
{
    Station bench;
    bench.press_download();
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.chip.power_ups(), 1);
}

TEST(Success, IsSaidCountedAndKept)
{
    Station bench;
    bench.download();
    EXPECT_TRUE(
        bench.form.text_box("textMsg").text().find("\nProgram OK\nVerify  OK ( Total: 00:0") != std::string::npos);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(" )\nEncrypt OK."));
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.shell.platform.settings.get("Settings", "Write_OK_Count", ""), "1");
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_EQ(bench.chip.state(), sim::Chip::State::user_code);
}

TEST(Success, IsSaidInChineseWithBothTimes)
{
    Station bench("Juniper-8", false);
    bench.download();
    const std::string& report = bench.form.text_box("textMsg").text();
    const std::size_t at = report.find("\nProgram OK / 下载 OK\nVerify  OK / 校验 OK \nerase times/擦除时间 :  00:0");
    EXPECT_NE(at, std::string::npos);
    EXPECT_NE(report.find("\nprogram times/下载时间: 00:0", at), std::string::npos);
    EXPECT_TRUE(report.ends_with("\nEncrypt OK/ 已加密"));
}

TEST(Success, IsSilentWhereNoBeepIsWanted)
{
    Station bench;
    bench.form.option("optBeepNo").set_value(true);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.dialogs.beeps, 0);
}

TEST(Success, GoesOnFromTheCountThatStandsThere)
{
    Station bench;
    bench.form.text_box("txtWrite_OK_Count").set_text("41");
    bench.download();
    EXPECT_EQ(bench.count(), 42);
}

TEST(SettleTime, IsASecondWhereBothBaudsAreEqual) { EXPECT_GE(settle_ms("9600", "9600"), 1000); }

TEST(SettleTime, IsATenthOfASecondOtherwise)
{
    EXPECT_GE(settle_ms("115200", "2400"), 100);
    EXPECT_LT(settle_ms("115200", "2400"), 200);
}

// Four characters are compared with the whole text.
TEST(SettleTime, IsATenthOfASecondAlsoWhereBothAre115200) { EXPECT_LT(settle_ms("115200", "115200"), 200); }

TEST(BlockGuard, StopsTheDownloadIntoTheOldestSeries)
{
    Station bench("Alder-64");
    bench.shell.option_byte_text = "0,0,1";
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(
        "\nBecause Block1 to write Block0 is disable, so program can not continue."));
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    EXPECT_FALSE(bench.shell.talk().chip.target_ok);
    bench.shell.option_byte_text = "0,0,0";
    bench.expect_a_clean_next_download();
}

TEST(BlockGuard, SpeaksChinese)
{
    Station bench("Alder-64", false);
    bench.shell.option_byte_text = "0,0,1";
    bench.download();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with(
        "\nChinese:因为由 block1 对 block0 编程已被禁止, 所以不能继续下载程序。"));
}

TEST(BlockGuard, DoesNotBiteWhereBlocksAreLarger)
{
    Station bench("Birch-8");
    bench.shell.option_byte_text = "0,0,1";
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
}

TEST(PlanOverflow, IsSaidAndWhatFitsIsProgrammed)
{
    Station bench("Cedar-5");
    bench.shell.code_buffer.view_high = 0x1500;
    bench.form.option("optBeepNo").set_value(true);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_TRUE(
        bench.report_says("\nThe Program Code and EEPROM data is too big.\nThe exceeding part won't program.\n"));
}

TEST(PlanOverflow, SpeaksChinese)
{
    Station bench("Cedar-5", false);
    bench.shell.code_buffer.view_high = 0x1500;
    bench.download();
    EXPECT_TRUE(bench.report_says("\n程序文件超出此 MCU 固件下载范围, 超出部分不下载。 \n"));
}

TEST(OlderProtocol, TellsFiveTimesThatTheToolIsReady)
{
    Station bench("Birch-8");
    FrameTape tape(bench);
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(0x80), 5);
    const std::vector<std::uint8_t> begin = {0x8F, 0x8E, 0x80, 0x80, 0x80, 0x80, 0x80, 0x84, 0x00};
    const auto codes = tape.codes();
    EXPECT_EQ(std::vector<std::uint8_t>(codes.begin(), codes.begin() + 9), begin);
    EXPECT_EQ(codes.back(), 0x82);
}

TEST(NewerProtocol, HasItsOrderOfFrames)
{
    Station bench;
    FrameTape tape(bench);
    bench.download();
    const std::vector<std::uint8_t> all = {
        0x50, 0x8F, 0x8E, 0x84, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x69, 0x8D, 0x50, 0x82};
    EXPECT_EQ(tape.codes(), all);
}

TEST(TwoRuns, OfTheSameDownloadAreTheSameByteForByte)
{
    const auto run = [] {
        Station bench("Juniper-60Q");
        sim::EventLog log;
        bench.wire.log = &log;
        bench.chip.refuse_block(0x200, 1);
        bench.download();
        EXPECT_TRUE(bench.shell.succeeded);
        bench.wire.log = nullptr;
        log.add(bench.loop.now_us(), "end", static_cast<std::uint64_t>(bench.count()));
        return std::pair(log.hash(), log.count());
    };
    const auto first = run();
    EXPECT_EQ(first, run());
    EXPECT_GT(first.second, 1000U);
}

// A time server may set the wall clock back by a day in the middle of a chip: "Total: -1439:-56".
TEST(Durations, AreNotThoseOfTheWallClock)
{
    Station bench("Birch-8");
    bench.when(sim::Chip::State::speed_set, [&bench] { bench.loop.turn_wall_clock(-86400); });
    bench.when(sim::Chip::State::writing, [&bench] { bench.loop.turn_wall_clock(-86400); });
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Verify  OK ( Total: 00:0"));
    EXPECT_TRUE(bench.shell.talk().erase_time.starts_with("00:0")) << bench.shell.talk().erase_time;
}
