#include "options/option_sheet.h"

#include "catalog/attributes.h"
#include "catalog/near_names.h"
#include "options/option_tables.h"
#include "options/option_words.h"
#include "options/panel_rules.h"
#include "options/pins.h"
#include "options/rc_setting.h"
#include "platform/text_number.h"

#include <algorithm>
#include <charconv>

namespace vrk {

namespace {

constexpr std::string_view no_item = "none";

constexpr std::string_view divider_name = "watchdog-divider";
constexpr std::string_view wake_up_name = "wake-up-clocks";
constexpr std::string_view low_voltage_name = "low-voltage";
constexpr std::string_view band_name = "rc-band";
constexpr std::string_view trim_name = "rc-trim";
constexpr std::string_view byte_name = "rc-byte";
constexpr std::string_view target_name = "rc-target";
constexpr std::string_view pin_name = "watchdog-pin";

constexpr std::string_view divider_key = "WDT_Prescalar";
constexpr std::string_view wake_up_key = "RC30K_Divder";

// clang-format off
constexpr Text divider_label     = { "内部看门狗预分频数",              "prescaler of the watchdog" };
constexpr Text wake_up_label     = { "启动振荡器后等待时钟数",          "clocks to wait after a wake-up" };
constexpr Text low_voltage_label = { "低电压检测值, V",                 "volts of the low-voltage detector" };
constexpr Text band_label        = { "内部 RC 振荡器频段, MHz",         "band of the RC oscillator, MHz" };
constexpr Text trim_label        = { "内部 RC 振荡器微调",              "trim of the RC oscillator" };
constexpr Text byte_label        = { "内部 RC 振荡器频率字节, 0-255",   "frequency byte of the RC oscillator, 0 to 255" };
constexpr Text target_label      = { "内部 RC 振荡器目标频率, MHz",     "frequency the RC oscillator is trimmed to, MHz" };
constexpr Text pin_label         = { "下载时由引导程序喂狗的引脚",      "pin that the boot loader feeds a watchdog by" };
// clang-format on

std::vector<std::string> with_none(std::vector<std::string> items)
{
    items.insert(items.begin(), std::string{no_item});
    return items;
}

std::vector<Strip> strips_of_page(int number, bool english)
{
    for (const Page& page : option_pages(english)) {
        if (page.number == number)
            return strips_of(page);
    }
    return {};
}

std::string list_of(const std::vector<std::string>& words)
{
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

// Behind what is wrong: the words that come near, else all there are.
Line with_near(Line wrong, const std::vector<std::string>& words, std::string_view word)
{
    constexpr Text near_it = {"；相近的有: ", "; near it: "};
    constexpr Text there_are = {"；可用的有: ", "; there are: "};
    const std::vector<std::string> near = words_near(words, word);
    if (words.empty())
        return wrong;
    return near.empty() ? wrong + there_are + list_of(words) : wrong + near_it + list_of(near);
}

Line no_choice(std::string_view option, std::string_view choice, const std::vector<std::string>& choices)
{
    const std::string name{option};
    const std::string wrong{choice};
    Line line;
    line.zh = "选项 " + name + " 没有 '" + wrong + "'";
    line.en = name + " has no choice '" + wrong + "'";
    return with_near(line, choices, choice);
}

bool same_word(std::string_view one, std::string_view other) { return upper_case(one) == upper_case(other); }

} // namespace

std::optional<bool> checked_by(std::string_view text)
{
    if (text == "True" || text == "False")
        return text == "True";
    int number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number != 0;
}

std::optional<int> item_by(const std::vector<std::string>& items, std::string_view text)
{
    if (const auto item = std::ranges::find(items, text); item != items.end())
        return static_cast<int>(item - items.begin());
    int place = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), place);
    const bool whole = fault == std::errc{} && end == text.data() + text.size();
    if (!whole || place < 0 || place >= static_cast<int>(items.size()))
        return std::nullopt;
    return place;
}

