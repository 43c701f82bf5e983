#include "shell/project_values.h"

#include "image/project_keys.h"
#include "options/codec.h"
#include "options/option_sheet.h"
#include "shell/option_choices.h"
#include "shell/row_control.h"

#include <algorithm>

namespace vrk {

namespace {

int page_of_model(const Shell& shell) { return option_page_of_series(shell.selected.series).page; }

// ---- from the controls

std::string text_of(const Control& control, std::string_view property)
{
    if (const auto* box = dynamic_cast<const CheckBox*>(&control))
        return box->value() ? "1" : "0";
    return read_property(control, property);
}

std::string text_of_row(const Shell& shell, int page, int row)
{
    const Control* control = control_of_row(shell, page, row);
    return control == nullptr ? "" : text_of(*control, shell.option_table.cell(page, row, OptionColumn::property));
}

// Choices as the snapshot has them; boxes, which are no part of it, as they stand.
std::string option_text(const Shell& shell, int page, int row)
{
    if (shell.option_table.cell(page, row, OptionColumn::bit_code).empty())
        return text_of_row(shell, page, row);
    return shell.option_table.cell(page, row, OptionColumn::snapshot);
}

// ---- to the controls

void write_checked(Control& control, bool checked)
{
    // The choice of another button lets one go: a damaged file must not leave a pair without any choice.
    if (!checked && dynamic_cast<const OptionButton*>(&control) != nullptr)
        return;
    write_property(control, "Value", checked ? "1" : "0");
}

// By its text, or by its number from 0.
void write_item(ComboBox& box, const std::string& value)
{
    if (const auto place = item_by(box.items(), value))
        box.choose(*place);
}

void write_value(Control& control, const std::string& property, const std::string& value)
{
    if (property == "Value") {
        if (const auto checked = checked_by(value))
            write_checked(control, *checked);
    } else if (auto* box = dynamic_cast<ComboBox*>(&control)) {
        write_item(*box, value);
    } else {
        write_property(control, property, value);
    }
}

void write_row(Shell& shell, int page, int row, const std::string& value)
{
    if (Control* control = control_of_row(shell, page, row))
        write_value(*control, shell.option_table.cell(page, row, OptionColumn::property), value);
}

// The captions of the panel have keys too, and are no part of a project.
bool is_option(const Shell& shell, int page, int row)
{
    return row >= 0 && shell.option_table.cell(page, row, OptionColumn::property) != "Caption";
}

void apply_value(Shell& shell, std::string_view key, const std::string& value)
{
    const int common = find_key(shell.option_table, option_page::project_fields, key);
    if (common >= 0)
        return write_row(shell, option_page::project_fields, common, value);
    const int page = page_of_model(shell);
    const int row = find_key(shell.option_table, page, key);
    if (is_option(shell, page, row))
        write_row(shell, page, row, value);
}

} // namespace

std::vector<ProjectValue> project_values(Shell& shell)
{
    std::vector<ProjectValue> values;
    constexpr int common = option_page::project_fields;
    for (int row = 0; row < shell.option_table.filled_rows(common); ++row)
        values.push_back({shell.option_table.cell(common, row, OptionColumn::key), text_of_row(shell, common, row)});
    snapshot_controls(shell);
    const int page = page_of_model(shell);
    for (const std::string_view key : project_option_keys()) {
        const int row = find_key(shell.option_table, page, key);
        if (row >= 0)
            values.push_back({std::string{key}, option_text(shell, page, row)});
    }
    return values;
}

void apply_project_values(Shell& shell, const Project& project)
{
    for (const auto& [key, value] : values_in_use(project, page_of_model(shell)))
        apply_value(shell, key, value);
}

} // namespace vrk
