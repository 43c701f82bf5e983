// The wait for power: a hand at the switch that may be slow, a page of advice, and what noise on the line does to it.
#include "bench.h"

#include "session/frame.h"
#include "session/guidance.h"
#include "shell/screen_report.h"

using namespace vrk;

namespace {

constexpr const char* page_in_english = "\nConnection is failed. Please try:"
                                        "\n 1. Click ISP-Programmig button in Power-Down mode, "
                                        "\n    then Power-Up"
                                        "\n 2. Stop programming, choose another RS-232 port,"
                                        "\n    check the connection line"
                                        "\n 3. Connect P1.0/P1.1 to ground, then supply target"
                                        "\n    MCU power."
                                        "\n 4. Check external clock connection."
                                        "\n 5. Update VRK-ISP.exe software"
                                        "\n 6. MCU might not have ISP code inside, "
                                        "\n    or the MCU has been damaged."
                                        "\n 7. If using USB-to-RS232 line, it might not"
                                        "\n    be compatible. We can help you buy a compatible"
                                        "\n    USB-to-RS232 line."
                                        "\n"
                                        "\n        It is still in connection state,"
                                        "\n        please supply target MCU power...";
constexpr const char* page_in_chinese = "\nChinese:连接失败，请尝试以下操作："
                                        "\n 1.在单片机停电状态下，点下载按钮，再给单片机上电"
                                        "\n 2.停止下载，重新选择 RS-232 串口, 接好电缆"
                                        "\n 3.可能需要先将 P1.0/P1.1 短接到地"
                                        "\n 4.可能外部时钟未接"
                                        "\n 5.因 PLCC、PQFP 转换座引线过长而引起时钟不振荡，请"
                                        "\n   调整参数"
                                        "\n 6.可能要升级电脑端的 VRK-ISP.exe 软件"
                                        "\n 7.若仍然不成功，可能 MCU/单片机内无 ISP 系统引导码，"
                                        "\n   或需退回升级，或 MCU 已损坏"
                                        "\n 8.若使用 USB 转 RS-232 串口线下载，可能会遇到不兼容"
                                        "\n   的问题，可以让我们帮助购买兼容的 USB 转 RS-232 "
                                        "\n   串口线"
                                        "\n"
                                        "\n 仍在连接中, 请给 MCU 上电...";
constexpr const char* page_in_chinese_to_user_code = "\n连接失败，请尝试以下操作："
                                                     "\n 1.重新选择 RS-232 串口, 接好电缆，打开电源。"
                                                     "\n 2.检查波特率、奇偶位、数据位、停止位是否正确。"
                                                     "\n 3.因 PLCC、PQFP 转换座引线过长而引起时钟不振荡，请调整参数。"
                                                     "\n 4.可能要升级电脑端的 VRK-ISP.exe 软件。"
                                                     "\n 5.若仍然不成功，可能 MCU/单片机内无 ISP 系统引导码，"
                                                     "\n   或需退回升级，或 MCU 已损坏。"
                                                     "\n 6.若使用 USB 转 RS-232 串口线下载，可能会遇到不兼容"
                                                     "\n   的问题，可以让我们帮助购买兼容的 USB 转 RS-232 "
                                                     "\n   串口线"
                                                     "\n"
                                                     "\n 仍在连接中, 请给 MCU 上电...";

struct Waiting : Bench {
    explicit Waiting(bool english = true)
        : Bench("Juniper-8", english)
    {
        open_code(pattern(0x300));
        form.option("optBeepNo").set_value(true);
        press_download();
    }
};

void wait_for_guidance_of_user_code(Bench& bench)
{
    Session session(bench.loop, bench.shell.port, bench.shell.mcu_table, bench.shell.selected, {});
    session.demo_mode = true;
    ScreenReport report(bench.shell);
    const Guidance guidance(session, report);
    bench.run_for_ms(4400);
}

} // namespace

TEST(PowerUp, BeforeFourSecondsBringsNoGuidance)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x300));
    bench.form.option("optBeepNo").set_value(true);
    bench.form.list("cobBaudMin").set_text("19200"); // at 2400 the status frame alone takes three tenths of a second
    bench.press_download();
    bench.power_up_after_ms(3900);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_FALSE(bench.report_says("Connection is failed"));
    EXPECT_EQ(bench.dialogs.beeps, 0);
}

TEST(PowerUp, AfterFiveSecondsBringsTheGuidanceAndThenTheUsualMessagesBelowIt)
{
    Waiting bench;
    bench.power_up_after_ms(5000);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says(page_in_english));
    EXPECT_EQ(bench.dialogs.beeps, 2);
    const std::string& report = bench.form.text_box("textMsg").text();
    EXPECT_LT(report.find("please supply target MCU power..."), report.find("MCU Type is: Juniper-8"));
    EXPECT_LT(report.find("MCU Type is: Juniper-8"), report.find("Program OK"));
}

