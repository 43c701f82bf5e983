#include "image/whole_file.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace vrk {

namespace {

namespace fs = std::filesystem;

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

std::string reason_of(std::errc error) { return std::make_error_code(error).message(); }
std::string last_reason()
{
    return errno == 0 ? reason_of(std::errc::io_error) : std::generic_category().message(errno);
}

bool write_out(const fs::path& path, std::span<const std::uint8_t> bytes)
{
    errno = 0;
    std::ofstream file{path, std::ios::binary | std::ios::trunc};
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

} // namespace

std::string write_whole_file(const std::string& path, std::span<const std::uint8_t> bytes)
{
    std::error_code fault;
    fs::path target = fs::weakly_canonical(path, fault);
    if (fault)
        target = path;
    const fs::file_status before = fs::status(target, fault);
    if (fs::is_directory(before))
        return reason_of(std::errc::is_a_directory);
    if (fs::exists(before) && !fs::is_regular_file(before)) // a device must not be replaced by a file
        return reason_of(std::errc::not_supported);

    if (fs::exists(before) && (before.permissions() & fs::perms::owner_write) == fs::perms::none)
        return reason_of(std::errc::permission_denied); // a rename would not ask

    const fs::path written = beside(target);
    if (!write_out(written, bytes)) {
        const std::string reason = last_reason();
        fs::remove(written, fault);
        return reason;
    }
    if (fs::exists(before))
        fs::permissions(written, before.permissions(), fault);
    fs::rename(written, target, fault);
    if (!fault)
        return {};
    const std::string reason = fault.message();
    fs::remove(written, fault);
    return reason;
}

} // namespace vrk
