// What the line says, in both languages.
#pragma once

#include "report/text.h"

#include <QString>

namespace vrk::lanes {

inline constexpr Text start_text = {"开始", "Start"};
inline constexpr Text stop_text = {"停止", "Stop"};
inline constexpr Text start_all_text = {"全部开始 (F5)", "Start all (F5)"};
inline constexpr Text stop_all_text = {"全部停止 (Esc)", "Stop all (Esc)"};
inline constexpr Text counts_text = {"合格 %1   不合格 %2", "good %1   bad %2"};
inline constexpr Text yield_text = {"   合格率 %1 %", "   yield %1 %"};
inline constexpr Text number_text = {"编号 %1", "number %1"};
inline constexpr Text seconds_text = {"%1 %   剩余 %2 秒", "%1 %   %2 s left"};
inline constexpr Text no_port_text = {"未选串口", "no port"};
inline constexpr Text choose_port_text = {"请先选择串口。", "Choose a port first."};
inline constexpr Text port_name_text = {"工位 %1 的串口", "port of lane %1"};
inline constexpr Text job_text = {"项目 %1   SHA-256 %2", "Job %1   SHA-256 %2"};
inline constexpr Text other_job_text = {"各工位的内容不一致！请全部停止，核对项目文件后重新开始。",
    "The lanes do not hold the same job. Stop all, look at the project, and start again."};
inline constexpr Text changed_job_text = {"项目文件已被改动。请全部停止后重新打开。",
    "The project has been changed since. Stop all, and open the line again."};
inline constexpr Text closing_text = {"有芯片正在下载。停止并退出吗？", "Chips are being programmed. Stop and leave?"};

inline QString said(bool english, const Text& text)
{
    const std::string_view words = in_language(english, text);
    return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

} // namespace vrk::lanes
