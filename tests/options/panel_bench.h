// A form with its tables and lists filled, and a model chosen as the tree would choose it.
#pragma once

#include "options/codec.h"
#include "options/option_tables.h"
#include "options/panel.h"
#include "options/pins.h"
#include "options/rc_setting.h"

#include "catalog/attributes.h"
#include "catalog/lookup.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "platform/scripted_dialogs.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

#include <string>

namespace vrk {

struct PanelBench {
    sim::VirtualLoop loop;
    sim::SimPortDriver ports{loop};
    ScriptedDialogs dialogs;
    MemoryStore settings;
    Shell shell{Platform{loop, ports, dialogs, settings}};
    MainForm& form = shell.form;

    explicit PanelBench(bool english = true)
    {
        shell.language_is_english = english;
        load_mcu_tables(shell.mcu_table, false);
        load_option_tables(shell.option_table, english);
        fill_divider_lists(shell);
        fill_rc_lists(shell);
        fill_pin_lists(shell);
    }
    explicit PanelBench(const char* model, bool english = true)
        : PanelBench(english)
    {
        select(model);
    }

    void select(const char* model)
    {
        ASSERT_NE(find_mcu_by_name(shell, model, shell.selected), "") << model;
        select_series(shell.selected.series);
    }
    // Families that the catalogue offers no model of.
    void select_series(std::int16_t series)
    {
        shell.selected.series = series;
        shell.series_is_15_16_17 = series_is_15_16_17(series);
        shell.series_is_15_16 = series_is_15_16(series);
        shell.option_family = option_family(series);
        build_option_panel(shell);
    }

    int page() const { return option_page_of_series(shell.selected.series).page; }
    int row(std::string_view key) const { return find_key(shell, key); }
    std::string cell(std::string_view key, OptionColumn column) const
    {
        return shell.option_table.cell(page(), row(key), column);
    }
    // A click of the user on a button.
    void choose(std::string_view control, int index)
    {
        auto* button = dynamic_cast<OptionButton*>(form.controls.find(control, index));
        ASSERT_NE(button, nullptr);
        button->set_value(true);
        option_button_click(shell, std::stoi(std::string{control.substr(6)}), index);
    }
    int byte(int row) const { return shell.options.option_bytes[row][0]; }
};

} // namespace vrk
