// Words of the window that are no captions: what a screen reader says of a field without a label, why a key was not
// taken, and the question before it closes.
#pragma once

#include "report/text.h"

#include <span>
#include <string_view>

namespace vrk {

struct SpokenWords {
    std::string_view control; // by its full name
    Text words;
};
std::span<const SpokenWords> spoken_words();

// Of the strings of the terminal: the number follows the first and the last.
inline constexpr Text numbered_string = {"字符串 ", "String "};
inline constexpr Text is_hexadecimal = {" 为十六进制", " is hexadecimal"};
inline constexpr Text send_string = {"发送字符串 ", "Send string "};

inline constexpr Text only_hexadecimal = {"只能输入 0-9 和 A-F", "Only 0 to 9 and A to F"};
inline constexpr Text only_whole = {"只能输入 0-9", "Only 0 to 9"};
inline constexpr Text only_signed_whole = {"只能输入 0-9 和正负号", "Only 0 to 9, with a sign before them"};

inline constexpr Text stop_and_close = {"正在对单片机进行操作，现在退出可能使单片机中的程序不完整。\n停止并退出吗?",
    "A chip is being worked on. Leaving now may leave it without a whole program.\nStop and leave?"};

} // namespace vrk
