#include "shell/file_watch.h"

#include "form/main_form.h"

#include "image/image_file.h"
#include "shell/open_file.h"

namespace vrk {

bool watch_code_file(Shell& shell)
{
    LoaderState& loader = shell.loader;
    if (!shell.file_loaded || !shell.form.cekReloadFileWhileFileChange.value() || shell.running)
        return false;
    // Saving a project must not start a download, and the file of an earlier job must not take a project's place.
    if (loader.code_is_project || names_project(loader.code_path))
        return false;
    const auto stamp = file_stamp(loader.code_path);
    if (loader.code_path != loader.reload_watch_path) {
        loader.reload_watch_path = loader.code_path;
        loader.reload_watch_stamp = stamp.value_or("");
        return false;
    }
    if (!stamp || *stamp == loader.reload_watch_stamp)
        return false;
    loader.reload_watch_stamp = *stamp;
    return reload_code_file(shell);
}

} // namespace vrk
