#include "options/codec.h"

#include "catalog/attributes.h"

#include <algorithm>
#include <cctype>

namespace vrk {

namespace {

struct PageOfSeries {
    int series;
    OptionPage page;
    OptionGroup group;
};

// clang-format off
constexpr PageOfSeries pages_of_series[] = {
//    series  page last row  group
    {  0,     {  0,   4 },   OptionGroup::A },
    {  1,     {  1,  -1 },   OptionGroup::A },
    {  2,     {  2,  48 },   OptionGroup::B },
    {  3,     {  4,  55 },   OptionGroup::C },
    {  4,     {  4,  55 },   OptionGroup::C },
    {  5,     {  4,  55 },   OptionGroup::C },
    {  6,     {  5,  55 },   OptionGroup::D },
    {  7,     {  6,  55 },   OptionGroup::E },
    {  8,     {  7,  55 },   OptionGroup::F },
    {  9,     {  8,  66 },   OptionGroup::G },
    { 10,     {  9,  66 },   OptionGroup::H },
    { 11,     {  2,  48 },   OptionGroup::B },
    { 12,     {  2,  48 },   OptionGroup::B },
    { 13,     {  2,  48 },   OptionGroup::B },
    { 15,     { 10,  55 },   OptionGroup::I },
    { 16,     { 10,  55 },   OptionGroup::I },
    { 17,     {  7,  55 },   OptionGroup::F },
    { 18,     { 15,  52 },   OptionGroup::J },
};

// Rows that start at another value than 255.
struct StartValue {
    OptionGroup group;
    int byte;
    int column; // 1: the start value; 2: the second one
    std::uint8_t value;
};
constexpr StartValue start_values[] = {
//    group           byte column value
    { OptionGroup::A, 16,  2,     252 },
    { OptionGroup::B,  1,  1,     253 },
    { OptionGroup::B,  1,  2,       0 },
    { OptionGroup::B, 16,  2,     252 },
    { OptionGroup::C,  8,  1,     247 },
    { OptionGroup::C,  0,  2,     191 },
    { OptionGroup::C,  2,  2,     253 },
    { OptionGroup::C,  3,  2,      80 },
    { OptionGroup::C,  8,  2,     240 },
    { OptionGroup::D,  8,  1,     247 },
    { OptionGroup::D,  0,  2,     191 },
    { OptionGroup::D,  2,  2,      53 },
    { OptionGroup::D,  3,  2,      80 },
    { OptionGroup::D,  8,  2,     240 },
    { OptionGroup::E,  0,  2,     190 },
    { OptionGroup::E,  1,  2,      61 },
    { OptionGroup::E,  2,  2,      80 },
    { OptionGroup::E,  8,  2,     252 },
    { OptionGroup::F,  0,  2,     190 },
    { OptionGroup::F,  1,  2,      53 },
    { OptionGroup::F,  2,  2,      80 },
    { OptionGroup::F,  8,  2,     252 },
    { OptionGroup::G,  0,  2,     142 },
    { OptionGroup::G,  1,  2,      53 },
    { OptionGroup::G,  2,  2,      80 },
    { OptionGroup::G,  8,  2,     252 },
    { OptionGroup::H,  0,  2,     142 },
    { OptionGroup::H,  1,  2,      53 },
    { OptionGroup::H,  2,  2,      80 },
    { OptionGroup::H,  8,  2,     252 },
    { OptionGroup::I,  0,  2,     111 },
    { OptionGroup::I,  1,  2,      56 },
    { OptionGroup::I,  2,  2,      80 },
    { OptionGroup::I,  8,  2,     252 },
    { OptionGroup::J,  0,  2,      63 },
    { OptionGroup::J,  3,  2,     189 },
    { OptionGroup::J,  4,  2,      80 },
    { OptionGroup::J,  8,  2,     240 },
};
// clang-format on

constexpr std::string_view watchdog_dividers[] = {"2", "4", "8", "16", "32", "64", "128", "256"}; // code by place
constexpr std::string_view rc30k_dividers[] = {"4096", "8192", "16384", "32768"};
constexpr std::uint8_t watchdog_field = 0x07;
constexpr std::size_t rc30k_byte = 3;
constexpr std::uint8_t rc30k_field = 0x30; // code times 16

std::uint8_t bit_mask(int bit) { return static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit)); }

// The place of a text in a list; the last place for any other.
std::uint8_t code_in(std::span<const std::string_view> list, std::string_view text)
{
    const auto found = std::find(list.begin(), list.end() - 1, text);
    return static_cast<std::uint8_t>(found - list.begin());
}

const PageOfSeries* row_of_series(int series)
{
    const auto found = std::ranges::find(pages_of_series, series, &PageOfSeries::series);
    return found == std::end(pages_of_series) ? nullptr : found;
}

void put_field(std::uint8_t& byte, std::uint8_t field, int bits)
{
    byte = static_cast<std::uint8_t>((byte & ~field) | (bits & field));
}

} // namespace

