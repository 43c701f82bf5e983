#include "image/file_loader.h"

#include "form/messages.h"
#include "image/auto_increase.h"
#include "image/bin_loader.h"
#include "image/buffer_view.h"
#include "image/hex_loader.h"
#include "platform/text_number.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace vrk {

namespace {

struct FileRole {
    BufferKind kind;
    const char* stored_path; // key in section Settings
    const char* dialog_title;
};
constexpr FileRole roles[] = {
    {BufferKind::code, "FilePath", "Open file ( *.hex or *.bin )"},
    {BufferKind::data, "DataFilePath", "Open Data file ( *.hex or *.bin )"},
};
constexpr const char* file_filter = "(*.hex, *.bin)|*.hex;*.bin|(*.bin)|*.bin|(*.hex)|*.hex|All Files (*.*)|*.*";
constexpr const char* section = "Settings";

//                               Chinese                                   English
constexpr Text file_not_found = {"Can not find the file./找不到文件", "Can not find the file."};

constexpr int lines_looked_at = 3; // all of them begin with ':' in a HEX file of any name
constexpr int scroll_past_all = 32767; // the bar goes to its end, wherever that will be

const FileRole& role_of(BufferKind kind) { return roles[kind == BufferKind::code ? 0 : 1]; }
FileBuffer& buffer_of(Shell& shell, BufferKind kind)
{
    return kind == BufferKind::code ? shell.code_buffer : shell.data_buffer;
}

std::string stored_path(Shell& shell, BufferKind kind)
{
    return shell.platform.settings.get(section, role_of(kind).stored_path, shell.loader.application_dir);
}

bool is_file(const std::string& path)
{
    std::error_code fault;
    return std::filesystem::is_regular_file(path, fault);
}

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

struct FileRead {
    FileKind kind = FileKind::bin;
    std::string contents;
};

// Reads a file in one go: as a HEX file whole, as a binary one no further than one byte past what a buffer can hold.
FileRead read_file(const std::string& path, bool named_hex, std::size_t buffer_size)
{
    FileRead result{named_hex ? FileKind::hex : FileKind::bin, {}};
    if (!is_file(path)) // a device or a pipe may never end
        return result;
    std::error_code fault;
    const std::uintmax_t size = std::filesystem::file_size(path, fault);
    std::ifstream file{path, std::ios::binary};
    if (fault || !file)
        return result;
    const std::size_t whole = static_cast<std::size_t>(size);
    const std::size_t head = std::min(whole, buffer_size + 1);
    read_on(file, result.contents, head);
    if ((named_hex || begins_with_colon(result.contents)) && whole > head)
        read_on(file, result.contents, whole - head);
    if (!named_hex && looks_like_hex(result.contents))
        result.kind = FileKind::hex;
    return result;
}

Chosen load_chosen(Shell& shell, const std::string& path, FileBuffer& buffer)
{
    if (names_project(path))
        return Chosen::project;
    load_file(shell, path, buffer);
    return Chosen::file;
}

} // namespace

bool names_project(const std::string& path) { return upper_case(path).find(".VRK") != std::string::npos; }

Chosen comLoadFile_Click(Shell& shell)
{
    const std::string path = choose_file(shell, BufferKind::code);
    if (path.empty()) {
        shell.platform.settings.set(section, role_of(BufferKind::code).stored_path, shell.loader.application_dir);
        return Chosen::nothing;
    }
    return load_chosen(shell, path, shell.code_buffer);
}

Chosen comLoadDataFile_Click(Shell& shell)
{
    const std::string path = choose_file(shell, BufferKind::data);
    if (path.empty())
        return Chosen::nothing;
    return load_chosen(shell, path, shell.data_buffer);
}

std::string choose_file(Shell& shell, BufferKind kind)
{
    const std::string last = stored_path(shell, kind);
    FileDialog dialog;
    dialog.title = role_of(kind).dialog_title;
    dialog.filter = file_filter;
    dialog.must_exist = true;
    dialog.initial_dir = last;
    if (is_file(last) && last.back() != '\\')
        dialog.file_name = last;

    const auto path = shell.platform.dialogs.choose(dialog);
    if (!path || path->empty())
        return {};
    take_path(shell, kind, *path);
    return *path;
}

void take_path(Shell& shell, BufferKind kind, const std::string& path)
{
    const BufferControls controls = controls_of(shell, buffer_of(shell, kind));
    shell.loader.current_path = path;
    controls.path_frame.set_caption(std::string{controls.path_caption} + path);
    shell.platform.settings.set(section, role_of(kind).stored_path, path);
}

bool load_file(Shell& shell, const std::string& path, FileBuffer& buffer)
{
    if (path.empty())
        return false;
    read_load_parameters(shell, buffer);
    if (!start_address_fits(shell, buffer))
        return false;
    stop_stamping(shell);
    if (kind_of(buffer) == BufferKind::code)
        shell.loader.code_is_project = false;
    merge_or_replace(shell, buffer);
    const LoadEnd end = detect_and_parse(shell, path, buffer);
    if (end != LoadEnd::done)
        return end == LoadEnd::overtaken && buffer.loaded;
    update_view(shell, buffer);
    buffer.loaded = true;
    show_effective_lengths(shell);
    return true;
}

LoadEnd detect_and_parse(Shell& shell, const std::string& path, FileBuffer& buffer)
{
    if (trimmed(path).empty())
        return LoadEnd::done;
    shell.platform.dialogs.set_busy(true);
    const bool named_hex = upper_case(path).find(".HEX") != std::string::npos;
    const FileRead file = read_file(path, named_hex, buffer.data.size());
    LoadEnd end = LoadEnd::done;
    if (file.kind == FileKind::hex) {
        if (!named_hex)
            read_load_parameters(shell, buffer);
        end = parse_hex(shell, path, file.contents, buffer);
    } else {
        end = parse_bin(
            shell, {reinterpret_cast<const std::uint8_t*>(file.contents.data()), file.contents.size()}, buffer);
    }
    shell.platform.dialogs.set_busy(false);
    if (end == LoadEnd::done) {
        ScrollBar& bar = shell.form.vscFile[controls_of(shell, buffer).scroll_index];
        bar.set_range(0, scroll_past_all);
        bar.set_value(scroll_past_all);
    }
    return end;
}

bool reload_last_path(Shell& shell)
{
    const std::string path = stored_path(shell, BufferKind::code);
    if (!is_file(path)) {
        show_box(shell, in_language(shell, file_not_found));
        return false;
    }
    shell.loader.current_path = path;
    const BufferControls controls = controls_of(shell, shell.code_buffer);
    controls.path_frame.set_caption(std::string{controls.path_caption} + path);
    return true;
}

void reload_code_file(Shell& shell)
{
    if (shell.loader.code_is_project || names_project(stored_path(shell, BufferKind::code)))
        return; // what the project holds is in the buffer, and its text is no code
    reload_last_path(shell);
    const std::string path = shell.loader.current_path; // a copy: the load may serve events
    load_file(shell, path, shell.code_buffer);
}

} // namespace vrk
