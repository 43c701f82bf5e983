#include "shell/recent.h"

#include "form/main_form.h"

#include "image/image_file.h"
#include "shell/arm_save.h"
#include "shell/messages.h"
#include "shell/open_path.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <type_traits>

namespace vrk {

namespace {

constexpr const char* section = "Recent";
constexpr const char* keys[] = {"File", "Project"}; // by Recent, with the place from 1 behind it
constexpr std::size_t length = std::extent_v<decltype(MainForm::mnuRecentFile)>;

//                     Chinese            English
constexpr Text gone = {"文件已不存在:\n", "The file is gone:\n"};

std::string key_of(Recent list, std::size_t place) { return keys[index_of(list)] + std::to_string(place + 1); }

Button& entry_of(Shell& shell, Recent list, std::size_t place)
{
    return list == Recent::file ? shell.form.mnuRecentFile[place] : shell.form.mnuRecentProject[place];
}

std::vector<std::string>& list_of(Shell& shell, Recent list) { return shell.loader.recent[index_of(list)]; }

void show_list(Shell& shell, Recent list)
{
    const std::vector<std::string>& paths = list_of(shell, list);
    for (std::size_t place = 0; place < length; ++place) {
        Button& entry = entry_of(shell, list, place);
        entry.set_caption(place < paths.size() ? paths[place] : "");
        entry.set_visible(place < paths.size());
    }
}

void keep_list(Shell& shell, Recent list)
{
    const std::vector<std::string>& paths = list_of(shell, list);
    for (std::size_t place = 0; place < length; ++place)
        shell.platform.settings.set(section, key_of(list, place), place < paths.size() ? paths[place] : "");
    arm_save(shell);
    show_list(shell, list);
}

// Another run may begin in another folder.
std::string whole_path(const std::string& path)
{
    std::error_code fault;
    const std::filesystem::path whole = std::filesystem::absolute(path, fault);
    return fault ? path : whole.lexically_normal().string();
}

// Nothing: no such entry, or its file is gone and the user knows.
std::optional<std::string> path_of_entry(Shell& shell, Recent list, int index)
{
    std::vector<std::string>& paths = list_of(shell, list);
    const auto place = static_cast<std::size_t>(index);
    if (place >= paths.size())
        return std::nullopt;
    const std::string path = paths[place]; // a copy: what is opened moves to the top
    if (is_file(path))
        return path;
    paths.erase(paths.begin() + index);
    keep_list(shell, list);
    show_box(shell, std::string{in_language(shell, gone)} + path);
    return std::nullopt;
}

} // namespace

void load_recent(Shell& shell)
{
    for (const Recent list : {Recent::file, Recent::project}) {
        std::vector<std::string>& paths = list_of(shell, list);
        paths.clear();
        for (std::size_t place = 0; place < length; ++place) {
            const std::string path = shell.platform.settings.get(section, key_of(list, place), "");
            if (!path.empty())
                paths.push_back(path);
        }
        show_list(shell, list);
    }
}

void note_recent(Shell& shell, Recent list, const std::string& path)
{
    std::vector<std::string>& paths = list_of(shell, list);
    const std::string whole = whole_path(path);
    if (!paths.empty() && paths.front() == whole)
        return;
    std::erase(paths, whole);
    paths.insert(paths.begin(), whole);
    if (paths.size() > length)
        paths.pop_back();
    keep_list(shell, list);
}

void mnuRecentFile_Click(Shell& shell, int index)
{
    if (const auto path = path_of_entry(shell, Recent::file, index))
        open_path(shell, *path, buffer_in_view(shell));
}

void mnuRecentProject_Click(Shell& shell, int index)
{
    if (const auto path = path_of_entry(shell, Recent::project, index))
        show_project(shell, *path);
}

} // namespace vrk
