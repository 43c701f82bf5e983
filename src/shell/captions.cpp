#include "shell/captions.h"

#include "form/messages.h"

namespace vrk {

namespace {

struct CaptionRow {
    std::string_view control;
    int index; // -1: a single control
    Text caption;
};

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
    { "comLoadFile",                   -1, { "打开程序文件", "Open Code File" } },
    { "comLoadDataFile",               -1, { "打开 EEPROM 文件", "Open EEPROM File" } },
    { "cheClearAP_Buffer",             -1, { "打开文件前清0缓冲", "Clear buffer before opening a file" } },
    { "cheClearDataBuffer",            -1, { "打开文件前清0缓冲", "Clear buffer before opening a file" } },
    { "LabMaxBaud",                    -1, { "最高波特率:", "Max Baud:" } },
    { "Label4",                        -1, { "最低波特率:", "Min Baud:" } },
    { "cheTL",                         -1, { "固定 115200 连接 (TL)", "Connect at fixed 115200 (TL)" } },
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
};
// clang-format on

} // namespace

void apply_captions(MainForm& form)
{
    for (const CaptionRow& row : captions) {
        if (auto* control = dynamic_cast<CaptionControl*>(form.controls.find(row.control, row.index)))
            control->set_caption(in_language(form, row.caption));
    }
}

} // namespace vrk
