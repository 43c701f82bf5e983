#include "shell/window_words.h"

namespace vrk {

namespace {

// clang-format off
constexpr SpokenWords spoken[] = {
    { "Command3",            { "打开单片机型号列表", "Open the list of MCU types" } },
    { "TreeViewDevice",      { "单片机型号列表", "List of MCU types" } },
    { "txtAP_FileStart",     { "程序文件起始地址(HEX)", "Start address of the code file (HEX)" } },
    { "txtDataFileStart",    { "EEPROM 文件起始地址(HEX)", "Start address of the EEPROM file (HEX)" } },
    { "cheClearAP_Buffer",   { "打开程序文件前清0缓冲", "Clear the code buffer before opening a file" } },
    { "cheClearDataBuffer",  { "打开 EEPROM 文件前清0缓冲", "Clear the EEPROM buffer before opening a file" } },
    { "imgOpen_sys",         { "串口已打开", "The port is open" } },
    { "imgNotOpen_sys",      { "串口已关闭", "The port is closed" } },
    { "imgOpen",             { "串口已打开", "The port is open" } },
    { "imgNotOpen",          { "串口已关闭", "The port is closed" } },
    { "comWDT_Prescalar(0)", { "看门狗分频数", "Divider of the watchdog" } },
    { "comWDT_Prescalar(1)", { "30 kHz 时钟分频数", "Divider of the 30 kHz clock" } },
    { "comb_WDT",            { "看门狗喂狗管脚", "Pin that feeds the watchdog" } },
    { "textMsg",             { "下载报告", "Report of the download" } },
    { "ProgressBar1",        { "下载进度", "Progress of the download" } },
    { "TabStrip1",           { "选项和工具", "Options and tools" } },
    { "TabStrip2",           { "缓冲区和串口工具", "Buffers and serial tools" } },
    { "txtBuffer2",          { "程序文件缓冲区", "Buffer of the code file" } },
    { "tetDataFlash2",       { "EEPROM 文件缓冲区", "Buffer of the EEPROM file" } },
    { "texBatchFileName",    { "工程文件名", "Name of the project file" } },
    { "txt_DEMO_UserCode",   { "自定义下载命令(HEX)", "Custom command (HEX)" } },
    { "texReceive",          { "接收到的内容", "What has come in" } },
    { "texDebugFind",        { "要查找的内容", "What to look for" } },
    { "texSend",             { "要发送的内容", "What to send" } },
    { "lampTable",           { "指示灯的含义", "What the lamps say" } },
    { "hardwareText",        { "硬件说明", "The target's hardware" } },
};
// clang-format on

} // namespace

std::span<const SpokenWords> spoken_words() { return spoken; }

} // namespace vrk