OptionSheet::OptionSheet(const McuRecord& record, bool english)
    : record_(record)
    , page_(option_page_of_series(record.series))
    , strips_(strips_of_page(page_.page, english))
{
    load_option_tables(table_, english);
    set_low_voltage_default(table_, record_, english, record_.mcu_name);
    const bool writable = !record_.cap_no_option_write;
    for (int row = 0; writable && row < table_.filled_rows(page_.page); ++row) {
        if (table_.cell(page_.page, row, OptionColumn::property) == "Value" &&
            table_.cell(page_.page, row, OptionColumn::value) == "1")
            mark(row);
    }
    if (writable && starts_on_internal_oscillator(record_))
        mark(row_of(0, 0));

    const auto has_row = [this](std::string_view key) { return find_key(table_, page_.page, key) >= 0; };
    const bool rc = series_is_15_16_17(record_.series) && writable;
    const bool trimmed_rc = series_is_15_16(record_.series);
    constexpr std::string_view no_key;
    fields_ = {
        {divider_name, divider_key, divider_label, watchdog_divider_items(), "256", writable && has_row(divider_key)},
        {wake_up_name, wake_up_key, wake_up_label, rc30k_divider_items(), "32768", writable && has_row(wake_up_key)},
        {low_voltage_name, no_key, low_voltage_label, with_none(low_voltage_items(record_)), std::string{no_item},
            trimmed_rc && writable},
        {band_name, no_key, band_label, rc_band_items(), rc_band_items()[1], rc},
        {trim_name, no_key, trim_label, rc_trim_items(), "3", rc},
        {byte_name, no_key, byte_label, {}, "128", rc, 0, 255},
        {target_name, no_key, target_label, {}, "11.059", trimmed_rc, rc_least_mhz, rc_most_mhz},
        {pin_name, no_key, pin_label, with_none(all_pin_items()), std::string{no_item}},
    };
}

void OptionSheet::mark(int row)
{
    if (row < 0)
        return;
    const std::string group = table_.cell(page_.page, row, OptionColumn::control);
    for (int other = 0; other < table_.filled_rows(page_.page); ++other) {
        if (table_.cell(page_.page, other, OptionColumn::control) == group)
            table_.set_cell(page_.page, other, OptionColumn::snapshot, other == row ? "True" : "False");
    }
}

int OptionSheet::row_of(int strip, int button) const
{
    const std::string group = "Option" + std::to_string(strip);
    for (int row = 0; row < table_.filled_rows(page_.page); ++row) {
        if (table_.cell(page_.page, row, OptionColumn::control) == group &&
            table_.cell(page_.page, row, OptionColumn::index) == std::to_string(button) &&
            table_.cell(page_.page, row, OptionColumn::property) == "Value")
            return row;
    }
    return -1;
}

bool OptionSheet::is_chosen(int strip, int button) const
{
    return table_.cell(page_.page, row_of(strip, button), OptionColumn::snapshot) == "True";
}

bool OptionSheet::strip_has_words(const Strip& strip) const
{
    return strip.pair != nullptr && words_of(*strip.pair) != nullptr && !record_.cap_no_option_write &&
        strip_is_offered(record_, strip.index);
}

const OptionSheet::Field* OptionSheet::field(std::string_view name) const
{
    const auto found = std::ranges::find(fields_, name, &Field::name);
    return found == fields_.end() ? nullptr : &*found;
}

int OptionSheet::place_in(std::string_view field_name) const
{
    const Field& one = *field(field_name);
    const auto found = std::ranges::find(one.items, one.chosen);
    return found == one.items.end() ? -1 : static_cast<int>(found - one.items.begin());
}

std::vector<OfferedOption> OptionSheet::offered() const
{
    std::vector<OfferedOption> all;
    for (const Strip& strip : strips_) {
        if (!strip_has_words(strip))
            continue;
        const OptionWords& words = *words_of(*strip.pair);
        const std::string_view chosen = is_chosen(strip.index, 0) ? words.first : words.second;
        all.push_back({std::string{words.option}, {std::string{words.first}, std::string{words.second}},
            std::string{chosen}, strip.pair->label});
    }
    for (const Field& one : fields_) {
        if (one.offered)
            all.push_back({std::string{one.name}, one.items, one.chosen, one.label});
    }
    return all;
}

std::optional<Line> OptionSheet::choose_in(Field& one, std::string_view choice)
{
    if (one.items.empty()) {
        const double number = number_in(choice);
        const bool is_number = !choice.empty() && choice.find_first_not_of("0123456789.") == std::string_view::npos;
        if (is_number && number >= one.least && number <= one.most) {
            one.chosen = choice;
            return std::nullopt;
        }
        return no_choice(one.name, choice, {number_text(one.least) + ".." + number_text(one.most)});
    }
    const auto found =
        std::ranges::find_if(one.items, [&](const std::string& item) { return same_word(item, choice); });
    if (found == one.items.end())
        return no_choice(one.name, choice, one.items);
    one.chosen = *found;
    return std::nullopt;
}

