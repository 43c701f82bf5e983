#include "shell/project.h"

#include "form/main_form.h"

#include "shell/buffer_view.h"
#include "shell/device.h"
#include "shell/messages.h"
#include "shell/option_panel.h"
#include "shell/panel_state.h"
#include "shell/project_file.h"
#include "shell/project_values.h"
#include "shell/recent.h"
#include "shell/serial_numbers.h"
#include "shell/store_file.h"

#include "image/project_read.h"
#include "platform/text_number.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace vrk {

namespace {

constexpr const char* project_filter = "*.VRK |*.VRK|All Files (*.*)|*.*";
constexpr std::string_view model_shown = "MCU Type: ";

// clang-format off
//                                 Chinese                                           English
constexpr Text save_title      = { "保存工程文件 *.VRK",                               "Save Project File *.VRK" };
constexpr Text open_title      = { "Open Project File *.VRK",                        "Open Project File *.VRK" };
constexpr Text no_code_file    = { "Please open code file./请打开应用程序文件。",         "Please open code file." };
constexpr Text not_saved       = { "工程文件无法保存，原有文件没有改变。",               "The project file can not be saved. A former file is as it was." };
constexpr Text replace_it      = { "文件已存在，要替换吗(Y/N)? \n",                        "The file exists already. Do you want to replace it (Y/N)?\n" };
constexpr Text is_code_file    = { "工程文件不能覆盖已打开的程序文件。",                   "The project can not take the place of the open code file." };
constexpr Text check_number    = { "    您打开的工程文件启用了自动增量功能，请检查自动增量“下一个值(10进制)”的数值是否正确。\n"
                                   "若要修改“下一个值(10进制)”，请先点击“允许修改参数和选项”按钮。",
                                   "The project file has atomatic increment function. \n"
                                   "Please check the next value whether it is correct or not(10 base)." };
// clang-format on

FileDialog project_dialog(const Shell& shell, FileDialog::Kind kind, const Text& title)
{
    FileDialog dialog;
    dialog.kind = kind;
    dialog.title = in_language(shell, title);
    dialog.filter = project_filter;
    dialog.initial_dir = project_folder(shell.loader);
    dialog.file_name = shell.form.texBatchFileName.text();
    dialog.must_exist = kind == FileDialog::Kind::open;
    return dialog;
}

// ---- saving

constexpr const char* suffix = ".VRK"; // by which the dialogs find a project again

// Nothing: the name with its suffix is that of another project, which is to stay.
std::optional<std::string> with_suffix(Shell& shell, const std::string& path)
{
    if (std::filesystem::path{path}.has_extension())
        return path;
    const std::string named = path + suffix;
    std::error_code fault;
    const bool taken = std::filesystem::exists(named, fault); // the dialog has asked for the name without it
    if (taken && !ask_yes_no(shell, std::string{in_language(shell, replace_it)} + named))
        return std::nullopt;
    return named;
}

std::span<const std::uint8_t> loaded_bytes(const FileBuffer& buffer)
{
    const std::int32_t count = std::clamp(buffer.view_high, -1, buffer.last()) + 1;
    return {buffer.data.data(), static_cast<std::size_t>(count)};
}

// ---- opening

// The model of the file, or nothing after the user was told why the file cannot be used.
const std::string* model_of(Shell& shell, const Project& project)
{
    if (project.version == Project::Version::old)
        show_box(shell, in_language(shell, project_text_of::old_version));
    if (project.version == Project::Version::refused) {
        show_box(shell, in_language(shell, project_text_of::refused_version));
        return nullptr;
    }
    const std::string* model = project.find("MCU_Type");
    if (model == nullptr || model->empty()) {
        show_box(shell, in_language(shell, project_text_of::no_model));
        return nullptr;
    }
    return model;
}

// False: no such model, the user was told, and the one before is in force as it was.
bool select_model(Shell& shell, const std::string& model)
{
    const std::string text_before = shell.form.txtDevice.text();
    const std::string shown_before = shell.form.Label2[6].caption();
    const bool locked_before = shell.locked;
    set_locked(shell, false);
    shell.form.txtDevice.set_text(model);
    shell.form.Label2[6].set_caption(std::string{model_shown} + model);
    if (!apply_selected_device(shell)) {
        shell.form.txtDevice.set_text(text_before);
        shell.form.Label2[6].set_caption(shown_before);
        set_locked(shell, locked_before);
        return false;
    }
    shell.last_talk.chip.target_ok = false;
    shell.form.TreeViewDevice.select(model); // not all models have a node
    change_low_voltage_default(shell, model);
    build_option_panel(shell);
    return true;
}

// A slip in the dialog: the next reload would bring the project's text in as a program.
bool is_open_code_file(const LoaderState& loader, const std::string& path)
{
    std::error_code missing; // then it is another file
    return !loader.code_is_project && std::filesystem::equivalent(loader.code_path, path, missing);
}

void clear_job(Shell& shell)
{
    stop_stamping(shell);
    clear_buffer(shell, 0, shell.code_buffer);
    clear_buffer(shell, 0, shell.data_buffer);
}

void take_image(Shell& shell, const ProjectImage& image, FileBuffer& buffer, const Text& wrong_sum)
{
    if (image.found) {
        std::ranges::copy(image.bytes, buffer.data.begin());
        buffer.high = static_cast<std::int32_t>(image.bytes.size()) - 1;
        buffer.view_high = buffer.high;
        buffer.loaded = true;
        forget_edits(shell, buffer.kind);
        update_view(shell, buffer);
    }
    if (!image.sum_is_right)
        show_box(shell, in_language(shell, wrong_sum));
}

// The number in the image is the one for the next chip: it is not stamped anew.
void take_up_numbers(Shell& shell)
{
    if (take_up_project_numbers(shell))
        show_box(shell, in_language(shell, check_number));
}

} // namespace

