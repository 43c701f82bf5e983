// A form with its tables and lists filled, and a model chosen as the tree would choose it.
#pragma once

#include "form/named_controls.h"
#include "options/option_tables.h"
#include "shell/lists.h"
#include "shell/make_job.h"
#include "shell/option_choices.h"
#include "shell/option_panel.h"
#include "shell/option_pins.h"
#include "shell/rc_boxes.h"

#include "catalog/attributes.h"
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
    NamedControls form{shell.controls};

    explicit PanelBench(bool english = true)
    {
        shell.language_is_english = english;
        load_mcu_tables(shell.mcu_table, false);
        load_option_tables(shell.option_table, english);
        fill_lists(shell);
    }
    explicit PanelBench(const char* model, bool english = true)
        : PanelBench(english)
    {
        select(model);
    }

    void select(const char* model)
    {
        const auto found = locate_mcu_by_name(shell.mcu_table, model);
        ASSERT_TRUE(found) << model;
        shell.selected = read_mcu_row(shell.mcu_table, found->series, found->row);
        select_series(shell.selected.series);
    }
    // Families that the catalogue offers no model of.
    void select_series(std::int16_t series)
    {
        shell.selected.series = series;
        build_option_panel(shell);
    }

    int page() const { return option_page_of_series(shell.selected.series).page; }
    int row(std::string_view key) const { return find_key(shell.option_table, page(), key); }
    std::string cell(std::string_view key, OptionColumn column) const
    {
        return shell.option_table.cell(page(), row(key), column);
    }
    // A click of the user on a button.
    void choose(std::string_view control, int index)
    {
        auto* button = dynamic_cast<OptionButton*>(shell.controls.find(control, index));
        ASSERT_NE(button, nullptr);
        button->set_value(true);
        option_button_click(shell, std::stoi(std::string{control.substr(6)}), index);
    }
    int byte(int row) const { return shell.options.bytes[row][0]; }
};

} // namespace vrk
