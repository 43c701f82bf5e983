#include "platform/whole_file.h"

#include <filesystem>
#include <system_error>

namespace vrk {

namespace {

namespace fs = std::filesystem;

constexpr int most_links = 40; // one behind the other, as the system follows them

// A name that nothing bears yet.
fs::path beside(const fs::path& target)
{
    std::error_code fault;
    fs::path name = target;
    name += ".part";
    for (int i = 1; fs::exists(fs::symlink_status(name, fault)); ++i) {
        name = target;
        name += ".part" + std::to_string(i);
    }
    return name;
}

std::string folder_of(const fs::path& target)
{
    const std::string folder = target.parent_path().string();
    return folder.empty() ? "." : folder;
}

WriteFault refused(std::errc error) { return {std::make_error_code(error).message()}; }

} // namespace

std::string behind_links(const std::string& path)
{
    fs::path place = path;
    std::error_code fault;
    for (int i = 0; i < most_links && fs::is_symlink(fs::symlink_status(place, fault)); ++i)
        place = place.parent_path() / fs::read_symlink(place, fault);
    return place.string();
}

std::optional<WriteFault> write_whole_file(const std::string& path, std::span<const std::uint8_t> bytes, Disk& disk)
{
    std::error_code fault;
    const fs::path target = behind_links(path);
    const fs::file_status before = fs::status(target, fault);
    if (fs::is_directory(before))
        return refused(std::errc::is_a_directory);
    if (fs::exists(before) && !fs::is_regular_file(before)) // a device must not be replaced by a file
        return refused(std::errc::not_supported);
    if (fs::exists(before) && (before.permissions() & fs::perms::owner_write) == fs::perms::none)
        return refused(std::errc::permission_denied); // a rename would not ask

    const fs::path written = beside(target);
    std::string reason = disk.write_new(written.string(), bytes);
    if (reason.empty()) {
        if (fs::exists(before))
            fs::permissions(written, before.permissions(), fault);
        reason = disk.put_in_place(written.string(), target.string());
    }
    if (!reason.empty()) {
        fs::remove(written, fault);
        return WriteFault{reason};
    }
    reason = disk.flush_folder(folder_of(target));
    return reason.empty() ? std::nullopt : std::optional{WriteFault{reason, true}};
}

} // namespace vrk
