#include "options/panel.h"

#include "options/codec.h"
#include "options/fixed_options.h"
#include "options/rc_setting.h"
#include "options/row_control.h"
#include "options/voltage_texts.h"

#include "catalog/attributes.h"
#include "form/messages.h"
#include "platform/text_number.h"

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

constexpr std::int32_t internal_clock_below =
    13312; // code size of the older families' models that start without crystal
constexpr std::int32_t all_strips_from = 14336; // smaller ones have no choices on their code and data area's ends
constexpr int last_strip_of_small = 2;
constexpr int second_stack = 8; // the first strip of the lower stack
constexpr int no_low_voltage_item = 15;

bool is_older_newer(int series) { return series >= 3 && series <= 5; }

std::array<std::span<OptionButton>, 14> option_groups(MainForm& form)
{
    return {form.Option0, form.Option1, form.Option2, form.Option3, form.Option4, form.Option5, form.Option6,
        form.Option7, form.Option8, form.Option9, form.Option10, form.Option11, form.Option12, form.Option13};
}

void hide_all(MainForm& form)
{
    const auto hide = [](auto& controls) {
        for (auto& control : controls)
            control.set_visible(false);
    };
    for (const std::span<OptionButton> group : option_groups(form)) {
        for (OptionButton& button : group) {
            button.set_value(false);
            button.set_visible(false);
        }
    }
    hide(form.LabOption);
    for (Label& label : form.LabOption)
        label.set_caption(""); // a note without words must not keep those of the model before
    hide(form.LabOptionC);
    hide(form.Picture2);
    hide(form.comWDT_Prescalar);
    for (Control* control : std::initializer_list<Control*>{
             &form.Frame15, &form.Frame20, &form.Frame23, &form.Picture4, &form.Picture7, &form.Label20})
        control->set_visible(false);
}

// Boxes of the RC oscillator: only two families have them.
void show_rc_boxes(MainForm& form)
{
    const bool shown = form.series_is_15_16;
    for (Label& label : form.Label8)
        label.set_visible(false);
    for (ComboBox& box : form.com_RC_frequency)
        box.set_visible(false);
    form.txt_RC_frequency.set_visible(false);
    form.txt_RC_frequency.set_enabled(false);
    for (const std::size_t box : {0U, 4U, 5U})
        form.com_RC_frequency[box].set_visible(shown);
    // The frequency wanted and the low voltage have strips of their own on the Chinese page.
    form.Label8[0].set_visible(shown && form.language_is_english);
    form.Label8[3].set_visible(shown && form.language_is_english);
    form.Label8[4].set_visible(shown);
    if (shown)
        fill_low_voltage_list(form, no_low_voltage_item);
    if (form.series_is_15_16_17)
        sync_rc_divider(form);
}

void show_pin_group(MainForm& form)
{
    const int series = form.selected.series;
    const bool shown = series == 2 || series_is_rc_group(series) || is_older_newer(series) || series == 18;
    form.Picture4.set_visible(shown);
    form.Picture7.set_visible(shown);
}

bool strip_is_shown(const MainForm& form, int strip)
{
    const bool small = is_older_newer(form.selected.series) && form.selected.ap_last < all_strips_from;
    return !small || strip <= last_strip_of_small || strip >= second_stack;
}

void show_strips(MainForm& form, int page)
{
    for (int row = 0; row < form.option_table.filled_rows(page); ++row) {
        if (form.option_table.cell(page, row, OptionColumn::control) != "LabOption")
            continue;
        const int strip = static_cast<int>(number_in(form.option_table.cell(page, row, OptionColumn::index)));
        form.Picture2[strip].set_visible(strip_is_shown(form, strip));
    }
}

void apply_rows(MainForm& form, int page)
{
    for (int row = 0; row < form.option_table.filled_rows(page); ++row) {
        if (Control* control = control_of_row(form, page, row))
            apply_option_row(form, page, *control, row);
    }
}

void show_note(MainForm& form, const Text& note)
{
    form.LabOptionC[0].set_caption(in_language(form, note));
    form.LabOptionC[0].set_visible(!in_language(form, note).empty());
}

