#include "image/image_file.h"

#include "image/hex_loader.h"
#include "platform/text_number.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace vrk {

namespace {

constexpr int lines_looked_at = 3; // all of them begin with ':' in a HEX file of any name

bool begins_with_colon(std::string_view line) { return !line.empty() && line.front() == ':'; }

// A file that ends before the third line is judged by the lines it has; an empty one is binary.
bool looks_like_hex(std::string_view contents)
{
    if (contents.empty())
        return false;
    for (int i = 0; i < lines_looked_at && !contents.empty(); ++i) {
        if (!begins_with_colon(take_line(contents)))
            return false;
    }
    return true;
}

// Up to `at_most` bytes more of a file.
void read_on(std::ifstream& file, std::string& contents, std::size_t at_most)
{
    const std::size_t had = contents.size();
    contents.resize(had + at_most);
    file.read(contents.data() + had, static_cast<std::streamsize>(at_most));
    contents.resize(had + static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
}

} // namespace

bool is_file(const std::string& path)
{
    std::error_code fault;
    return std::filesystem::is_regular_file(path, fault);
}

ImageFile read_image_file(const std::string& path, std::size_t buffer_size)
{
    const bool named_hex = upper_case(path).find(".HEX") != std::string::npos;
    ImageFile result{path, named_hex ? FileKind::hex : FileKind::bin, false, {}};
    if (!is_file(path)) // a device or a pipe may never end
        return result;
    std::error_code fault;
    const std::uintmax_t size = std::filesystem::file_size(path, fault);
    std::ifstream file{path, std::ios::binary};
    if (fault || !file)
        return result;
    result.found = true;
    const std::size_t whole = static_cast<std::size_t>(size);
    const std::size_t head = std::min(whole, buffer_size + 1);
    read_on(file, result.contents, head);
    if ((named_hex || begins_with_colon(result.contents)) && whole > head)
        read_on(file, result.contents, whole - head);
    if (!named_hex && looks_like_hex(result.contents))
        result.kind = FileKind::hex;
    return result;
}

std::optional<std::string> file_stamp(const std::string& path)
{
    std::error_code fault;
    const auto time = std::filesystem::last_write_time(path, fault);
    if (fault)
        return std::nullopt;
    return std::to_string(static_cast<long long>(time.time_since_epoch().count()));
}

} // namespace vrk
