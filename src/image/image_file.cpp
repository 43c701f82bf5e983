#include "image/image_file.h"

#include "image/hex_lines.h"
#include "platform/text_number.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace vrk {

namespace {

using namespace std::string_view_literals;

constexpr int lines_looked_at = 3; // all of them begin with ':' in a HEX file of any name
constexpr std::size_t longest_mark = 4; // a mark of two bytes and a colon of two
constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16_marks[] = {"\xFF\xFE", "\xFE\xFF"};
constexpr std::string_view utf16_colons[] = {":\0"sv, "\0:"sv};
constexpr std::string_view utf16_marked_colons[] = {"\xFF\xFE:\0"sv, "\xFE\xFF\0:"sv};

// Up to `at_most` bytes from the beginning on.
std::string read_head(std::ifstream& file, std::size_t at_most)
{
    std::string head(at_most, '\0');
    file.read(head.data(), static_cast<std::streamsize>(at_most));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

void go_to(std::ifstream& file, std::size_t position)
{
    file.clear();
    file.seekg(static_cast<std::streamoff>(position));
}

// A file that ends before the third line is judged by the lines it has; an empty one is binary.
bool looks_like_hex(std::ifstream& file)
{
    HexLines lines{file};
    for (int i = 0; i < lines_looked_at; ++i) {
        const auto line = lines.next();
        if (!line)
            return i > 0;
        if (!line->starts_with(':'))
            return false;
    }
    return true;
}

// Without ".HEX" in its name a file may be code that happens to begin with such a mark: there the colon must follow.
bool is_utf16(std::string_view head, bool named_hex)
{
    const auto begins_head = [head](std::string_view mark) { return head.starts_with(mark); };
    return std::ranges::any_of(utf16_marked_colons, begins_head) ||
        (named_hex &&
            (std::ranges::any_of(utf16_marks, begins_head) || std::ranges::any_of(utf16_colons, begins_head)));
}

FileFault open_plain_file(ImageFile& file)
{
    const auto stamp = file_stamp(file.path);
    if (!stamp || !is_file(file.path)) // a device or a pipe may never end
        return FileFault::not_found;
    std::error_code fault;
    file.stamp = *stamp;
    file.size = std::filesystem::file_size(file.path, fault);
    file.text.open(file.path, std::ios::binary);
    if (fault || !file.text)
        return FileFault::not_found;
    return file.size > ImageFile::most_bytes ? FileFault::too_large : FileFault::none;
}

// What the kind is told by has to be read: a HEX file whose mark was not seen would lose its first record.
FileFault read_file(ImageFile& file, bool named_hex, std::size_t buffer_size)
{
    const std::string mark = read_head(file.text, longest_mark);
    if (file.text.bad())
        return FileFault::not_found;
    if (is_utf16(mark, named_hex))
        return FileFault::utf16;
    const std::size_t first_line = mark.starts_with(utf8_mark) ? utf8_mark.size() : 0;
    go_to(file.text, first_line);
    const bool is_hex = named_hex || looks_like_hex(file.text);
    if (file.text.bad())
        return FileFault::not_found;
    if (is_hex) {
        file.kind = FileKind::hex;
        go_to(file.text, first_line);
        return FileFault::none;
    }
    go_to(file.text, 0);
    file.contents = read_head(file.text, buffer_size + 1);
    return file.text.bad() ? FileFault::not_found : FileFault::none;
}

} // namespace

bool is_file(const std::string& path)
{
    std::error_code fault;
    return std::filesystem::is_regular_file(path, fault);
}

ImageFile open_image_file(const std::string& path, std::size_t buffer_size)
{
    ImageFile file;
    file.path = path;
    file.fault = open_plain_file(file);
    if (file.fault == FileFault::none)
        file.fault = read_file(file, upper_case(path).find(".HEX") != std::string::npos, buffer_size);
    return file;
}

std::optional<std::string> file_stamp(const std::string& path)
{
    std::error_code fault;
    const auto time = std::filesystem::last_write_time(path, fault);
    if (fault)
        return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(path, fault);
    if (fault)
        return std::nullopt;
    return std::to_string(static_cast<long long>(time.time_since_epoch().count())) + " " + std::to_string(size);
}

} // namespace vrk