void build_from_page(MainForm& form)
{
    const int series = form.selected.series;
    const int page = option_page_of_series(series).page;
    form.FrameX[3].set_caption(in_language(form, step_4));
    show_strips(form, page);
    write_panel_voltages(form, page);
    apply_rows(form, page);
    show_pin_group(form);
    if (series == 0) {
        form.LabOption[0].set_caption(in_language(form, double_speed_label));
        show_note(form, double_speed_note);
    } else if (series == 1) {
        show_note(form, aspen_note);
    }
    if (is_older_newer(series) && form.selected.ap_last < internal_clock_below)
        form.Option0[0].set_value(true);
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
void enable_watchdog_rows(MainForm& form)
{
    const bool enabled = !form.Option10[1].value();
    for (Control* control : std::initializer_list<Control*>{
             &form.Label9, &form.comWDT_Prescalar[0], &form.LabOption[11], &form.Option11[0], &form.Option11[1]})
        control->set_enabled(enabled);
}

} // namespace

void build_option_panel(MainForm& form)
{
    form.textMsg.set_text("");
    hide_all(form);
    show_rc_boxes(form);
    if (form.selected.cap_no_option_write) {
        form.FrameX[3].set_caption(in_language(form, step_4_fixed));
        show_fixed_options(form);
    } else {
        build_from_page(form);
    }
    apply_options_to_controls(form);
}

// Where the row's other columns would place or enable a control, they have no effect here: the window lays its strips
// out by itself, and what can be changed is a matter of the panel state.
void apply_option_row(MainForm& form, int page, Control& control, int row)
{
    const OptionTable& table = form.option_table;
    const std::string& value = table.cell(page, row, OptionColumn::value);
    if (!value.empty())
        write_property(control, table.cell(page, row, OptionColumn::property), value);
    const std::string& visible = table.cell(page, row, OptionColumn::visible);
    if (!visible.empty())
        control.set_visible(number_in(visible) != 0);
}

void apply_options_to_controls(MainForm& form)
{
    const OptionColumn column = enable_column(form.job.panel_state);
    for (const int page : {option_page::project_fields, option_page_of_series(form.selected.series).page}) {
        for (int row = 0; row < form.option_table.filled_rows(page); ++row) {
            if (Control* control = control_of_row(form, page, row))
                control->set_enabled(number_in(form.option_table.cell(page, row, column)) != 0);
        }
    }
    // A model without a data flash has no file whose sum could be told, and no number in it.
    if (!has_eeprom_buffer(form.selected)) {
        form.txtDataFileCheckSum.set_enabled(false);
        form.cheData_Auto_Increase.set_enabled(false);
    }
    enable_number_fields(form);
}

void enable_number_fields(MainForm& form)
{
    const auto enable = [](const CheckBox& box, auto& fields, auto& systems) {
        const bool enabled = box.enabled() && !box.value();
        for (TextBox& field : fields)
            field.set_enabled(enabled);
        for (OptionButton& system : systems)
            system.set_enabled(enabled);
    };
    enable(form.cheAuto_Increase, form.texAuto_Increase, form.optAuto_Increase);
    enable(form.cheData_Auto_Increase, form.texData_Auto_Increase, form.optData_Auto_Increase);
}

void change_low_voltage_default(MainForm& form, std::string_view node_key)
{
    const int series = form.selected.series;
    const int page = option_page_of_series(series).page;
    const int row = find_key(form.option_table, page, "LowU_Reset_YES_Clew");
    if (!is_older_newer(series) || form.language_is_english || row < 0)
        return;
    const bool high = node_key.ends_with("Series") || series == 5;
    form.option_table.set_cell(page, row + 1, OptionColumn::value, high ? "1" : "0");
    form.option_table.set_cell(page, row + 3, OptionColumn::value, high ? "0" : "1");
}

void option_button_click(MainForm& form, int strip, int index)
{
    const int series = form.selected.series;
    const bool reset_pin_is_bound_to_clock = series >= 7 && !series_is_rc_group(series);
    if (strip == 0 && index == 0 && reset_pin_is_bound_to_clock && form.Option0[0].value())
        form.Option1[1].set_value(true); // the internal oscillator needs the pin as RESET
    if (strip == 1 && index == 0 && reset_pin_is_bound_to_clock)
        form.Option0[1].set_value(true);
    if (strip == 9 && series < 3)
        enable_watchdog_rows(form);
    if (strip >= 9 && strip <= 13 && series >= 3)
        apply_options_to_controls(form);
}

} // namespace vrk
