#include "options/panel_rules.h"

#include "catalog/attributes.h"
#include "options/codec.h"

namespace vrk {

namespace {

constexpr std::int32_t internal_clock_below = 13312; // code size of the models that start without crystal
constexpr std::int32_t all_strips_from = 14336;
constexpr int last_strip_of_small = 2;
constexpr int second_stack = 8; // the first strip of the lower stack

bool is_older_newer(int series) { return series >= 3 && series <= 5; }

} // namespace

bool strip_is_offered(const McuRecord& record, int strip)
{
    const bool small = is_older_newer(record.series) && record.ap_last < all_strips_from;
    return !small || strip <= last_strip_of_small || strip >= second_stack;
}

bool starts_on_internal_oscillator(const McuRecord& record)
{
    return is_older_newer(record.series) && record.ap_last < internal_clock_below;
}

void set_low_voltage_default(OptionTable& table, const McuRecord& record, bool english, std::string_view chosen_by)
{
    const int page = option_page_of_series(record.series).page;
    const int row = is_older_newer(record.series) ? find_key(table, page, "LowU_Reset_YES_Clew") : -1;
    if (english || row < 0)
        return;
    const bool high = chosen_by.ends_with("Series") || record.series == 5;
    table.set_cell(page, row + 1, OptionColumn::value, high ? "1" : "0");
    table.set_cell(page, row + 3, OptionColumn::value, high ? "0" : "1");
}

std::optional<StripButton> brings_along(int series, const StripButton& chosen)
{
    const bool pin_is_bound_to_clock = series >= 7 && !series_is_rc_group(series);
    if (!pin_is_bound_to_clock || chosen.button != 0)
        return std::nullopt;
    if (chosen.strip == 0)
        return StripButton{1, 1};
    if (chosen.strip == 1)
        return StripButton{0, 1};
    return std::nullopt;
}

} // namespace vrk
