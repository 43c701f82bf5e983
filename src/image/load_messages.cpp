#include "image/load_messages.h"

namespace vrk {

namespace {

// clang-format off
//                                  Chinese                                       English
constexpr Text file_not_found   = { "Can not find the file./找不到文件",             "Can not find the file." };
constexpr Text no_data          = { "文件中没有数据。",                              "The file contains no data." };
constexpr Text is_utf16         = { "文件是 UTF-16 文本，请另存为 ASCII 或 UTF-8。", "The file is UTF-16 text. Please save it as ASCII or UTF-8." };
constexpr Text changed          = { "读取文件时文件发生了变化，请重新打开。",           "The file has changed while it was read. Please open it again." };
constexpr Text no_end_record    = { "HEX 文件没有结束记录，可能还没有写完。",           "The HEX file has no end record: it may not have been written to its end." };
// clang-format on

// Of a file that is larger than any that can be meant: its size and the limit.
Line too_large(std::uintmax_t size)
{
    const std::string bytes = std::to_string(size);
    const std::string limit = std::to_string(ImageFile::most_bytes);
    Line line;
    line.zh = "文件太大: " + bytes + " 字节。最大允许 " + limit + " 字节 (64 MB)。";
    line.en = "The file is too large: " + bytes + " bytes. At most " + limit + " bytes (64 MB) can be opened.";
    return line;
}

} // namespace

std::optional<Line> fault_text(const ImageFile& file)
{
    switch (file.fault) {
    case FileFault::not_found:
        return file_not_found;
    case FileFault::too_large:
        return too_large(file.size);
    case FileFault::utf16:
        return is_utf16;
    case FileFault::none:
        break;
    }
    return std::nullopt;
}

const Text* end_text(LoadEnd end)
{
    switch (end) {
    case LoadEnd::no_data:
        return &no_data;
    case LoadEnd::unreadable:
        return &file_not_found;
    case LoadEnd::changed:
        return &changed;
    case LoadEnd::no_end_record:
        return &no_end_record;
    case LoadEnd::done:
    case LoadEnd::refused:
    case LoadEnd::overtaken:
        break;
    }
    return nullptr;
}

} // namespace vrk