void comSaveBatchFile_Click(Shell& shell)
{
    if (!shell.file_loaded)
        return show_box(shell, in_language(shell, no_code_file));
    make_folder(project_folder(shell.loader));
    const auto chosen = choose_path(shell, project_dialog(shell, FileDialog::Kind::save, save_title));
    if (chosen && !trimmed(*chosen).empty())
        save_project(shell, *chosen);
}

void save_project(Shell& shell, const std::string& chosen)
{
    const auto named = with_suffix(shell, std::string{trimmed(chosen)});
    if (!named)
        return;
    const std::string& path = *named;
    if (is_open_code_file(shell.loader, path))
        return show_box(shell, in_language(shell, is_code_file), path);
    shell.form.texBatchFileName.set_text(path);
    ProjectContent content{project_values(shell), loaded_bytes(shell.code_buffer), std::nullopt};
    if (shell.data_buffer.loaded)
        content.data = loaded_bytes(shell.data_buffer);
    const std::string text = project_text(content);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    if (write_or_tell(shell, path, {bytes, text.size()}, not_saved))
        note_recent(shell, Recent::project, path);
}

void comOpenBatchFile_Click(Shell& shell)
{
    const auto chosen = choose_path(shell, project_dialog(shell, FileDialog::Kind::open, open_title));
    if (chosen && !trimmed(*chosen).empty())
        open_project(shell, *chosen);
}

void open_project(Shell& shell, const std::string& chosen)
{
    // The buttons that lead here are off then; only a dialog that was left open can come this far.
    if (shell.running)
        return;
    const std::string path{trimmed(chosen)};
    shell.form.texBatchFileName.set_text(path);
    const auto text = read_project_file(path);
    if (!text)
        return show_box(shell, in_language(shell, project_text_of::not_found));
    if (take_project(shell, *text))
        note_recent(shell, Recent::project, path);
}

bool take_project(Shell& shell, std::string_view text)
{
    const Project project = parse_project(text);
    const std::string* model = model_of(shell, project);
    if (model == nullptr || !select_model(shell, *model))
        return false;
    clear_job(shell);
    apply_project_values(shell, project);
    take_image(shell, project.code, shell.code_buffer, project_text_of::wrong_code_sum);
    if (project.has_data)
        take_image(shell, project.data, shell.data_buffer, project_text_of::wrong_data_sum);
    show_effective_lengths(shell);
    take_up_numbers(shell);
    // Only now: events have been served under the boxes, and half a job must not be downloaded.
    shell.file_loaded = project.code.found;
    shell.loader.code_is_project = project.code.found;
    set_locked(shell, true);
    return true;
}

void comLockOptions_Click(Shell& shell) { set_locked(shell, true); }
void comUnlockOptions_Click(Shell& shell) { set_locked(shell, false); }

} // namespace vrk
