#include "shell/row_control.h"

#include "platform/text_number.h"

namespace vrk {

Control* control_of_row(const Shell& shell, int page, int row)
{
    const std::string& name = shell.option_table.cell(page, row, OptionColumn::control);
    const std::string& index = shell.option_table.cell(page, row, OptionColumn::index);
    if (name.empty())
        return nullptr;
    return shell.controls.find(name, index.empty() ? Control::no_index : static_cast<int>(number_in(index)));
}

std::string read_property(const Control& control, std::string_view property)
{
    if (property == "Value") {
        if (const auto* button = dynamic_cast<const OptionButton*>(&control))
            return button->value() ? "True" : "False";
        if (const auto* box = dynamic_cast<const CheckBox*>(&control))
            return box->value() ? "True" : "False";
    } else if (property == "Text" || property == "text") {
        if (const auto* box = dynamic_cast<const TextBox*>(&control))
            return box->text();
        if (const auto* list = dynamic_cast<const ComboBox*>(&control))
            return list->text();
    } else if (property == "Caption") {
        if (const auto* with_caption = dynamic_cast<const CaptionControl*>(&control))
            return with_caption->caption();
    }
    return {};
}

void write_property(Control& control, std::string_view property, std::string_view value)
{
    if (property == "Value") {
        const bool on = number_in(value) != 0;
        if (auto* button = dynamic_cast<OptionButton*>(&control))
            button->set_value(on);
        else if (auto* box = dynamic_cast<CheckBox*>(&control))
            box->set_value(on);
    } else if (property == "Text") {
        if (auto* box = dynamic_cast<TextBox*>(&control))
            box->set_text(value);
        else if (auto* list = dynamic_cast<ComboBox*>(&control))
            list->set_text(value);
    } else if (property == "Caption") {
        if (auto* with_caption = dynamic_cast<CaptionControl*>(&control))
            with_caption->set_caption(value);
    }
}

} // namespace vrk
