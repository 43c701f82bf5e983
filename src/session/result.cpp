#include "session/result.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

// clang-format off
constexpr ResultClass classes[] = {
//    result                      word                 exit
    { Result::good,               "good",                0, { "取下此片，放上下一片。",
                                                              "Take the chip off and put the next one on." } },
    { Result::stopped,            "stopped",           130, { "此片可能只写了一部分，请重新下载后再使用。",
                                                              "The chip may be half written: program it again before it is used." } },
    { Result::refused,            "refused",            10, { "请按提示更改后再试，芯片没有改变。",
                                                              "Change what the message names and try again; the chip is as it was." } },
    { Result::no_port,            "no-port",            11, { "请检查串口是否存在、是否有权限以及是否被其他程序占用 (vrk ports)。",
                                                              "Look whether the port is there, may be opened and is free: vrk ports tells." } },
    { Result::port_gone,          "port-gone",          12, { "请重新插好串口适配器，并重新下载此片。",
                                                              "Plug the adapter in again and program this chip again." } },
    { Result::no_answer,          "no-answer",          13, { "请检查电源、TxD/RxD 连线和串口，给芯片断电后重新上电再试。",
                                                              "Look at the supply, at TxD and RxD and at the port, then try again with a new power-up." } },
    { Result::unreadable_id,      "unreadable-id",      14, { "请断电后再试一次；若仍失败，请更换芯片。",
                                                              "Switch the supply off and try once more; if it stays so, put this chip aside." } },
    { Result::unknown_chip,       "unknown-chip",       15, { "此片型号不在目录中，请放上正确的芯片。",
                                                              "The catalogue does not have this chip: put on one of the model chosen." } },
    { Result::wrong_model,        "wrong-model",        16, { "请放上所选型号的芯片，或选择与芯片相符的型号。",
                                                              "Put on a chip of the model chosen, or choose the model of the chip." } },
    { Result::old_firmware,       "old-firmware",       17, { "此片固件版本太低，请使用中文版或更换芯片。",
                                                              "The chip's firmware is too old for the English edition: use the Chinese one, or another chip." } },
    { Result::number_outside,     "number-outside",     18, { "请更改编号的地址，使其位于下载范围之内。",
                                                              "Move the serial number to an address that the download writes." } },
    { Result::guarded,            "guarded",            19, { "此片禁止由 block1 对 block0 编程，请更改此选项或更换芯片。",
                                                              "A block of the chip must not program the other: change that choice, or take another chip." } },
    { Result::erase_failed,       "erase-failed",       20, { "请用较低的最高波特率再试；若仍失败，请更换芯片。",
                                                              "Try again with a lower highest baud; if it stays so, put this chip aside." } },
    { Result::programming_failed, "programming-failed", 21, { "请用较低的最高波特率再试；若仍失败，请更换芯片。",
                                                              "Try again with a lower highest baud; if it stays so, put this chip aside." } },
    { Result::options_refused,    "options-refused",    22, { "代码已写入但选项没有写入，请重新下载此片。",
                                                              "The code is in and the options are not: program this chip again." } },
    { Result::options_failed,     "options-failed",     23, { "代码已写入但选项不符，请重新下载此片；若仍失败，请更换芯片。",
                                                              "The code is in and the options are not as wanted: program it again, or put it aside." } },
    { Result::off_frequency,      "off-frequency",      24, { "内部振荡器偏离目标频率，请重新下载；若仍失败，请更换芯片。",
                                                              "The oscillator is too far off: program it again; if it stays so, put this chip aside." } },
    { Result::file_gone,          "file-gone",          25, { "请检查文件是否存在、是否可读。",
                                                              "Look whether the file is there and may be read." } },
    { Result::file_refused,       "file-refused",       26, { "请重新生成文件，或更改起始地址后再试。",
                                                              "Build the file anew, or change the start address, and try again." } },
    { Result::file_empty,         "file-empty",         27, { "文件中没有数据，请选择正确的文件。",
                                                              "The file brings no data: name the right one." } },
    { Result::project_refused,    "project-refused",    28, { "请用本程序重新保存工程文件。",
                                                              "Save the project anew with this program." } },
    { Result::number_refused,     "number-refused",     29, { "请检查编号的地址、字节数和下一个值。",
                                                              "Look at address, bytes and next value of the serial number." } },
};
// clang-format on

} // namespace

std::span<const ResultClass> result_classes() { return classes; }

const ResultClass& class_of(Result result) { return *std::ranges::find(classes, result, &ResultClass::result); }

} // namespace vrk
