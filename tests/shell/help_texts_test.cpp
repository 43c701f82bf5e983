// The help buttons: each has its box in both languages.
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"

#include "catalog/ranges.h"
#include "form/main_form.h"
#include "shell/events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vrk;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

struct HelpBench {
    explicit HelpBench(bool english)
        : bench(any_chip(), nullptr, english)
    {
    }
    static sim::ChipSetup any_chip()
    {
        McuTable table;
        load_mcu_tables(table, false);
        return chip_setup_of(table, "Juniper-60Q").value();
    }
    MessageBox box_of(Control& button)
    {
        bench.dialogs.shown.clear();
        EXPECT_EQ(click(bench.shell, button), Touch::taken);
        EXPECT_EQ(bench.dialogs.shown.size(), 1U);
        return bench.dialogs.shown.empty() ? MessageBox{} : bench.dialogs.shown[0].box;
    }

    Rehearsal bench;
    MainForm& form = bench.shell.form;
};

} // namespace

TEST(HelpOnTheCustomDownload, HasSixPointsInChinese)
{
    HelpBench bench(false);
    const MessageBox box = bench.box_of(bench.form.comHelp[0]);
    EXPECT_EQ(box.title, "自定义下载帮助");
    EXPECT_THAT(box.text, StartsWith("1.首先在用户应用程序中添加接收自定义下载命令的程序\n2."));
    EXPECT_THAT(box.text, HasSubstr("\n3.软复位到系统ISP区命令:MOV ISP_CONTR,#60H;ISP_CONTR地址在E7H\n4."));
    EXPECT_THAT(box.text, HasSubstr("\n5."));
    EXPECT_THAT(box.text, HasSubstr("\n6."));
    EXPECT_THAT(box.text,
        HasSubstr("  a)如自定义下载不需P1.0/P1.1=0/0 则在软复位到ISP程序区之前\n"
                  "    先将上电标志位POF清为0. \n"
                  "  b)如自定义下载需P1.0/P1.1=0/0 则在软复位到ISP程序区之前\n"
                  "    应保持上电标志位POF置为1\n"));
    EXPECT_THAT(box.text, EndsWith("\n                         按确定继续"));
    EXPECT_EQ(box.icon, BoxIcon::information);
}

TEST(HelpOnTheCustomDownload, BeginsWithItsProgramInEnglish)
{
    HelpBench bench(true);
    const MessageBox box = bench.box_of(bench.form.comHelp[0]);
    EXPECT_THAT(box.text,
        StartsWith(
            "1.  Add a program which contains self-defined program command into the user application program\n"));
    EXPECT_THAT(box.text, HasSubstr("MOV ISP_CONTR,#60H"));
    EXPECT_THAT(box.text, HasSubstr("\n6. "));
}

TEST(HelpOnWords, TellsWhatAColdStartIsAndIspAndIap)
{
    HelpBench chinese(false);
    const MessageBox box = chinese.box_of(chinese.form.comHelp[1]);
    EXPECT_EQ(box.title, "VRK-ISP") << "it has no title of its own";
    EXPECT_THAT(box.text, StartsWith("    冷启动: 单片机彻底没电 , 给其上电复位称为冷启动。\n"));
    EXPECT_THAT(box.text, HasSubstr("滤波电容"));
    EXPECT_THAT(box.text, HasSubstr("\n    ISP: 凡能实现在用户系统上直接更新单片机内部程序的功能就叫ISP。\n"));
    EXPECT_THAT(box.text,
        EndsWith("\n    IAP:凡用户程序运行时，能将内部部分专用 Flash 当作 EEPROM 使用,\n"
                 "实现停电后保存数据的功能，就叫 IAP。"));

    HelpBench english(true);
    EXPECT_THAT(english.box_of(english.form.comHelp[1]).text,
        StartsWith(
            "Cold Start: when a MCU has no any electricity properly, powering up the MCU is called Cold Start.\n"));
}

TEST(HelpOnTheBoard, ShowsItsLampsInEachState)
{
    HelpBench english(true);
    const MessageBox box = english.box_of(english.form.com_TJXZ_help);
    EXPECT_THAT(box.text, StartsWith("1  Functions: Off-Line program board can program without computer\n"));
    EXPECT_THAT(box.text, HasSubstr("☆○○○○○☆  Connecting\n"));
    EXPECT_THAT(box.text, HasSubstr("☆●●●●●☆  Success\n"));
    EXPECT_THAT(box.text, EndsWith("●○○○○○○  Wrong MCU type"));

    HelpBench chinese(false);
    EXPECT_THAT(chinese.box_of(chinese.form.com_TJXZ_help).text, HasSubstr("●●●●●●●  数量已用完, 拒绝下载\n"));
}

TEST(HelpOnTheTerminal, TellsItsLimits)
{
    HelpBench english(true);
    const std::string text = english.box_of(english.form.comDebugHelp[0]).text;
    EXPECT_THAT(text, HasSubstr("256000"));
    EXPECT_THAT(text, HasSubstr("need hardware support"));
    EXPECT_THAT(text, HasSubstr("62K"));
    EXPECT_THAT(text, HasSubstr("cut to 32K"));
    EXPECT_THAT(text, HasSubstr("The Enter key and Chinese characters can not be sent this way"));
    EXPECT_THAT(text, HasSubstr("Resume Main Window"));

    HelpBench chinese(false);
    EXPECT_THAT(chinese.box_of(chinese.form.comDebugHelp[0]).text, HasSubstr("恢复主窗体"));
}

TEST(HelpOnTheMonitor, TellsOfEachPage)
{
    HelpBench english(true);
    EXPECT_THAT(english.box_of(english.form.comDebugHelp[1]).text, HasSubstr("special function registers"));
    EXPECT_THAT(english.box_of(english.form.comDebugHelp[2]).text, HasSubstr("external RAM"));

    HelpBench chinese(false);
    const std::string registers = chinese.box_of(chinese.form.comDebugHelp[1]).text;
    EXPECT_THAT(registers, HasSubstr("直接、间接寻址的 256 字节 RAM"));
    EXPECT_THAT(registers, HasSubstr("发送继续运行命令"));
    EXPECT_THAT(chinese.box_of(chinese.form.comDebugHelp[2]).text, HasSubstr("Debug_xdata"));
}

TEST(HelpOnProjects, IsATextOfSevenPoints)
{
    HelpBench chinese(false);
    const MessageBox box = chinese.box_of(chinese.form.Command1);
    EXPECT_EQ(box.title, "VRK 工程文件使用说明");
    EXPECT_THAT(box.text, HasSubstr("\n 7、批量下载时点击“Re-Download/重复下载”按钮可以提高工作效率。\n"));
}

TEST(Help, WaitsForTheEndOfASequence)
{
    HelpBench bench(true);
    bench.bench.shell.running = true;
    EXPECT_EQ(click(bench.bench.shell, bench.form.comHelp[0]), Touch::busy) << "a box would hold it up";
    bench.bench.shell.running = false;
}

TEST(About, NamesProgramAndVersion)
{
    HelpBench bench(true);
    const MessageBox box = bench.box_of(bench.form.mnuAbout);
    EXPECT_THAT(box.text, StartsWith("VRK-ISP\nVersion "));
}
