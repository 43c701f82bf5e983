#include "shell/option_panel.h"

#include "form/main_form.h"

#include "catalog/attributes.h"
#include "options/codec.h"
#include "options/fixed_options.h"
#include "options/panel_rules.h"
#include "options/voltage_texts.h"
#include "platform/text_number.h"
#include "shell/messages.h"
#include "shell/panel_state.h"
#include "shell/rc_boxes.h"
#include "shell/row_control.h"

#include <array>
#include <initializer_list>
#include <span>
#include <string>

namespace vrk {

namespace {

constexpr Text step_4 = {
    "Step4/步骤4: 设置本框和右下方 '选项' 中的选项", "Step4: Active following options after Next-PowerUp/Cold Reset"};
constexpr Text step_4_fixed = {"Step4/步骤4: 参数固定，跳过。", "Step4: Options"};
constexpr Text double_speed_label = {"Double speed / 双倍速:", "         Double speed:"};
constexpr Text double_speed_note = {"注:一旦烧录双倍速,由编程器擦除整个芯片才可恢复为单倍速", ""};
constexpr Text aspen_note = {"双倍速、加密位只能由编程器擦除、读、写。", ""};

constexpr int no_low_voltage_item = 15;

bool is_older_newer(int series) { return series >= 3 && series <= 5; }

std::array<std::span<OptionButton>, 14> option_groups(Shell& shell)
{
    return {shell.form.Option0, shell.form.Option1, shell.form.Option2, shell.form.Option3, shell.form.Option4,
        shell.form.Option5, shell.form.Option6, shell.form.Option7, shell.form.Option8, shell.form.Option9,
        shell.form.Option10, shell.form.Option11, shell.form.Option12, shell.form.Option13};
}

void hide_all(Shell& shell)
{
    const auto hide = [](auto& controls) {
        for (auto& control : controls)
            control.set_visible(false);
    };
    for (const std::span<OptionButton> group : option_groups(shell)) {
        for (OptionButton& button : group) {
            button.set_value(false);
            button.set_visible(false);
        }
    }
    hide(shell.form.LabOption);
    for (Label& label : shell.form.LabOption)
        label.set_caption(""); // a note without words must not keep those of the model before
    hide(shell.form.LabOptionC);
    hide(shell.form.Picture2);
    hide(shell.form.comWDT_Prescalar);
    for (Control* control : std::initializer_list<Control*>{&shell.form.Frame15, &shell.form.Frame20,
             &shell.form.Frame23, &shell.form.Picture4, &shell.form.Picture7, &shell.form.Label20})
        control->set_visible(false);
}

// Boxes of the RC oscillator: only two families have them.
void show_rc_boxes(Shell& shell)
{
    const bool shown = series_is_15_16(shell.selected.series);
    for (Label& label : shell.form.Label8)
        label.set_visible(false);
    for (ComboBox& box : shell.form.com_RC_frequency)
        box.set_visible(false);
    shell.form.txt_RC_frequency.set_visible(false);
    shell.form.txt_RC_frequency.set_enabled(false);
    for (const std::size_t box : {0U, 4U, 5U})
        shell.form.com_RC_frequency[box].set_visible(shown);
    // The frequency wanted and the low voltage have strips of their own on the Chinese page.
    shell.form.Label8[0].set_visible(shown && shell.language_is_english);
    shell.form.Label8[3].set_visible(shown && shell.language_is_english);
    shell.form.Label8[4].set_visible(shown);
    if (shown)
        fill_low_voltage_list(shell, no_low_voltage_item);
    if (series_is_15_16_17(shell.selected.series))
        sync_rc_divider(shell);
}

void show_pin_group(Shell& shell)
{
    const int series = shell.selected.series;
    const bool shown = series == 2 || series_is_rc_group(series) || is_older_newer(series) || series == 18;
    shell.form.Picture4.set_visible(shown);
    shell.form.Picture7.set_visible(shown);
}

void show_strips(Shell& shell, int page)
{
    for (int row = 0; row < shell.option_table.filled_rows(page); ++row) {
        if (shell.option_table.cell(page, row, OptionColumn::control) != "LabOption")
            continue;
        const int strip = static_cast<int>(number_in(shell.option_table.cell(page, row, OptionColumn::index)));
        shell.form.Picture2[strip].set_visible(strip_is_offered(shell.selected, strip));
    }
}

void apply_rows(Shell& shell, int page)
{
    for (int row = 0; row < shell.option_table.filled_rows(page); ++row) {
        if (Control* control = control_of_row(shell, page, row))
            apply_option_row(shell, page, *control, row);
    }
}

void show_note(Shell& shell, const Text& note)
{
    shell.form.LabOptionC[0].set_caption(in_language(shell, note));
    shell.form.LabOptionC[0].set_visible(!in_language(shell, note).empty());
}

void build_from_page(Shell& shell)
{
    const int series = shell.selected.series;
    const int page = option_page_of_series(series).page;
    shell.form.FrameX[3].set_caption(in_language(shell, step_4));
    show_strips(shell, page);
    write_panel_voltages(shell.option_table, page, shell.selected, shell.language_is_english);
    apply_rows(shell, page);
    show_pin_group(shell);
    if (series == 0) {
        shell.form.LabOption[0].set_caption(in_language(shell, double_speed_label));
        show_note(shell, double_speed_note);
    } else if (series == 1) {
        show_note(shell, aspen_note);
    }
    if (starts_on_internal_oscillator(shell.selected))
        shell.form.Option0[0].set_value(true);
}

void show_fixed_options(Shell& shell)
{
    const std::vector<std::string> lines = fixed_option_lines(shell.selected, shell.language_is_english);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        shell.form.LabOption[i].set_caption(lines[i]);
        shell.form.LabOption[i].set_visible(!lines[i].empty());
        shell.form.Picture2[i].set_visible(!lines[i].empty());
    }
}

OptionColumn enable_column(std::int16_t panel_state)
{
    switch (panel_state) {
    case 0:
        return OptionColumn::enable_idle;
    case 1:
        return OptionColumn::enable_running;
    default:
        return OptionColumn::enable_locked;
    }
}

// The oldest families with a watchdog: one that a reset stops has nothing more to choose.
void enable_watchdog_rows(Shell& shell)
{
    const bool enabled = !shell.form.Option10[1].value();
    for (Control* control : std::initializer_list<Control*>{&shell.form.Label9, &shell.form.comWDT_Prescalar[0],
             &shell.form.LabOption[11], &shell.form.Option11[0], &shell.form.Option11[1]})
        control->set_enabled(enabled);
}

void enable_rows(Shell& shell, int page)
{
    const OptionColumn column = enable_column(panel_state(shell));
    for (int row = 0; row < shell.option_table.filled_rows(page); ++row) {
        if (Control* control = control_of_row(shell, page, row))
            control->set_enabled(number_in(shell.option_table.cell(page, row, column)) != 0);
    }
}

// A model without a data flash has no file whose sum could be told, and no number in it.
void enable_data_fields(Shell& shell)
{
    if (!has_eeprom_buffer(shell.selected)) {
        shell.form.txtDataFileCheckSum.set_enabled(false);
        shell.form.cheData_Auto_Increase.set_enabled(false);
    }
    enable_number_fields(shell);
}

} // namespace

