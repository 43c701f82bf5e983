#include "shell/device.h"

#include "form/main_form.h"

#include "catalog/attributes.h"
#include "catalog/families.h"
#include "catalog/isp_start.h"
#include "catalog/rows.h"
#include "platform/text_number.h"
#include "shell/arm_save.h"
#include "shell/buffer_view.h"
#include "shell/check_page.h"
#include "shell/messages.h"
#include "shell/monitor_pages.h"
#include "shell/option_panel.h"
#include "shell/panel_state.h"
#include "shell/tabs.h"

#include <vector>

namespace vrk {

namespace {

constexpr bool show_new_series = true;
constexpr bool show_unreleased = false;
constexpr Text unknown_model = {"找不到 MCU: ", "Can not find the MCU type: "};
constexpr std::string_view first_choice = "Hazel-1"; // of a user who has never chosen

enum class Shown { new_series, unreleased, chinese, always };

struct TreeRow {
    std::string_view family;
    Shown shown;
};

// clang-format off
// The order of the family nodes, and the order in which the models are added behind them.
constexpr TreeRow family_order[] = {
    { "FamilyLarch",   Shown::new_series },
    { "FamilyWillow",  Shown::unreleased },
    { "FamilyMaple",   Shown::new_series },
    { "FamilyOak",     Shown::new_series },
    { "FamilyJuniper", Shown::new_series },
    { "FamilyHazel",   Shown::new_series },
    { "FamilyFir",     Shown::new_series },
    { "FamilyCedar",   Shown::chinese },
    { "FamilyElm",     Shown::chinese },
    { "FamilyBirch",   Shown::chinese },
    { "FamilyRowan",   Shown::always },
    { "FamilySpruce",  Shown::always },
    { "FamilyAlder",   Shown::chinese },
    { "FamilyAspen",   Shown::chinese },
};
constexpr TreeRow model_order[] = {
    { "FamilyBirch",   Shown::chinese },
    { "FamilyRowan",   Shown::always },
    { "FamilySpruce",  Shown::always },
    { "FamilyCedar",   Shown::chinese },
    { "FamilyElm",     Shown::chinese },
    { "FamilyFir",     Shown::new_series },
    { "FamilyHazel",   Shown::new_series },
    { "FamilyJuniper", Shown::new_series },
    { "FamilyLarch",   Shown::new_series },
    { "FamilyWillow",  Shown::unreleased },
    { "FamilyMaple",   Shown::new_series },
    { "FamilyOak",     Shown::new_series },
    { "FamilyAlder",   Shown::chinese },
    { "FamilyAspen",   Shown::chinese },
};
// clang-format on

bool is_shown(const Shell& shell, Shown shown)
{
    switch (shown) {
    case Shown::new_series:
        return show_new_series;
    case Shown::unreleased:
        return show_new_series && show_unreleased;
    case Shown::chinese:
        return !shell.language_is_english;
    case Shown::always:
        return true;
    }
    return false;
}

const Family* family_of_key(std::string_view key)
{
    for (const Family* family : families_by_series) {
        if (family != nullptr && family->key == key)
            return family;
    }
    return nullptr;
}

void add_models(const Shell& shell, const Family& family, std::vector<Tree::Node>& nodes)
{
    for (int row = 0; row < McuTable::row_count; ++row) {
        const std::string& name = shell.mcu_table.cell(family.series, row, 9);
        if (!name.empty() && number_in(shell.mcu_table.cell(family.series, row, 13)) >= 1)
            nodes.push_back({name, name, std::string{family.key}});
    }
}

} // namespace

void build_device_tree(Shell& shell)
{
    shell.form.TreeViewDevice.set_visible(false);
    shell.form.txtDevice.set_enabled(true);
    std::vector<Tree::Node> nodes;
    for (const TreeRow& row : family_order) {
        const Family* family = family_of_key(row.family);
        if (family != nullptr && is_shown(shell, row.shown))
            nodes.push_back({std::string{family->key}, std::string{family->label}, ""});
    }
    for (const TreeRow& row : model_order) {
        const Family* family = family_of_key(row.family);
        if (family != nullptr && is_shown(shell, row.shown))
            add_models(shell, *family, nodes);
    }
    shell.form.TreeViewDevice.set_nodes(std::move(nodes));
}

void open_device_tree(Shell& shell)
{
    shell.form.txtDevice.set_enabled(false);
    shell.form.TreeViewDevice.set_visible(true);
}

void close_device_tree(Shell& shell)
{
    shell.form.txtDevice.set_enabled(shell.job_may_change()); // a click beside the tree unlocks nothing
    shell.form.TreeViewDevice.set_visible(false);
}

void toggle_device_tree(Shell& shell)
{
    if (shell.form.TreeViewDevice.visible())
        close_device_tree(shell);
    else
        open_device_tree(shell);
}

void TreeViewDevice_NodeClick(Shell& shell, std::string_view key)
{
    if (key.substr(0, 6) == "Family")
        return;
    shell.form.TreeViewDevice.select(key);
    shell.form.txtDevice.set_text(key);
    shell.last_talk.chip.target_ok = false;
    clear_buffer(shell, 0, shell.code_buffer);
    clear_buffer(shell, 0, shell.data_buffer);
    if (shell.form.txtDevice.text().empty())
        return;
    close_device_tree(shell);
    if (!apply_selected_device(shell))
        return;
    change_low_voltage_default(shell, key);
    build_option_panel(shell);
}

bool apply_selected_device(Shell& shell)
{
    const auto found = locate_mcu_by_name(shell.mcu_table, trimmed(shell.form.txtDevice.text()));
    if (!found) {
        show_box(shell, std::string{in_language(shell, unknown_model)} + shell.form.txtDevice.text());
        return false;
    }
    shell.selected = read_mcu_row(shell.mcu_table, found->series, found->row);
    shell.model_stands_in = false;
    shell.form.cheData_Auto_Increase.set_value(false);
    shell.data_increase.valid = false;
    enable_eeprom_controls(shell, has_eeprom_buffer(shell.selected));
    show_ap_isp_range(shell);
    show_tabs_of_model(shell);
    clear_check_page(shell);
    clear_monitor(shell);
    arm_save(shell);
    build_option_panel(shell);
    return true;
}

void restore_device(Shell& shell)
{
    std::string key = shell.platform.settings.get("Settings", "DeviceProducts", std::string{first_choice});
    const Tree::Node* node = shell.form.TreeViewDevice.find(key);
    const bool offered = node != nullptr && !node->parent.empty();
    if (!offered)
        key = first_choice;
    shell.form.TreeViewDevice.select(key);
    shell.form.txtDevice.set_text(key);
    apply_selected_device(shell);
    shell.model_stands_in = !offered;
}

void show_ap_isp_range(Shell& shell)
{
    const IspStart range = derive_isp_start(shell.selected);
    shell.selected.isp_start = range.isp_start;
    shell.form.LabISP_reange[0].set_caption(four_hex_digits(shell.selected.ap_first));
    shell.form.LabISP_reange[1].set_caption(four_hex_digits(range.shown_last));
}

} // namespace vrk
