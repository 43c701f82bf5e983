// What the help buttons tell. Plain texts: a user reads them in a box beside what they are about.
#pragma once

#include "shell/shell.h"

#include "report/text.h"

namespace vrk {

enum class Help {
    project, // what project files are for
    custom_download, // what user code has to do for it
    words, // cold start, ISP, IAP
    board, // the off-line board and its lamps
    terminal,
    registers, // the monitor's two pages
    memory,
};

void show_help(Shell& shell, Help help);
void comHelp_Click(Shell& shell, int index);
void comDebugHelp_Click(Shell& shell, int index);

// The page that tells how a target is wired.
// clang-format off
inline constexpr Text hardware_text = {
    "串口:\n"
    "  电脑的 TxD 接单片机的 RxD (P3.0), 电脑的 RxD 接单片机的 TxD (P3.1), 两边的地线相连。\n"
    "  RS-232 串口需要电平转换芯片; USB 转串口模块的电平要与单片机的电源电压一致。\n"
    "电源:\n"
    "  下载程序只在单片机上电后的一小段时间内等待电脑, 所以先点下载按钮, 再给单片机上电。\n"
    "  单片机必须彻底断电: 滤波电容要放完电, 串口线也可能通过 I/O 口给单片机供电。\n"
    "  如断不干净, 在 TxD, RxD 上各串一个 300 欧姆左右的电阻, 或先拔下串口线。\n"
    "时钟和复位:\n"
    "  使用外部晶体的型号, 晶体要能起振; 复位脚不可一直处于复位状态。\n"
    "  如选择了下次冷启动后 P1.0/P1.1=0/0 才可下载, 上电时 P1.0 和 P1.1 要接地。\n"
    "RS-485:\n"
    "  收发控制脚和它的电平在选项中设置, 下载程序用该脚控制方向。",
    "Serial line:\n"
    "  TxD of the computer goes to RxD (P3.0) of the MCU, RxD to TxD (P3.1), and ground to ground.\n"
    "  An RS-232 port needs a level converter; a USB adapter has to work at the supply voltage of the MCU.\n"
    "Power:\n"
    "  The boot loader listens for a moment after power-up only: press the button first, then power up the MCU.\n"
    "  Before that the MCU must be without power altogether, its capacitors discharged. The serial\n"
    "  lines can feed it through its pins. If they do, put some 300 ohms into TxD and RxD, or unplug the line.\n"
    "Clock and reset:\n"
    "  Models that run on a crystal need one that oscillates. The reset pin must not be held in reset.\n"
    "  If a download was set to need P1.0/P1.1 = 0/0, both pins have to be at ground at power-up.\n"
    "RS-485:\n"
    "  The pin that turns the transceiver round, and its level, are set among the options; the boot loader uses it.",
};
// clang-format on

} // namespace vrk
