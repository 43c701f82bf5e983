// Tables of text cells, filled once at start: models and options. All cells begin empty; a cell is stored without the
// blanks at its ends.
#pragma once

#include "platform/text_number.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace vrk {

template <int Pages, int Rows, int Columns> class TextTable {
public:
    static constexpr int page_count = Pages;
    static constexpr int row_count = Rows;
    static constexpr int column_count = Columns;

    // Outside the table every cell is empty.
    const std::string& cell(int page, int row, int column) const
    {
        if (!inside(page, row, column) || static_cast<std::size_t>(row) >= pages_[index(page)].size())
            return empty_;
        return pages_[index(page)][index(row)][index(column)];
    }
    template <typename Column>
    requires std::is_enum_v<Column>
    const std::string& cell(int page, int row, Column column) const
    {
        return cell(page, row, static_cast<int>(column));
    }

    // Outside the table nothing is stored.
    void set_cell(int page, int row, int column, std::string_view text)
    {
        if (!inside(page, row, column))
            return;
        auto& rows = pages_[index(page)];
        if (index(row) >= rows.size())
            rows.resize(index(row) + 1);
        rows[index(row)][index(column)] = trimmed(text);
    }
    template <typename Column>
    requires std::is_enum_v<Column>
    void set_cell(int page, int row, Column column, std::string_view text)
    {
        set_cell(page, row, static_cast<int>(column), text);
    }

    int filled_rows(int page) const // up to the last one that was ever written
    {
        return page >= 0 && page < Pages ? static_cast<int>(pages_[index(page)].size()) : 0;
    }

private:
    static constexpr std::size_t index(int number) { return static_cast<std::size_t>(number); }
    static bool inside(int page, int row, int column)
    {
        return page >= 0 && page < Pages && row >= 0 && row < Rows && column >= 0 && column < Columns;
    }

    // A page holds rows up to the last one filled only: most cells never hold a text.
    using Row = std::array<std::string, static_cast<std::size_t>(Columns)>;
    std::array<std::vector<Row>, static_cast<std::size_t>(Pages)> pages_;
    std::string empty_;
};

} // namespace vrk
