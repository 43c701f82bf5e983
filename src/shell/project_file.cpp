#include "shell/project_file.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace vrk {

namespace {

namespace fs = std::filesystem;

constexpr const char* folder_name = "VRK_Project";
constexpr const char* probe_name = ".vrk_probe";

// By trying: rights alone do not tell it, a medium may be read-only.
bool can_write_in(const fs::path& folder)
{
    const fs::path probe = folder / probe_name;
    const bool made = std::ofstream{probe}.is_open();
    std::error_code fault;
    fs::remove(probe, fault);
    return made;
}

bool is_folder(const fs::path& path)
{
    std::error_code fault;
    return fs::is_directory(path, fault);
}

} // namespace

std::string project_folder(const LoaderState& places)
{
    const fs::path beside = fs::path{places.application_dir} / folder_name;
    const fs::path in_documents = fs::path{places.documents_dir} / folder_name;
    const bool told_beside = !places.application_dir.empty();
    if (told_beside &&
        (places.documents_dir.empty() || can_write_in(is_folder(beside) ? beside : beside.parent_path())))
        return beside.string();
    return places.documents_dir.empty() ? std::string{} : in_documents.string();
}

void make_folder(const std::string& folder)
{
    std::error_code fault;
    if (!folder.empty())
        fs::create_directories(folder, fault);
}

} // namespace vrk
