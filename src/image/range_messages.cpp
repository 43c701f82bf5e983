#include "image/range_messages.h"

#include "platform/text_number.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace vrk {

namespace {

struct FindingRow {
    RangeRule rule;
    FileKind file; // of the flat rule and the cut both loaders have the same words
    Finding finding;
    Text text; // '@' stands for the first address, '#' for the last
};

constexpr auto hex = FileKind::hex;
constexpr auto bin = FileKind::bin;

// clang-format off
constexpr FindingRow rows[] = {
//    rule                  file  finding                  Chinese                                                                                English
    { RangeRule::cut,       hex,  Finding::cut,           {"文件超出最大有效空间, 超出的部分已被清除。\n\n               按确定继续",                "The file is over the valid scope, and the exceeding part has been cleared."} },
    { RangeRule::flat,      hex,  Finding::invalid_range, {"无效区间 @ -- # 中有数据, 这些数据已被清除。",                                         "    File over the valid scope(@ -- #)."} },
    { RangeRule::flat,      hex,  Finding::data_memory,   {"Data Memory 空间有数据。",                                                           "Data Memory contain datas."} },
    { RangeRule::flat,      hex,  Finding::over_range,    {"文件超出最大有效空间, 超出的部分已被清除。",                                           "    File over the valid scope."} },
    { RangeRule::boot_area, bin,  Finding::over_range,    {"    File over the valid scope.\n文件超出有效空间, 超出的部分已丢失。",                  "    File over the valid scope.\n"} },
    { RangeRule::boot_area, hex,  Finding::over_range,    {"    File over the valid scope.\n文件超出有效空间, 超出的部分已丢失。",                  " File over the valid scope.\n"} },
    { RangeRule::boot_area, bin,  Finding::data_memory,   {"   Data Memory contain datas.\n     Data Memory 空间有数据。",                         "   Data Memory contain datas.\n"} },
    { RangeRule::boot_area, hex,  Finding::data_memory,   {" Data Memory contain datas.\n  Data Memory 空间有数据。",                              " Data Memory contain datas.\n"} },
};
constexpr Text flat_closing_word = { "按确定继续。", "Continue" };
//                                   Chinese                  English
constexpr Text hex_closing       = { "       按确定继续。",     "        Continue" };
constexpr Text bin_closing       = { "         按确定继续。",   "          Continue" };
// clang-format on

constexpr std::size_t english_word_further_left = 5;

std::string line_text(const RangeReport& report, FileKind file, Finding finding, bool english)
{
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const FindingRow& one) {
        const bool file_fits = one.file == file || one.rule != RangeRule::boot_area;
        return one.rule == report.rule && one.finding == finding && file_fits;
    });
    std::string text;
    if (row == std::end(rows))
        return text;
    for (const char c : in_language(english, row->text)) {
        if (c == '@')
            text += hex_text(report.invalid.first);
        else if (c == '#')
            text += hex_text(report.invalid.last);
        else
            text += c;
    }
    return text;
}

// The closing word stands below the middle of the longest line.
std::string flat_message(const RangeReport& report, FileKind file, bool english)
{
    std::string text;
    std::size_t width = 0;
    for (const Finding finding : report.findings) {
        const std::string line = line_text(report, file, finding, english);
        width = std::max(width, static_cast<std::size_t>(character_count(line)));
        text += line + "\n";
    }
    const std::size_t indent = width / 2 - (english ? std::min(width / 2, english_word_further_left) : 0);
    return text + "\n" + std::string(indent, ' ').append(in_language(english, flat_closing_word));
}

std::string boot_area_message(const RangeReport& report, FileKind file, bool english)
{
    std::string text;
    for (const Finding finding : report.findings) {
        if (!text.empty() && text.back() != '\n')
            text += "\n";
        text += line_text(report, file, finding, english);
    }
    return text + "\n\n" + std::string{in_language(english, file == FileKind::hex ? hex_closing : bin_closing)};
}

std::string message_in(bool english, const RangeReport& report, FileKind file)
{
    switch (report.rule) {
    case RangeRule::flat:
        return flat_message(report, file, english);
    case RangeRule::boot_area:
        return boot_area_message(report, file, english);
    case RangeRule::cut:
        break;
    }
    return line_text(report, file, Finding::cut, english);
}

} // namespace

Line range_message(const RangeReport& report, FileKind file)
{
    Line message;
    message.zh = message_in(false, report, file);
    message.en = message_in(true, report, file);
    return message;
}

const char* range_title(const RangeReport& report, FileKind file)
{
    // The cut of a model with a data flash has its own title in each loader, the other keeps the binary one in both.
    if (file == FileKind::bin || (report.rule == RangeRule::cut && report.without_data_flash))
        return "Open BIN file";
    return "Open HEX file";
}

} // namespace vrk
