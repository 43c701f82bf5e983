#include "shell/store_file.h"

#include "form/main_form.h"

#include "image/store_range.h"
#include "platform/text_number.h"
#include "platform/whole_file.h"
#include "shell/messages.h"

#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace vrk {

namespace {

constexpr Text not_written = {"无法写入文件，磁盘上原有的内容没有改变。",
    "The file cannot be written; what stood on the disk before is still there."};
constexpr Text not_confirmed = {"文件已写入，但磁盘没有确认，断电后可能丢失。",
    "The file is written, but the disk has not confirmed it; a power cut may bring the former one back."};

// Where the code file lies that was opened last.
std::string folder_of_code(Shell& shell)
{
    const std::string path = shell.platform.settings.get("Settings", "FilePath", shell.loader.application_dir);
    std::error_code fault;
    return std::filesystem::is_directory(path, fault) ? path : std::filesystem::path{path}.parent_path().string();
}

std::optional<std::string> ask_for_file(Shell& shell)
{
    FileDialog dialog;
    dialog.kind = FileDialog::Kind::save;
    dialog.title = "Save .bin file";
    dialog.filter = "(*.bin)|*.bin|All Files (*.*)|*.*";
    dialog.initial_dir = folder_of_code(shell);
    return choose_path(shell, dialog);
}

} // namespace

void comStoreFile_Click(Shell& shell)
{
    const std::int32_t start = hex_address_4(shell.form.txt_Start_Address.text());
    const std::int32_t length = hex_address_5(shell.form.txt_length.text());
    const StoreFault fault = store_fault(start, length);
    if (fault != StoreFault::none)
        return show_box(shell, in_language(shell, store_text(fault)));

    const auto path = ask_for_file(shell);
    if (!path || path->empty())
        return;
    write_or_tell(shell, *path,
        std::span{shell.code_buffer.data}.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(length)),
        not_written);
}

bool write_or_tell(Shell& shell, const std::string& path, std::span<const std::uint8_t> bytes, const Text& unchanged)
{
    const auto fault = write_whole_file(path, bytes);
    if (!fault)
        return true;
    const Text& what = fault->in_place ? not_confirmed : unchanged;
    show_box(shell, std::string{in_language(shell, what)} + "\n" + path + "\n" + fault->reason);
    return false;
}

} // namespace vrk
