#include "shell/captions.h"

#include "shell/help_texts.h"
#include "shell/messages.h"

#include <algorithm>

namespace vrk {

namespace {

struct CaptionRow {
    std::string_view control;
    int index; // -1: a single control
    Text caption; // of a text box: its hint
};

constexpr std::string_view dump_columns = " 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F ";

// clang-format off
constexpr CaptionRow captions[] = {
//    control                        index   Chinese, English
    { "FrameX",                         0, { "Step1/步骤1: Select MCU Type  选择单片机型号",
                                             "Step1: Select MCU Type" } },
    { "FrameX",                         1, { "Step2/步骤2: Open File / 打开文件(文件范围内未用区域填00)",
                                             "Step2: Open code file and EEPROM file" } },
    { "FrameX",                         2, { "Step3/步骤3: Select COM Port,Max Baud/选择串行口,最高波特率",
                                             "Step3: Select Serial Port and Max and Min Baud" } },
    { "FrameX",                         3, { "Step4/步骤4: Double Speed  设置双倍速, 缺省为普通速度",
                                             "Step4: Options" } },
    { "FrameX",                         4, { "Step5/步骤5: Download/下载  先点下载按钮再MCU上电复位-冷启动",
                                             "Step5: Download. Press the button first, then power up the MCU" } },
    { "Label2",                         0, { "单片机型号:", "MCU Type:" } },
    { "Label2",                         1, { "程序区地址:", "AP Memory Range:" } },
    { "Label2",                         2, { "--", "--" } },
    { "Label2",                         3, { "起始地址(HEX)", "Start address (HEX)" } },
    { "Label2",                         4, { "起始地址(HEX)", "Start address (HEX)" } },
    { "Label2",                         5, { "串口:", "COM:" } },
    { "Command3",                      -1, { "▼", "▼" } },
    { "comOtherPort",                  -1, { "其它...", "Other..." } },
    { "comLoadFile",                   -1, { "打开程序文件", "Open Code File" } },
    { "comLoadDataFile",               -1, { "打开 EEPROM 文件", "Open EEPROM File" } },
    { "cheClearAP_Buffer",             -1, { "打开文件前清0缓冲", "Clear buffer first" } },
    { "cheClearDataBuffer",            -1, { "打开文件前清0缓冲", "Clear buffer first" } },
    { "LabMaxBaud",                    -1, { "最高波特率:", "Max Baud:" } },
    { "Label4",                        -1, { "最低波特率:", "Min Baud:" } },
    { "cheTL",                         -1, { "固定 115200 连接 (TL)", "Fixed 115200 (TL)" } },
    { "Lab_485_pin",                   -1, { "485收发控制:", "RS-485 direction:" } },
    { "Lab__485_logic",                -1, { "控制逻辑:", "Logic:" } },
    { "opt_485_pin",                    0, { "无485", "No RS-485" } },
    { "opt_485_pin",                    1, { "用1个I/O口控制", "Steered by an I/O pin" } },
    { "opt_485_logic",                  0, { "高电平发送,低接收", "High sends, low receives" } },
    { "opt_485_logic",                  1, { "高接收,低发送", "High receives, low sends" } },
    { "Label9",                        -1, { "外部看门狗:", "External watchdog:" } },
    { "opt_External_WDT",               0, { "无", "None" } },
    { "opt_External_WDT",               1, { "用1个I/O口喂狗", "Fed by an I/O pin" } },
    { "opt_ISP_DEMO_WDT",               0, { "无", "None" } },
    { "opt_ISP_DEMO_WDT",               1, { "用1个I/O口喂狗", "Fed by an I/O pin" } },
    { "Label8",                         0, { "RC 频率(MHz)", "RC frequency (MHz)" } },
    { "Label8",                         1, { "RC 频段(MHz)", "RC band (MHz)" } },
    { "Label8",                         2, { "微调和分频", "Trim and divider" } },
    { "Label8",                         3, { "低电压检测值(V)", "Low voltage (V)" } },
    { "Label8",                         4, { "RC 测试目标频率(MHz)", "RC test aims at (MHz)" } },
    { "Frame4",                        -1, { "检测 MCU 选项", "Check MCU options" } },
    { "comReadChipLock",               -1, { "检测 MCU 选项", "Read MCU options" } },
    { "LabLock",                        0, { "MCU 中的选项:", "Options in the MCU:" } },
    { "LabLock",                       15, { "读取不会改变 MCU", "Reading changes nothing in the MCU" } },
    { "comDownload",                    0, { "Download/下载", "Download/下载" } },
    { "comDownload",                    1, { "Re-Download/重复下载", "Re-Download/重复下载" } },
    { "comStop_Download",              -1, { "Stop/停止", "Stop/停止" } },
    { "labWrite_OK_Count",             -1, { "成功计数", "Succeeded" } },
    { "labWrite_Bad_Count",            -1, { "失败计数", "Failed" } },
    { "comClear_OK_Count",             -1, { "Clear", "Clear" } },
    { "Frame16",                       -1, { "提示音和重复下载", "Beep and repeat" } },
    { "Label10",                        0, { "成功后提示音:", "Beep on success:" } },
    { "Label10",                        1, { "重复下载延时:", "Repeat delay:" } },
    { "Label10",                        2, { "秒", "s" } },
    { "optBeepYes",                    -1, { "有", "Yes" } },
    { "optBeepNo",                     -1, { "无", "No" } },
    { "cekReloadFile",                 -1, { "每次下载前重新调入已打开在缓冲区的文件，方便调试使用",
                                             "Reload the opened file before each download" } },
    { "cekReloadFileWhileFileChange",  -1, { "当目标代码发生变化后自动调入文件, 并立即发送下载命令",
                                             "Reload the file when it changes, and download at once" } },
    { "LabFileCheckSum",                0, { "校验和", "Checksum" } },
    { "LabFileCheckSum",                1, { "校验和", "Checksum" } },
    { "Label7",                         0, { "文件缓冲区", "File Buffer" } },
    { "fra_Batch_quantity",            -1, { "工程文件:", "Project File:" } },
    { "comOpenBatchFile",              -1, { "打开工程文件", "Open Project" } },
    { "comSaveBatchFile",              -1, { "保存工程文件", "Save Project" } },
    { "comLockOptions",                -1, { "锁定参数和选项", "Lock Parameters and Options" } },
    { "comUnlockOptions",              -1, { "解除参数和选项锁定", "Unlock Parameters and Options" } },
    { "Command1",                      -1, { "使用说明", "Usage" } },
    { "txtBuffer2",                    -1, { "点击, 当一个字符高亮时可以修改缓冲区",
                                             "Click: a highlighted character can be typed over" } },
    { "tetDataFlash2",                 -1, { "点击, 当一个字符高亮时可以修改缓冲区",
                                             "Click: a highlighted character can be typed over" } },
    { "LabDumpAddress",                 0, { "转到地址", "Go to" } },
    { "LabDumpAddress",                 1, { "转到地址", "Go to" } },
    { "LabDumpFind",                    0, { "查找", "Find" } },
    { "LabDumpFind",                    1, { "查找", "Find" } },
    { "texDumpAddress",                 0, { "十六进制地址, 回车 (Ctrl+G)", "Hexadecimal address, Enter (Ctrl+G)" } },
    { "texDumpAddress",                 1, { "十六进制地址, 回车 (Ctrl+G)", "Hexadecimal address, Enter (Ctrl+G)" } },
    { "texDumpFind",                    0, { "字节 12 AB 或 \"文字\", 回车 (Ctrl+F), 下一个 F3",
                                             "Bytes 12 AB or \"text\", Enter (Ctrl+F), next F3" } },
    { "texDumpFind",                    1, { "字节 12 AB 或 \"文字\", 回车 (Ctrl+F), 下一个 F3",
                                             "Bytes 12 AB or \"text\", Enter (Ctrl+F), next F3" } },
    { "LabEdit_Clew",                  -1, { "You can modify any single highlight character in this buffer.",
                                             "You can modify any single highlight character in this buffer." } },
    { "LabIncrease_Clew",              -1, { "               改变以下参数后请重新打开文件",
                                             "Open the file again after a change of the values below" } },
    { "frmAP_FileIncrease",            -1, { "程序文件自动增量", "Auto Increase of Code File" } },
    { "cheAuto_Increase",              -1, { "启用自动增量", "Enable auto increase" } },
    { "LabAuto_Increase",               0, { "存放地址(HEX)", "Address (HEX)" } },
    { "LabAuto_Increase",               1, { "字节数", "Bytes" } },
    { "LabAuto_Increase",               2, { "下一个值(10进制)", "Next value (decimal)" } },
    { "LabAuto_Increase",               3, { "增量", "Increment" } },
    { "LabAuto_Increase",               4, { "下一个值存储格式:", "Next value is stored as:" } },
    { "optAuto_Increase",               0, { "16进制", "HEX" } },
    { "optAuto_Increase",               1, { "十进制", "BCD" } },
    { "optAuto_Increase",               2, { "ASCII码", "ASCII" } },
    { "frmDtat_FileIncrease",          -1, { "数据文件自动增量", "Auto Increase of EEPROM File" } },
    { "cheData_Auto_Increase",         -1, { "启用自动增量", "Enable auto increase" } },
    { "LabData_Auto_Increase",          0, { "存放地址(HEX)", "Address (HEX)" } },
    { "LabData_Auto_Increase",          1, { "字节数", "Bytes" } },
    { "LabData_Auto_Increase",          2, { "下一个值(10进制)", "Next value (decimal)" } },
    { "LabData_Auto_Increase",          3, { "增量", "Increment" } },
    { "LabData_Auto_Increase",          4, { "下一个值存储格式:", "Next value is stored as:" } },
    { "optData_Auto_Increase",          0, { "16进制", "HEX" } },
    { "optData_Auto_Increase",          1, { "十进制", "BCD" } },
    { "optData_Auto_Increase",          2, { "ASCII码", "ASCII" } },
    { "mnuLog",                        -1, { "记录", "Log" } },
    { "fraLine",                       -1, { "生产线", "Line" } },
    { "cheLedger",                     -1, { "编号取自台账", "Numbers from the ledger" } },
    { "cheRecord",                     -1, { "记录每片芯片", "Record every chip" } },
    { "LabLine",                        0, { "订单", "Order" } },
    { "LabLine",                        1, { "工位", "Station" } },
    { "LabLine",                        2, { "台账", "Ledger" } },
    { "Frame9",                        -1, { "把程序文件缓冲区保存为 .bin 文件", "Save the code buffer to a .bin file" } },
    { "LabStore",                       0, { "起始地址(HEX)", "Start address (HEX)" } },
    { "LabStore",                       1, { "长度(HEX)", "Length (HEX)" } },
    { "comStoreFile",                  -1, { "保存文件", "Save File" } },
    { "Frame8",                        -1, { "自定义下载", "Custom download" } },
    { "LabUserCode",                    0, { "下载命令(HEX)", "Command (HEX)" } },
    { "LabUserCode",                    1, { "波特率", "Baud" } },
    { "LabUserCode",                    2, { "校验", "Parity" } },
    { "LabUserCode",                    3, { "数据位", "Data bits" } },
    { "LabUserCode",                    4, { "停止位", "Stop bits" } },
    { "comSendUserCode",               -1, { "发送自定义命令并下载", "Send Command and Download" } },
    { "comHelp",                        0, { "帮助", "Help" } },
    { "comHelp",                        1, { "冷启动?", "Cold start?" } },
    { "cekReloadFileWhileFileChange1", -1, { "当目标代码发生变化后自动调入文件,并立即发送自定义下载命令",
                                             "Reload the file when it changes, and send the command at once" } },
    { "Frame11",                       -1, { " ISP DEMO 是下载示例程序", " ISP DEMO is an example of a downloader" } },
    { "com_Demo_DownLoad",             -1, { "下载", "Download" } },
    { "com_Demo_Re_DownLoad",          -1, { "重复下载", "Re-Download" } },
    { "com_Demo_Stop",                 -1, { "停止", "Stop" } },
    { "che_Demo_DownLoad",             -1, { "发送自定义下载命令", "Send the custom command first" } },
    { "LabDEMO",                        0, { "下载: 波特率", "Download: baud" } },
    { "LabDEMO",                        1, { "校验", "Parity" } },
    { "LabDEMO",                        2, { "数据位", "Data bits" } },
    { "LabDEMO",                        3, { "停止位", "Stop bits" } },
    { "LabDEMO",                        4, { "命令: 波特率", "Command: baud" } },
    { "LabDEMO",                        5, { "校验", "Parity" } },
    { "LabDEMO",                        6, { "数据位", "Data bits" } },
    { "LabDEMO",                        7, { "停止位", "Stop bits" } },
    { "Frame18",                       -1, { "脱机下载", "Off-Line-ISP" } },
    { "comTJXZ",                       -1, { "将程序下载到脱机下载板", "Write to the Off-Line Board" } },
    { "com_TJXZ_help",                 -1, { "帮助", "Help" } },
    { "Read24C512",                    -1, { "R24", "R24" } },
    { "labTJXZ",                        0, { "脱机下载板最多下载", "The board may program" } },
    { "labTJXZ",                        1, { "片 MCU", "MCUs" } },
    { "labTJXZ",                        2, { "指示灯的含义:", "What its lamps say:" } },
    { "labTJXZ",                        3, { "MCU 管脚数", "Pins of the MCU" } },
    { "che_staple",                     0, { "自动分选机     先上电后点击下载",
                                             "Automatic sorter: power up first, then click" } },
    { "che_staple",                     1, { "仅检查 MCU 选项", "Check the options only" } },
    { "che_staple",                     2, { "忽略<5uA漏电流", "Pass leakage below 5uA" } },
    { "che_staple",                     3, { "忽略<2uA漏电流", "Pass leakage below 2uA" } },
    { "fraAboutHardWare",              -1, { "硬件说明", "The target's hardware" } },
    { "LabAboutHardWare",              -1, hardware_text },
    { "mnuTitle",                       0, { "工具", "Tools" } },
    { "mnuTitle",                       1, { "Language/语言", "Language/语言" } },
    { "mnuTitle",                       2, { "帮助", "Help" } },
    { "mnuTitle",                       3, { "文件", "File" } },
    { "mnuRecentTitle",                 0, { "最近的文件", "Recent files" } },
    { "mnuRecentTitle",                 1, { "最近的工程", "Recent projects" } },
    { "mnuCopyCommandLine",            -1, { "复制为命令行", "Copy as command line" } },
    { "mnuProduction",                 -1, { "生产控件", "Production controls" } },
    { "mnuLanguage",                    0, { "中文", "中文" } },
    { "mnuLanguage",                    1, { "English", "English" } },
    { "mnuAbout",                      -1, { "关于 VRK-ISP", "About VRK-ISP" } },
    { "fraDebug",                      -1, { "串口助手", "COM Tool" } },
    { "optReceiveHex",                  0, { "字符格式显示", "Show as text" } },
    { "optReceiveHex",                  1, { "十六进制显示", "Show as HEX" } },
    { "optHexSend",                     0, { "字符格式发送", "Send as text" } },
    { "optHexSend",                     1, { "十六进制发送", "Send as HEX" } },
    { "che_AutoOpenPort",              -1, { "下载后打开串口", "Open COM after a download" } },
    { "comDebugClear",                  0, { "清接收缓冲区", "Clear Receive" } },
    { "comDebugClear",                  1, { "清接收区", "Clear" } },
    { "comDebugClear",                  2, { "清接收区", "Clear" } },
    { "comDebugSend",                  -1, { "发送", "Send" } },
    { "comDebugHelp",                   0, { "帮助", "Help" } },
    { "comDebugHelp",                   1, { "帮助", "Help" } },
    { "comDebugHelp",                   2, { "帮助", "Help" } },
    { "che_DebugTime",                 -1, { "每行前加时间", "Time per line" } },
    { "optDebugLog",                    0, { "原始字节", "Bytes" } },
    { "optDebugLog",                    1, { "文本加时间", "Lines with time" } },
    { "comDebugFind",                  -1, { "查找", "Find" } },
    { "che_DebugDTR",                  -1, { "DTR", "DTR" } },
    { "che_DebugRTS",                  -1, { "RTS", "RTS" } },
    { "comComp",                       -1, { "比较", "Compare" } },
    { "LabDebug",                       0, { "串口", "COM" } },
    { "LabDebug",                       1, { "波特率", "Baud" } },
    { "LabDebug",                       2, { "数据位", "Data bits" } },
    { "LabDebug",                       3, { "校验", "Parity" } },
    { "LabDebug",                       4, { "停止位", "Stop bits" } },
    { "LabDebug",                       5, { "字符编码", "Encoding" } },
    { "LabDebug",                       6, { "周期(ms)", "Cycle (ms)" } },
    { "LabDebug",                       7, { "间隔(ms)", "Pause (ms)" } },
    { "Frame24",                       -1, { "多字符串发送, 打勾为十六进制", "Strings; ticked: HEX" } },
    { "Frame21",                       -1, { "Debug_SFR", "Debug_SFR" } },
    { "Frame22",                       -1, { "Debug_xdata", "Debug_xdata" } },
    { "Label23",                        0, { "特殊功能寄存器", "Special function registers" } },
    { "Label23",                        1, { "直接、间接寻址 RAM", "Direct and indirect RAM" } },
    { "Label23",                        2, { "外部 RAM", "External RAM" } },
    { "Label23",                        3, { "EEPROM", "EEPROM" } },
    { "Label24",                       -1, { "地址  0  1  2  3  4  5  6  7", "Addr  0  1  2  3  4  5  6  7" } },
    { "Label26",                       -1, { "地址  0  1  2  3  4  5  6  7", "Addr  0  1  2  3  4  5  6  7" } },
    { "Label27",                       -1, { "地址  0  1  2  3  4  5  6  7", "Addr  0  1  2  3  4  5  6  7" } },
    { "comDebugContinue",               1, { "发送继续运行命令", "Continue" } },
    { "comDebugContinue",               2, { "发送继续运行命令", "Continue" } },
    { "che_disable_Debug_SFR_232",     -1, { "停止 Debug_SFR, Debug_xdata 回发信号",
                                             "No answer to Debug_SFR, Debug_xdata" } },
};
// What stands in text boxes that nobody types into.
constexpr CaptionRow heads[] = {
    { "txtBufferAddress",               0, { "地 址", "Address" } },
    { "txtBufferAddress",               1, { dump_columns, dump_columns } },
    { "txtBufferAddress",               2, { "地 址", "Address" } },
    { "txtBufferAddress",               3, { dump_columns, dump_columns } },
};
// clang-format on

} // namespace

void apply_captions(Shell& shell)
{
    for (const CaptionRow& row : captions) {
        Control* control = shell.controls.find(row.control, row.index);
        if (auto* captioned = dynamic_cast<CaptionControl*>(control))
            captioned->set_caption(in_language(shell, row.caption));
        else if (auto* box = dynamic_cast<TextBox*>(control))
            box->set_hint(in_language(shell, row.caption));
    }
    for (const CaptionRow& row : heads) {
        if (auto* box = dynamic_cast<TextBox*>(shell.controls.find(row.control, row.index)))
            box->set_text(in_language(shell, row.caption));
    }
}

const Text* caption_of(const Shell& shell, const Control& control)
{
    const auto found = std::ranges::find_if(
        captions, [&](const CaptionRow& row) { return shell.controls.find(row.control, row.index) == &control; });
    return found != std::end(captions) ? &found->caption : nullptr;
}

} // namespace vrk