std::optional<Line> OptionSheet::choose(std::string_view name, std::string_view choice)
{
    for (const Strip& strip : strips_) {
        if (!strip_has_words(strip) || !same_word(words_of(*strip.pair)->option, name))
            continue;
        const OptionWords& words = *words_of(*strip.pair);
        const bool first = same_word(words.first, choice);
        if (!first && !same_word(words.second, choice))
            return no_choice(words.option, choice, {std::string{words.first}, std::string{words.second}});
        const StripButton chosen{strip.index, first ? 0 : 1};
        mark(row_of(chosen.strip, chosen.button));
        if (const auto also = brings_along(record_.series, chosen))
            mark(row_of(also->strip, also->button));
        return std::nullopt;
    }
    for (Field& one : fields_) {
        if (one.offered && same_word(one.name, name))
            return choose_in(one, choice);
    }
    std::vector<std::string> names;
    for (const OfferedOption& one : offered())
        names.push_back(one.name);
    Line line;
    line.zh = record_.mcu_name + " 没有选项 '" + std::string{name} + "'";
    line.en = record_.mcu_name + " has no option '" + std::string{name} + "'";
    return with_near(line, names, name);
}

void OptionSheet::take_stored(std::string_view key, const std::string& value)
{
    for (Field& one : fields_) {
        if (one.key.empty() || one.key != key)
            continue;
        const auto place = item_by(one.items, value);
        if (place && find_key(table_, page_.page, key) >= 0)
            one.chosen = one.items[static_cast<std::size_t>(*place)];
        return;
    }
    const int row = find_key(table_, page_.page, key);
    const bool is_choice = row >= 0 && table_.cell(page_.page, row, OptionColumn::property) == "Value";
    // The choice of another button lets one go: a damaged file must not leave a pair without any choice.
    if (is_choice && checked_by(value).value_or(false))
        mark(row);
}

OptionChoices OptionSheet::choices() const
{
    const auto text_where_a_row = [this](std::string_view name) -> std::optional<std::string> {
        const Field& one = *field(name);
        return find_key(table_, page_.page, one.key) < 0 ? std::nullopt : std::optional{one.chosen};
    };
    OptionChoices choices;
    choices.chosen = chosen_rows(table_, page_);
    choices.watchdog_divider = text_where_a_row(divider_name);
    choices.rc30k_divider = text_where_a_row(wake_up_name);
    choices.rc.band = place_in(band_name);
    choices.rc.trim = place_in(trim_name);
    choices.rc.low_voltage = place_in(low_voltage_name) - 1; // "none" stands in front
    choices.rc.wanted = rc_wanted_byte(field(byte_name)->chosen);
    return choices;
}

bool OptionSheet::holds(const OptionChoices& wanted, int strip, int button) const
{
    const auto bit = parse_bit_code(table_.cell(page_.page, row_of(strip, button), OptionColumn::bit_code));
    return bit && std::ranges::any_of(wanted.chosen, [&](const ChosenRow& row) {
        return row.bit.byte == bit->byte && row.bit.bit == bit->bit && row.bit.value == bit->value;
    });
}

std::vector<std::pair<std::string, std::string>> OptionSheet::turned(
    const OptionChoices& wanted, const std::optional<std::string>& pin, double target_mhz) const
{
    std::vector<std::pair<std::string, std::string>> words;
    for (const Strip& strip : strips_) {
        if (!strip_has_words(strip))
            continue;
        const OptionWords& its_words = *words_of(*strip.pair);
        for (const int button : {0, 1}) {
            if (holds(wanted, strip.index, button) && !is_chosen(strip.index, button))
                words.emplace_back(its_words.option, button == 0 ? its_words.first : its_words.second);
        }
    }
    const auto item = [this](std::string_view name, int place) {
        const Field& one = *field(name);
        const bool there = place >= 0 && place < static_cast<int>(one.items.size());
        return there ? one.items[static_cast<std::size_t>(place)] : one.chosen;
    };
    const std::pair<std::string_view, std::string> now[] = {
        {divider_name, wanted.watchdog_divider.value_or(field(divider_name)->chosen)},
        {wake_up_name, wanted.rc30k_divider.value_or(field(wake_up_name)->chosen)},
        {low_voltage_name, item(low_voltage_name, wanted.rc.low_voltage + 1)},
        {band_name, item(band_name, wanted.rc.band)},
        {trim_name, item(trim_name, wanted.rc.trim)},
        {byte_name, std::to_string(wanted.rc.wanted)},
        {target_name, number_text(target_mhz)},
        {pin_name, pin.value_or(std::string{no_item})},
    };
    for (const auto& [name, choice] : now) {
        const Field& one = *field(name);
        if (one.offered && one.chosen != choice)
            words.emplace_back(name, choice);
    }
    return words;
}

std::optional<std::string> OptionSheet::watchdog_pin() const
{
    const std::string& pin = field(pin_name)->chosen;
    return pin == no_item ? std::nullopt : std::optional{pin};
}

double OptionSheet::rc_target_mhz() const { return number_in(field(target_name)->chosen); }

} // namespace vrk