TEST(PowerUp, OfASilentChipIsAwaitedWithoutEndAndTheGuidanceComesOnce)
{
    Waiting bench;
    bench.after_ms(300'000, [&bench] {
        EXPECT_TRUE(bench.shell.running);
        EXPECT_EQ(bench.times_said("Connection is failed"), 1);
        EXPECT_EQ(bench.dialogs.beeps, 2);
        EXPECT_FALSE(bench.form.button("comDownload", 0).enabled());
        EXPECT_TRUE(bench.form.button("comStop_Download").enabled());
    });
    bench.press_stop_after_ms(300'001);
    bench.run_until_idle();
    bench.expect_failed_honestly();
}

TEST(PowerUp, AfterALongWaitIsTakenAsUsual)
{
    Waiting bench;
    bench.power_up_after_ms(240'000);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(Guidance, InChineseHasAPageOfItsOwn)
{
    Waiting bench(false);
    bench.press_stop_after_ms(4400);
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says(page_in_chinese));
    EXPECT_EQ(bench.dialogs.beeps, 3); // two of the guidance, one of the stop
}

TEST(Guidance, OfAChipThatRunsUserCodeSpeaksOfTheLineInChinese)
{
    Bench bench("Juniper-8", false);
    wait_for_guidance_of_user_code(bench);
    EXPECT_EQ(bench.form.text_box("textMsg").text(), page_in_chinese_to_user_code);
}

TEST(Guidance, InEnglishIsTheSamePageForAChipThatRunsUserCode)
{
    Bench bench("Juniper-8");
    wait_for_guidance_of_user_code(bench);
    EXPECT_EQ(bench.form.text_box("textMsg").text(), page_in_english);
}

TEST(Guidance, IsShownAgainByASecondConnection)
{
    Waiting bench;
    bench.press_stop_after_ms(5000);
    bench.run_until_idle();
    bench.press_download();
    bench.after_ms(3900, [&bench] { EXPECT_FALSE(bench.report_says("Connection is failed")); });
    bench.press_stop_after_ms(5000);
    bench.run_until_idle();
    EXPECT_EQ(bench.times_said("Connection is failed"), 1);
}

TEST(Guidance, DoesNotComeAfterAStopBeforeFourSeconds)
{
    Waiting bench;
    bench.press_stop_after_ms(3500);
    bench.run_until_idle();
    bench.run_for_ms(10'000);
    EXPECT_FALSE(bench.report_says("Connection is failed"));
    EXPECT_TRUE(bench.report_says("Operation stopped. "));
    EXPECT_EQ(bench.dialogs.beeps, 1);
}

TEST(Guidance, LeavesTheCaretAtItsEnd)
{
    Waiting bench;
    bench.after_ms(4400, [&bench] {
        EXPECT_TRUE(bench.report_says("Connection is failed"));
        EXPECT_EQ(
            bench.form.text_box("textMsg").sel_start(), static_cast<int>(bench.form.text_box("textMsg").text().size()));
    });
    bench.press_stop_after_ms(4500);
    bench.run_until_idle();
}

TEST(SyncBytes, GoOutAsAPairEachTenMilliseconds)
{
    Waiting bench;
    bench.chip.keep_silent();
    bench.power_up_after_ms(0);
    sim::EventLog log;
    bench.after_ms(100, [&] { bench.wire.log = &log; });
    bench.after_ms(1100, [&] { bench.wire.log = nullptr; });
    bench.press_stop_after_ms(1200);
    bench.run_until_idle();
    EXPECT_NEAR(static_cast<double>(log.count()), 200.0, 4.0);
}

TEST(Noise, BeforeTheCallDoesNotHurt)
{
    Waiting bench;
    const std::uint8_t noise[] = {0x00, 0xFF, 0x12, 0x16, 0x46, 0x55};
    bench.after_ms(200, [&] { bench.wire.noise_to_tool(noise); });
    bench.after_ms(300, [&] { bench.wire.noise_to_target(noise); });
    bench.power_up_after_ms(500);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(Noise, ThatLooksLikeTheBeginOfAFrameCostsOneStatusFrameAndNoMore)
{
    Waiting bench;
    const std::uint8_t noise[] = {0x68, 0x00, 0x05};
    bench.after_ms(200, [&] { bench.wire.noise_to_tool(noise); });
    bench.power_up_after_ms(500);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(Noise, ThatPromisesTheLongestFrameHasBeenSwallowedAfterAFewStatusFrames)
{
    Waiting bench;
    const std::uint8_t noise[] = {0x68, 0x00, 0xFF};
    bench.after_ms(200, [&] { bench.wire.noise_to_tool(noise); });
    bench.power_up_after_ms(500);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(Noise, InFrontOfTheStatusFrameIsDropped)
{
    Waiting bench;
    bench.chip.noise_before_reply(1, {0x00, 0xFF, 0x46, 0x00});
    bench.power_up_after_ms(500);
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
}

TEST(Noise, OnTheWayToTheChipDuringTheCallDelaysItOnly)
{
    Waiting bench;
    const std::uint8_t noise[] = {0x12, 0x46, 0xB9, 0x00};
    bench.power_up_after_ms(500);
    bench.after_ms(520, [&] { bench.wire.noise_to_target(noise); });
    bench.run_until_idle();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_code());
}
