#include "image/file_watch.h"

#include "image/file_loader.h"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace vrk {

namespace {

// Time of the last change as text. Nothing while the file cannot be looked at: compilers remove it before they write
// it.
std::optional<std::string> stamp_of(const std::string& path)
{
    std::error_code fault;
    const auto time = std::filesystem::last_write_time(path, fault);
    if (fault)
        return std::nullopt;
    return std::to_string(static_cast<long long>(time.time_since_epoch().count()));
}

} // namespace

bool watch_code_file(Shell& shell)
{
    LoaderState& loader = shell.loader;
    if (!shell.file_loaded || !shell.form.cekReloadFileWhileFileChange.value() || shell.job.sequence_running)
        return false;
    // Saving a project must not start a download, and the file of an earlier job must not take a project's place.
    if (loader.code_is_project || names_project(loader.current_path))
        return false;
    const auto stamp = stamp_of(loader.current_path);
    if (loader.current_path != loader.reload_watch_path) {
        loader.reload_watch_path = loader.current_path;
        loader.reload_watch_stamp = stamp.value_or("");
        return false;
    }
    if (!stamp || *stamp == loader.reload_watch_stamp)
        return false;
    loader.reload_watch_stamp = *stamp;
    reload_code_file(shell);
    return true;
}

} // namespace vrk
