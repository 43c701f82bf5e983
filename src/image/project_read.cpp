#include "image/project_read.h"

#include "platform/text_number.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace vrk {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t longest_read = 16U << 20U; // the longest project has 0.3 MB

} // namespace

bool names_project(const std::string& path) { return upper_case(path).find(".VRK") != std::string::npos; }

std::optional<std::string> read_project_file(const std::string& path)
{
    std::error_code fault;
    if (!fs::is_regular_file(path, fault)) // a device or a pipe may never end
        return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, fault);
    std::ifstream file{path, std::ios::binary};
    if (fault || !file)
        return std::nullopt;
    std::string contents(static_cast<std::size_t>(std::min(size, longest_read)), '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (file.bad())
        return std::nullopt;
    contents.resize(static_cast<std::size_t>(file.gcount()));
    return contents;
}

} // namespace vrk