OptionPage option_page_of_series(int series)
{
    const PageOfSeries* row = row_of_series(series);
    return row == nullptr ? OptionPage{} : row->page;
}

std::optional<OptionGroup> option_group(int series)
{
    const PageOfSeries* row = row_of_series(series);
    return row == nullptr ? std::nullopt : std::optional{row->group};
}

std::optional<BitCode> parse_bit_code(std::string_view code)
{
    const bool digits =
        std::ranges::all_of(code, [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; });
    if (code.size() != 4 || !digits)
        return std::nullopt;
    const BitCode parsed{(code[0] - '0') * 10 + (code[1] - '0'), code[2] - '0', code[3] > '0'};
    if (parsed.byte >= option_rows || parsed.bit > 7)
        return std::nullopt;
    return parsed;
}

int find_key(const OptionTable& table, int page, std::string_view key)
{
    for (int row = 0; row < table.filled_rows(page); ++row) {
        if (table.cell(page, row, OptionColumn::key) == key)
            return row;
    }
    return -1;
}

void clear_snapshot(OptionTable& table, int page)
{
    for (int row = 0; row < table.filled_rows(page); ++row)
        table.set_cell(page, row, OptionColumn::snapshot, "");
}

std::vector<ChosenRow> chosen_rows(const OptionTable& table, OptionPage page)
{
    std::vector<ChosenRow> chosen;
    for (int row = 0; row <= page.last_row; ++row) {
        if (table.cell(page.page, row, OptionColumn::snapshot) != "True")
            continue;
        if (const auto bit = parse_bit_code(table.cell(page.page, row, OptionColumn::bit_code)))
            chosen.push_back({table.cell(page.page, row, OptionColumn::key), *bit});
    }
    return chosen;
}

bool OptionChoices::holds(std::string_view key) const
{
    return std::ranges::find(chosen, key, &ChosenRow::key) != chosen.end();
}

void reset_option_bytes(OptionImage& image, OptionGroup group)
{
    for (auto& row : image.bytes)
        row[0] = row[1] = row[2] = 255;
    for (const StartValue& start : start_values) {
        if (start.group == group)
            image.bytes[start.byte][start.column] = start.value;
    }
    for (auto& row : image.bytes)
        row[0] = static_cast<std::uint8_t>((row[2] | row[0]) & row[1]);
}

void write_chosen_bits(OptionImage& image, std::span<const ChosenRow> chosen)
{
    for (const ChosenRow& row : chosen)
        put_field(image.bytes[row.bit.byte][0], bit_mask(row.bit.bit), row.bit.value ? 0xFF : 0);
}

OptionImage encode_options(std::int32_t series, const OptionChoices& choices)
{
    OptionImage image;
    const auto group = option_group(series);
    if (!group)
        return image;
    reset_option_bytes(image, *group);
    write_chosen_bits(image, choices.chosen);
    const int row = watchdog_byte(option_page_of_series(series).page);
    if (choices.watchdog_divider && row >= 0)
        put_field(image.bytes[row][0], watchdog_field, watchdog_code(*choices.watchdog_divider));
    if (choices.rc30k_divider)
        put_field(image.bytes[rc30k_byte][0], rc30k_field, rc30k_code(*choices.rc30k_divider) * 16);
    write_rc_bytes(image, series, choices.rc);
    if (option_family(series) == 4) {
        image.spare_row_16 = image.bytes[16][0];
        image.bytes[16][0] = 255;
    }
    return image;
}

void decode_option_bytes(OptionTable& table, OptionPage page, const StatusBytes& status)
{
    clear_snapshot(table, page.page);
    for (int row = 0; row <= page.last_row; ++row) {
        const auto code = parse_bit_code(table.cell(page.page, row, OptionColumn::bit_code));
        if (!code)
            continue;
        const bool bit_set = (status[static_cast<std::size_t>(code->byte)] & bit_mask(code->bit)) != 0;
        table.set_cell(page.page, row, OptionColumn::snapshot, bit_set == code->value ? "1" : "0");
    }
}

std::vector<std::string> watchdog_divider_items()
{
    return {std::begin(watchdog_dividers), std::end(watchdog_dividers)};
}

std::uint8_t watchdog_code(std::string_view divider) { return code_in(watchdog_dividers, divider); }

int watchdog_byte(int page)
{
    if (page == 4 || page == 5)
        return 3;
    if (page >= 6 && page <= 10)
        return 2;
    return page == option_page::teak ? 4 : -1;
}

int watchdog_divider(std::int16_t status_byte) { return 2 << (status_byte & watchdog_field); }

std::vector<std::string> rc30k_divider_items() { return {std::begin(rc30k_dividers), std::end(rc30k_dividers)}; }

std::uint8_t rc30k_code(std::string_view divider) { return code_in(rc30k_dividers, divider); }

} // namespace vrk
