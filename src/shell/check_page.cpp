#include "shell/check_page.h"

#include "form/main_form.h"

#include "options/option_report.h"
#include "shell/messages.h"

namespace vrk {

namespace {

constexpr std::size_t head_label = 0;
constexpr std::size_t first_line_label = 1;
constexpr std::size_t last_line_label = 13;
constexpr std::size_t foot_label = 15;

} // namespace

void show_chip_status(Shell& shell, const ChipStatus& status)
{
    const bool english = shell.language_is_english;
    const std::vector<std::string> options = option_lines(shell.option_table, status, english);
    for (const std::string& line : options)
        append_message(shell, line);
    const std::vector<std::string> lines = check_page_lines(status, options, english);
    if (lines.empty())
        return;
    clear_check_page(shell);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Label& label = shell.form.LabLock[first_line_label + i];
        label.set_caption(lines[i]);
        label.set_visible(true);
    }
}

void clear_check_page(Shell& shell)
{
    shell.form.LabLock[head_label].set_visible(true);
    shell.form.LabLock[foot_label].set_visible(true);
    for (std::size_t label = first_line_label; label <= last_line_label; ++label)
        shell.form.LabLock[label].set_caption("");
}

} // namespace vrk
