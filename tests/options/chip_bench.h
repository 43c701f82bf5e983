// A chip of a stepping that has told its options, and the option table as it stands once its model is selected.
#pragma once

#include "options/option_report.h"
#include "options/option_tables.h"
#include "options/voltage_texts.h"

#include "catalog/ranges.h"
#include "catalog/rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vrk {

inline const McuTable& all_models()
{
    static const McuTable models = [] {
        McuTable table;
        load_mcu_tables(table, false);
        return table;
    }();
    return models;
}

struct ChipBench {
    OptionTable table;
    ChipStatus status; // its option bytes are erased
    bool english;

    ChipBench(const char* model, const char* letter, bool in_english = true)
        : english(in_english)
    {
        load_option_tables(table, english);
        const auto found = locate_mcu_by_name(all_models(), model);
        EXPECT_TRUE(found) << model;
        if (found)
            status.model = read_mcu_row(all_models(), found->series, found->row);
        status.target_name = model;
        status.fw_letter = letter;
        status.fw_version = "6.0";
        status.status_bytes.fill(255);
        write_panel_voltages(table, option_page_of_series(status.model.series).page, status.model, english);
    }

    std::vector<std::string> lines() { return option_lines(table, status, english); }
    std::vector<std::string> check_page() { return check_page_lines(status, lines(), english); }
    bool says(const char* line)
    {
        const auto all = lines();
        return std::find(all.begin(), all.end(), line) != all.end();
    }
    std::string cell(std::string_view key, OptionColumn column) const
    {
        const int page = option_page_of_letter(status.fw_letter).page;
        return table.cell(page, find_key(table, page, key), column);
    }
};

} // namespace vrk
