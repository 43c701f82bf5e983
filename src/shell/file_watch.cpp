#include "shell/file_watch.h"

#include "form/main_form.h"

#include "image/image_file.h"
#include "shell/open_file.h"

namespace vrk {

namespace {

constexpr std::int64_t steady_us = 1'000'000; // linkers write a file in pieces

bool hands_are_busy(const Shell& shell)
{
    return shell.running || shell.dialogs_open > 0 || shell.form.TreeViewDevice.visible();
}

// The file is another one than was loaded, and has been so for long enough that nobody writes it any more.
bool has_settled(LoaderState& loader, const std::string& stamp, std::int64_t now_us)
{
    if (stamp == loader.reload_watch_stamp) {
        loader.reload_watch_seen.clear();
        return false;
    }
    if (stamp != loader.reload_watch_seen) {
        loader.reload_watch_seen = stamp;
        loader.reload_watch_seen_us = now_us;
        return false;
    }
    return now_us - loader.reload_watch_seen_us >= steady_us;
}

} // namespace

bool watch_code_file(Shell& shell)
{
    LoaderState& loader = shell.loader;
    if (!shell.form.cekReloadFileWhileFileChange.value() && !shell.form.cekReloadFileWhileFileChange1.value()) {
        loader.reload_watch_path.clear(); // what changes unwatched starts nothing when the box is ticked
        return false;
    }
    if (!shell.file_loaded || hands_are_busy(shell))
        return false;
    // Saving a project must not start a download, and the file of an earlier job must not take a project's place.
    if (loader.code_is_project)
        return false;
    const auto stamp = file_stamp(loader.code_path);
    if (loader.code_path != loader.reload_watch_path) {
        loader.reload_watch_path = loader.code_path;
        loader.reload_watch_stamp = stamp.value_or("");
        return false;
    }
    if (!stamp || !has_settled(loader, *stamp, shell.platform.loop.now_us()))
        return false;
    loader.reload_watch_stamp = *stamp;
    return reload_code_file(shell, Asker::watch);
}

} // namespace vrk
