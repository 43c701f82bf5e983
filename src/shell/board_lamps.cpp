#include "shell/board_lamps.h"

namespace vrk {

namespace {

// clang-format off
constexpr LampState states[] = {
    { "*.....*", { "正在连接",                     "Connecting" } },
    { "*....*.", { "收到 MCU 的第一个应答",         "First reply from the MCU" } },
    { ".*..*..", { "正在测试新波特率",              "Testing the new baud rate" } },
    { "..**...", { "新波特率成功, 正在擦除程序区",   "Baud rate good, erasing" } },
    { "###....", { "正在下载, 每灯 8K 程序",        "Programming, 8 K of code a lamp" } },
    { "*#####*", { "成功",                         "Success" } },
    { "#######", { "数量已用完, 拒绝下载",          "Quantity used up, refused" } },
    { "......#", { "自检错误",                     "Self-check error" } },
    { ".....#.", { "连接失败",                     "Connection failed" } },
    { "....#..", { "擦除失败",                     "Erasing failed" } },
    { "...#...", { "下载失败",                     "Programming failed" } },
    { "..#....", { "设置选项失败",                 "Programming options failed" } },
    { ".#.....", { "固件版本太低",                 "Firmware version too low" } },
    { "#......", { "MCU 型号错",                   "Wrong MCU type" } },
};
// clang-format on

} // namespace

std::span<const LampState> board_lamp_states() { return states; }

} // namespace vrk
