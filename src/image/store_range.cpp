#include "image/store_range.h"

#include "form/messages.h"
#include "image/whole_file.h"
#include "platform/text_number.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vrk {

namespace {

constexpr std::int64_t highest_address = 0xFFFF;

// clang-format off
struct StoreText { StoreFault fault; Text text; };
constexpr StoreText store_texts[] = {
//    fault                           Chinese (both languages), English
    { StoreFault::start_too_small,  { "The start address is too small.\n      起始地址小于 0。",
                                      "The start address is too small." } },
    { StoreFault::start_too_big,    { "The start Address is too big.\n起始地址太大。",
                                      "The start Address is too big." } },
    { StoreFault::too_short,        { "The file size is too small.\n文件长度不能小于 0。",
                                      "The file size is too small." } },
    { StoreFault::too_long,         { "The file size is too big.\n文件长度太大。",
                                      "The file size is too big." } },
};
constexpr Text not_written =        { "无法写入文件，磁盘上原有的内容没有改变。",
                                      "The file cannot be written; what stood on the disk before is still there." };
// clang-format on

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
    return shell.platform.dialogs.choose(dialog);
}

} // namespace

StoreFault store_fault(std::int64_t start, std::int64_t length)
{
    if (start < 0)
        return StoreFault::start_too_small;
    if (start > highest_address)
        return StoreFault::start_too_big;
    if (length <= 0)
        return StoreFault::too_short;
    return start + length - 1 > highest_address ? StoreFault::too_long : StoreFault::none;
}

void comStoreFile_Click(Shell& shell)
{
    const std::int32_t start = hex_address_4(shell.form.txt_Start_Address.text());
    const std::int32_t length = hex_address_5(shell.form.txt_length.text());
    const StoreFault fault = store_fault(start, length);
    const auto told = std::find_if(
        std::begin(store_texts), std::end(store_texts), [fault](const StoreText& row) { return row.fault == fault; });
    if (told != std::end(store_texts))
        return show_box(shell, in_language(shell, told->text));

    const auto path = ask_for_file(shell);
    if (!path || path->empty())
        return;
    const std::string reason = write_whole_file(*path,
        std::span{shell.code_buffer.data}.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(length)));
    if (!reason.empty())
        show_box(shell, std::string{in_language(shell, not_written)} + "\n" + *path + "\n" + reason);
}

} // namespace vrk
