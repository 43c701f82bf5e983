// A project file from the disk, and what is said of one that cannot be used.
#pragma once

#include "report/text.h"

#include <optional>
#include <string>

namespace vrk {

bool names_project(const std::string& path); // ".VRK" in it, in any letters

// Nothing: there is no such file, or it cannot be read. Of one that is far too long for a project only the beginning.
std::optional<std::string> read_project_file(const std::string& path);

namespace project_text_of {

// clang-format off
//                                              Chinese                                           English
inline constexpr Text not_found            = { "Can not find the file./找不到文件",                "Can not find the file." };
inline constexpr Text old_version          = { "您使用的是旧版本的工程文件，打开文件后请仔细核对各选项是否正确。",
                                               "What you are using is an old project file, carefully check each options please." };
inline constexpr Text refused_version      = { "非常抱歉，本程序不支持 1.1 版本的工程文件。",
                                               "Sorry, the current program does not support Ver1.1 project files." };
inline constexpr Text no_model             = { "找不到 MCU 型号: ",                                "Can not find the MCU type: " };
inline constexpr Text wrong_code_sum       = { "应用程序代码校验和错。",                            "The check sum of code file is incorrect." };
inline constexpr Text wrong_data_sum       = { "EEPROM 文件校验和错。",                            "The check sum of EEPROM file is incorrect." };
// clang-format on

} // namespace project_text_of

} // namespace vrk