void build_option_panel(Shell& shell)
{
    shell.form.textMsg.set_text("");
    hide_all(shell);
    show_rc_boxes(shell);
    if (shell.selected.cap_no_option_write) {
        shell.form.FrameX[3].set_caption(in_language(shell, step_4_fixed));
        show_fixed_options(shell);
    } else {
        build_from_page(shell);
    }
    apply_options_to_controls(shell);
}

// Where the row's other columns would place or enable a control, they have no effect here: the window lays its strips
// out by itself, and what can be changed is a matter of the panel state.
void apply_option_row(Shell& shell, int page, Control& control, int row)
{
    const OptionTable& table = shell.option_table;
    const std::string& value = table.cell(page, row, OptionColumn::value);
    if (!value.empty())
        write_property(control, table.cell(page, row, OptionColumn::property), value);
    const std::string& visible = table.cell(page, row, OptionColumn::visible);
    if (!visible.empty())
        control.set_visible(number_in(visible) != 0);
}

void apply_options_to_controls(Shell& shell)
{
    enable_rows(shell, option_page::project_fields);
    enable_rows(shell, option_page_of_series(shell.selected.series).page);
    enable_data_fields(shell);
}

void apply_panel_state_to_options(Shell& shell)
{
    enable_rows(shell, option_page::project_fields);
    if (!shell.selected.cap_no_option_write)
        enable_rows(shell, option_page_of_series(shell.selected.series).page);
    enable_data_fields(shell);
}

void enable_number_fields(Shell& shell)
{
    const auto enable = [](const CheckBox& box, auto& fields, auto& systems) {
        const bool enabled = box.enabled() && !box.value();
        for (TextBox& field : fields)
            field.set_enabled(enabled);
        for (OptionButton& system : systems)
            system.set_enabled(enabled);
    };
    enable(shell.form.cheAuto_Increase, shell.form.texAuto_Increase, shell.form.optAuto_Increase);
    enable(shell.form.cheData_Auto_Increase, shell.form.texData_Auto_Increase, shell.form.optData_Auto_Increase);
}

void change_low_voltage_default(Shell& shell, std::string_view node_key)
{
    set_low_voltage_default(shell.option_table, shell.selected, shell.language_is_english, node_key);
}

void option_button_click(Shell& shell, int strip, int index)
{
    const int series = shell.selected.series;
    // The clock's button may have been let go again in between; the pin's has not.
    const auto also =
        strip == 0 && !shell.form.Option0[0].value() ? std::nullopt : brings_along(series, {strip, index});
    if (also)
        option_groups(shell)[static_cast<std::size_t>(also->strip)][static_cast<std::size_t>(also->button)].set_value(
            true);
    if (strip == 9 && series < 3)
        enable_watchdog_rows(shell);
    if (strip >= 9 && strip <= 13 && series >= 3)
        apply_options_to_controls(shell);
}

} // namespace vrk
