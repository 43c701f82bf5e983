#include "shell/help_texts.h"

#include "shell/board_lamps.h"
#include "shell/messages.h"

#include <algorithm>

namespace vrk {

namespace {

struct HelpText {
    Help help;
    Text title; // empty: the program's name
    Text text;
};

// clang-format off
constexpr Text on_the_monitor = {
    "使用方法:\n"
    " 1. 在用户程序中加入 Debug_SFR 或 Debug_xdata 子程序, 在需要观察的地方调用。\n"
    " 2. 将程序下载到单片机, 串口助手的波特率设为与用户程序相同, 点击“打开串口”。\n"
    " 3. 单片机执行到该子程序时送出数据并停下来等待, 数据显示在这里; 与上次不同的值突出显示。\n"
    " 4. 数据正确, 本软件自动回发应答, 单片机继续运行。数据有错, 最多请求重发 3 次。\n"
    "“发送继续运行命令”: 让正在等待的单片机继续运行。\n"
    "“停止 Debug_SFR, Debug_xdata 回发信号”打勾: 本软件不再应答, 单片机停在该处,\n"
    "    直到点击“发送继续运行命令”。\n"
    "“清接收区”: 清除显示的值。\n"
    "串口助手同时显示收到的数据; 开始下载时串口自动关闭。",
    "How to use it:\n"
    " 1. Put the routines Debug_SFR or Debug_xdata into your program and call them where you want to look.\n"
    " 2. Download the program, set the baud of the COM Tool to that of your program, and click \"Open COM\".\n"
    " 3. Where the MCU comes to such a call it sends its data and waits. They are shown here; what has changed\n"
    "    since the last time stands out.\n"
    " 4. Good data are acknowledged and the MCU runs on. Damaged data are asked for again, up to 3 times.\n"
    "\"Continue\" lets an MCU that waits run on.\n"
    "\"No answer to Debug_SFR, Debug_xdata\": nothing is acknowledged, and the MCU stays where it is until you click\n"
    "    \"Continue\".\n"
    "\"Clear\" empties what is shown.\n"
    "The COM Tool shows the same bytes as they come in. A download closes the port.",
};

constexpr HelpText texts[] = {
    { Help::project, { "VRK 工程文件使用说明", "How to use VRK project files" }, {
        "    当需要下载时，您或您的同事可能会记不清 MCU 的型号、应用程序代码文件或其它事项，使用工程\n"
        "文件可以消除这方面的烦恼。\n"
        " 1、按照 X 产品下载应用程序的要求，设置 MCU 型号、打开应用程序文件、设置各选项和自动增量。\n"
        " 2、点击“保存工程文件”按钮，给工程文件起一个与 X 产品有关的名字并保存。\n"
        " 3、以后下载 X 产品时，只需点击“打开工程文件”按钮，选择这个工程文件。\n"
        " 4、MCU 型号、各选项和两个缓冲区的内容都保存在工程文件中，不再需要原来的应用程序文件。\n"
        " 5、打开工程文件后，参数和选项被锁定，可以避免误操作。\n"
        " 6、如需修改，点击“解除参数和选项锁定”按钮，修改后重新保存工程文件。\n"
        " 7、批量下载时点击“Re-Download/重复下载”按钮可以提高工作效率。\n"
        "    当天下载工作结束时，要将自动增量“下一个值”记录下来，以便在下一次打开工程文件时修改。",
        "    When programing, you or your colleage may not remember the MCU type, the file name or other\n"
        "things of a product. A project file remembers them for you.\n"
        " 1. Make everything ready for product X: select the MCU type, open the code file, set the options and the\n"
        "    automatic increment.\n"
        " 2. Click \"Save Project\" and give the project file a name that tells of product X.\n"
        " 3. When product X is to be programmed again, click \"Open Project\" and choose this file.\n"
        " 4. MCU type, options and the content of both buffers are in the project file: the code file itself is not\n"
        "    needed any more.\n"
        " 5. An opened project locks all parameters and options, so that nobody changes them by mistake.\n"
        " 6. To change something click \"Unlock Parameters and Options\"; save the project again afterwards.\n"
        " 7. For a batch, \"Re-Download\" makes work faster.\n"
        "    At the end of a day's work write down the \"Next Value\" of the automatic increment: it is to be entered\n"
        "when the project file is opened the next time.",
    } },
    { Help::custom_download, { "自定义下载帮助", "Help on the custom download" }, {
        "1.首先在用户应用程序中添加接收自定义下载命令的程序\n"
        "2.收到自定义下载命令后延时 1 秒, 再软复位到系统ISP区\n"
        "3.软复位到系统ISP区命令:MOV ISP_CONTR,#60H;ISP_CONTR地址在E7H\n"
        "4.第一次用原来的方法(先点下载按钮, 再给单片机上电)下载该应用程序\n"
        "5.如上次下载时设置的是下次冷启动下载不需P1.0/P1.1=0/0, 不必理会上电标志位POF\n"
        "6.如上次下载时设置的是下次冷启动需P1.0/P1.1=0/0 才可下载:\n"
        "  a)如自定义下载不需P1.0/P1.1=0/0 则在软复位到ISP程序区之前\n"
        "    先将上电标志位POF清为0. \n"
        "  b)如自定义下载需P1.0/P1.1=0/0 则在软复位到ISP程序区之前\n"
        "    应保持上电标志位POF置为1\n"
        "                         按确定继续",
        "1.  Add a program which contains self-defined program command into the user application program\n"
        "    It receives the command over the serial port, at the line settings that are chosen here.\n"
        "2.  When the command has come in it waits for 1 second and then resets by software into the boot area.\n"
        "3.  The reset into the boot area: MOV ISP_CONTR,#60H; the address of ISP_CONTR is E7H.\n"
        "4.  Download this application program the old way first: press Download, then power up the MCU.\n"
        "5.  If the last download was set so that the next cold start needs no P1.0/P1.1=0/0, the power-on flag POF\n"
        "    does not matter.\n"
        "6.  If it was set so that the next cold start needs P1.0/P1.1=0/0 for a download:\n"
        "    a) The custom download is to need no P1.0/P1.1=0/0: clear POF to 0 before the reset into the boot area.\n"
        "    b) The custom download is to need P1.0/P1.1=0/0: keep POF at 1 before the reset into the boot area.\n"
        "                         Press OK to continue",
    } },
    { Help::words, {}, {
        "    冷启动: 单片机彻底没电 , 给其上电复位称为冷启动。\n"
        "    短时间断电时, 电源滤波电容上的电可能没有放完, 单片机并没有彻底断电,\n"
        "再上电就不是冷启动, 下载程序不会运行。断电时间要长一些, 或将电容放电。\n"
        "\n"
        "    ISP: 凡能实现在用户系统上直接更新单片机内部程序的功能就叫ISP。\n"
        "\n"
        "    IAP:凡用户程序运行时，能将内部部分专用 Flash 当作 EEPROM 使用,\n"
        "实现停电后保存数据的功能，就叫 IAP。",
        "Cold Start: when a MCU has no any electricity properly, powering up the MCU is called Cold Start.\n"
        "    After a short power failure the filter capacitor of the supply may still be charged. The MCU was not without\n"
        "    power then, powering it up is no cold start, and its boot loader does not run. Leave the power off for longer,\n"
        "    or discharge the capacitor.\n"
        "\n"
        "ISP: in-system programming. The program inside a MCU is updated in the user's own system.\n"
        "\n"
        "IAP: in-application programming. While the user's program runs it uses a part of the internal flash as an EEPROM,\n"
        "    and keeps data in it that outlast a power failure.",
    } },
    { Help::board, {}, {
        "1  功能: 脱机下载板不需要电脑就可以下载程序\n"
        "2  使用方法:\n"
        "    选择单片机型号, 打开程序文件, 设置选项和自动增量; 填写最多下载的数量。\n"
        "    点击“将程序下载到脱机下载板”, 再给脱机下载板上电, 等到下载成功。\n"
        "    脱机下载板接上用户系统即可下载; 每成功一片数量减 1, 数量用完后拒绝下载。\n"
        "    下载过程中部分灯闪烁; 成功后两端的灯闪烁, 中间的灯常亮。\n"
        "3  指示灯 1 到 7, 从左到右 (☆ 闪烁, ● 亮, ○ 灭):\n",
        "1  Functions: Off-Line program board can program without computer\n"
        "2  How to use it:\n"
        "    Select the MCU type, open the code file, set the options and the automatic increment; enter how many MCUs\n"
        "    the board may program at most.\n"
        "    Click \"Write to the Off-Line Board\", then power up the board, and wait until it is told good.\n"
        "    Connected to the user's system the board programs by itself. Each good MCU takes one off the quantity;\n"
        "    when it is used up the board refuses.\n"
        "    During a normal run some lamps flash; after success the two at the ends flash and those between stay lit.\n"
        "3  Lamps 1 to 7, from left to right (☆ flashes, ● lit, ○ dark):\n",
    } },
    { Help::terminal, { "串口助手帮助", "Help on the COM Tool" }, {
        " 1. 选择串口、波特率、校验、数据位和停止位, 点击“打开串口”。发送时串口会自动打开。\n"
        "    波特率 256000 和 128000 需要硬件支持。\n"
        " 2. 接收区可按字符或十六进制显示。接收区最多显示 62K 字符, 超过后截短到 32K;\n"
        "    显示文本太大时请点击“清接收缓冲区”, 计数不变。\n"
        " 3. 发送框: 字符格式原样发送; 十六进制格式每 2 个字符 (0-9, A-F) 一个字节, 之间隔 1 个空格。\n"
        "    “自动发送”按周期反复发送, 再点击一次停止。\n"
        " 4. 在接收区按键, 该字符立即发送。回车键和汉字不能这样发送, 请用发送框。\n"
        " 5. 多字符串发送: 点击序号发送该行, 打勾的行为十六进制。“自动循环发送”依次发送非空的行。\n"
        " 6. 开始下载时串口自动关闭; “下载后打开串口”打勾, 下载成功后自动打开。\n"
        " 7. 点击“收缩主窗体”只留下下载部分; 点击“恢复主窗体”恢复原来的窗体。",
        " 1. Choose the port, baud, parity, data bits and stop bits, and click \"Open COM\". Sending opens the port by itself.\n"
        "    256000 and 128000 baud need hardware support.\n"
        " 2. What comes in is shown as text or as HEX. The display holds 62K characters; beyond that it is cut to 32K.\n"
        "    When the text gets too long click \"Clear Receive\"; the counters stay.\n"
        " 3. The send box: text goes out as it is; in HEX 2 characters (0-9, A-F) are one byte, with a space between two.\n"
        "    \"Repeat Send\" sends it again and again at its cycle, until you click once more.\n"
        " 4. A key pressed in the display is sent at once. The Enter key and Chinese characters can not be sent this way:\n"
        "    use the send box.\n"
        " 5. The list of strings: its number sends a row, a ticked row is HEX. \"Round Send\" sends the rows that are not\n"
        "    empty, in turn.\n"
        " 6. A download closes the port. With \"Open COM after a download\" a good download opens it again.\n"
        " 7. \"Shrink\" leaves nothing but the download group of the main window; \"Resume\" (the Resume Main Window button)\n"
        "    brings all of it back.",
    } },
    { Help::registers, { "Debug_SFR 帮助", "Help on Debug_SFR" }, {
        "    本页显示用户程序送出的特殊功能寄存器, 以及直接、间接寻址的 256 字节 RAM。\n"
        "PSW, ACC, TCON, T2CON, CCON, IE, SP, R1, R0 是调用子程序时的值。\n\n",
        "    This page shows the special function registers and the 256 bytes of directly and indirectly addressed RAM that\n"
        "your program sends. PSW, ACC, TCON, T2CON, CCON, IE, SP, R1 and R0 are those at the call.\n\n",
    } },
    { Help::memory, { "Debug_xdata 帮助", "Help on Debug_xdata" }, {
        "    本页显示用户程序送出的外部 RAM (从地址 0 开始, 最多 1024 字节) 和 EEPROM (最多 512 字节)。\n\n",
        "    This page shows the external RAM (from address 0 on, 1024 bytes at most) and the EEPROM (512 bytes at most)\n"
        "that your program sends.\n\n",
    } },
};
// clang-format on

// One line a state, its lamps drawn as the board's are.
std::string lamps_text(const Shell& shell)
{
    std::string text;
    for (const LampState& state : board_lamp_states()) {
        text += "    ";
        for (const char lamp : state.lamps)
            text += lamp == '*' ? "☆" : lamp == '#' ? "●" : "○";
        text += "  " + std::string{in_language(shell, state.meaning)} + "\n";
    }
    text.pop_back();
    return text;
}

} // namespace

void show_help(Shell& shell, Help help)
{
    const HelpText& row = *std::ranges::find(texts, help, &HelpText::help);
    std::string text{in_language(shell, row.text)};
    if (help == Help::board)
        text += lamps_text(shell);
    if (help == Help::registers || help == Help::memory)
        text += in_language(shell, on_the_monitor);
    show_box(shell, text, in_language(shell, row.title), BoxIcon::information);
}

void comHelp_Click(Shell& shell, int index) { show_help(shell, index == 0 ? Help::custom_download : Help::words); }

void comDebugHelp_Click(Shell& shell, int index)
{
    constexpr Help pages[] = {Help::terminal, Help::registers, Help::memory};
    show_help(shell, pages[index]);
}

} // namespace vrk
