#include "shell/option_choices.h"

#include "form/main_form.h"

#include "shell/row_control.h"

#include "catalog/attributes.h"

#include <algorithm>

namespace vrk {

namespace {

// What the box of a key's row says; nothing where the page has no such row, or the form no such box.
std::optional<std::string> box_text(const Shell& shell, int page, std::string_view key)
{
    const int row = find_key(shell.option_table, page, key);
    const Control* box = row < 0 ? nullptr : control_of_row(shell, page, row);
    if (box == nullptr)
        return std::nullopt;
    return read_property(*box, "Text");
}

RcChoice read_rc_choice(const MainForm& form)
{
    RcChoice rc;
    rc.band = form.com_RC_frequency[1].index_chosen();
    rc.trim = form.com_RC_frequency[2].index_chosen();
    rc.low_voltage = form.com_RC_frequency[4].index_chosen();
    rc.wanted = rc_wanted_byte(form.txt_RC_frequency.text());
    return rc;
}

} // namespace

void snapshot_controls(Shell& shell)
{
    const int page = option_page_of_series(shell.selected.series).page;
    clear_snapshot(shell.option_table, page);
    // All rows, also those behind the last one that makes bytes: a project keeps their choices too.
    for (int row = 0; row < shell.option_table.filled_rows(page); ++row) {
        if (shell.option_table.cell(page, row, OptionColumn::bit_code).empty())
            continue;
        if (const Control* control = control_of_row(shell, page, row)) {
            const std::string& property = shell.option_table.cell(page, row, OptionColumn::property);
            shell.option_table.set_cell(page, row, OptionColumn::snapshot, read_property(*control, property));
        }
    }
}

OptionChoices read_option_choices(Shell& shell)
{
    const OptionPage page = option_page_of_series(shell.selected.series);
    snapshot_controls(shell);
    OptionChoices choices;
    choices.chosen = chosen_rows(shell.option_table, page);
    choices.watchdog_divider = box_text(shell, page.page, "WDT_Prescalar");
    choices.rc30k_divider = box_text(shell, page.page, "RC30K_Divder");
    choices.rc = read_rc_choice(shell.form);
    return choices;
}

} // namespace vrk
