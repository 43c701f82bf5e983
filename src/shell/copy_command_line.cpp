#include "shell/copy_command_line.h"

#include "form/named_controls.h"

#include "shell/buffer_view.h"
#include "shell/make_job.h"
#include "shell/messages.h"
#include "shell/option_choices.h"

#include "image/load.h"
#include "options/option_sheet.h"
#include "platform/text_number.h"
#include "recipe/number_words.h"
#include "recipe/prepare.h"
#include "recipe/recipe_words.h"

namespace vrk {

namespace {

constexpr Text no_file = {"Please open code file./请打开应用程序文件。", "Please open code file."};
constexpr Text not_the_same = {
    "当前任务不能用命令行表示 (数据已编辑、由多个文件组成或文件已更改)。\n请先保存为工程文件，再打开该工程文件后复制。",
    "The job as it stands can not be told by a command line: its bytes were edited, or come from several files, or a "
    "file has changed.\nSave it as a project, open that project and copy again."};

// What a load would tell or ask was told when the file was opened.
struct NoBoxes final : Boxes {
    void show_box(const Line& /*text*/, const Line& /*title*/) override { }
    bool ask(const Line& /*question*/, const Line& /*title*/) override { return false; }
};

std::string path_over(Shell& shell, BufferKind kind)
{
    const BufferControls controls = controls_of(shell, kind);
    std::string path = controls.path_frame.caption();
    path.erase(0, controls.path_caption.size());
    return path;
}

std::string start_text(const FileBuffer& buffer) { return hex_text(load_base(buffer.start)); }

void add_number(const AutoIncrease& number, bool in_project, std::vector<NumberWish>& wishes)
{
    if (!number.valid)
        return;
    NumberWish wish;
    wish.kind = number.kind;
    wish.next = number.next_value;
    if (!in_project) {
        wish.address = hex_text(number.address, 4);
        wish.bytes = std::to_string(number.bytes);
        wish.step = std::to_string(number.increment);
        wish.system = std::string{system_word(number.system)};
    }
    wishes.push_back(std::move(wish));
}

std::vector<OptionWish> turned_options(Shell& shell, const Job& job)
{
    const OptionSheet defaults(shell.selected, shell.language_is_english);
    std::optional<std::string> pin;
    if (job.watchdog_pin)
        pin = NamedControls{shell.controls}.list("comb_WDT").text();
    std::vector<OptionWish> wishes;
    for (const auto& [name, choice] : defaults.turned(read_option_choices(shell), pin, job.rc_target_mhz))
        wishes.push_back({name, choice});
    return wishes;
}

} // namespace

Recipe recipe_on_screen(Shell& shell)
{
    const Job job = make_job(shell);
    const bool in_project = shell.loader.code_is_project;
    Recipe recipe;
    recipe.english = shell.language_is_english;
    recipe.line = job.line;
    add_number(shell.code_increase, in_project, recipe.numbers);
    add_number(shell.data_increase, in_project, recipe.numbers);
    if (in_project) {
        recipe.file = trimmed(NamedControls{shell.controls}.text_box("texBatchFileName").text());
        return recipe;
    }
    recipe.file = shell.loader.code_path;
    recipe.model = job.model_name;
    recipe.start = start_text(shell.code_buffer);
    if (shell.data_buffer.loaded) {
        recipe.eeprom = path_over(shell, BufferKind::data);
        recipe.eeprom_start = start_text(shell.data_buffer);
    }
    recipe.options = turned_options(shell, job);
    return recipe;
}

void mnuCopyCommandLine_Click(Shell& shell)
{
    if (!shell.file_loaded)
        return show_box(shell, in_language(shell, no_file));
    const Recipe recipe = recipe_on_screen(shell);
    NoBoxes no_boxes;
    const auto prepared = prepare(recipe, shell.mcu_table, no_boxes);
    const Batch* batch = std::get_if<Batch>(&prepared);
    if (batch == nullptr || next_job(*batch) != make_job(shell))
        return show_box(shell, in_language(shell, not_the_same));
    const std::string line = shell_line(flash_words(recipe));
    shell.platform.dialogs.copy_text(line);
    append_message(shell, line);
}

} // namespace vrk
