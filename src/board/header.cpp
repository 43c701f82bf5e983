#include "board/header.h"

#include "session/crc16.h"
#include "session/frame.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

using V = HeaderValues;

// Where everything stands. What is not listed is 00.
// clang-format off
constexpr HeaderField fields[] = {
//    offset size  what
    { 0x00,  31, &V::name },
    { 0x20,   2, &V::id },
    { 0x22,   2, &V::alt_id },
    { 0x24,   1, &V::new_protocol },
    { 0x25,   1, &V::parity },
    { 0x26,   1, &V::parity_even },
    { 0x27,   1, &V::long_frame },
    { 0x28,   1, &V::no_option_write },
    { 0x29,   1, &V::all_flash_ap },
    { 0x2A,   1, &V::pins },
    { 0x2B,   1, &V::no_eeprom },
    { 0x2C,   1, &V::checks },
    { 0x30,  16, &V::options },
    { 0x40,   3, &V::code_on_board_first },
    { 0x43,   3, &V::code_on_board_last },
                                                // 46: first address of the code in the target, 0
    { 0x49,   3, &V::code_last },
                                                // 4C: first address of the first area, 0
    { 0x4F,   3, &V::code_most },
    { 0x58,   3, &V::second_on_board_first },
    { 0x5B,   3, &V::second_on_board_last },
    { 0x5E,   3, &V::second_first },
    { 0x61,   3, &V::second_last },
    { 0x70,   3, &V::code_end },
    { 0x78,   1, &V::mark },
    { 0x80,  11, &V::code_number },
    { 0x90,   4, &V::code_next },
    { 0x96,   2, &V::page_size },
    { 0x98,   3, HeaderField::AreaPart{&V::code_area, &BoardArea::first} },
    { 0x9B,   3, HeaderField::AreaPart{&V::code_area, &BoardArea::last} },
    { 0x9E,   2, HeaderField::AreaPart{&V::code_area, &BoardArea::pages} },
    { 0xA0,   3, HeaderField::AreaPart{&V::gap_area, &BoardArea::first} },
    { 0xA3,   3, HeaderField::AreaPart{&V::gap_area, &BoardArea::last} },
    { 0xA6,   2, HeaderField::AreaPart{&V::gap_area, &BoardArea::pages} },
    { 0xA8,   3, HeaderField::AreaPart{&V::data_area, &BoardArea::first} },
    { 0xAB,   3, HeaderField::AreaPart{&V::data_area, &BoardArea::last} },
    { 0xAE,   2, HeaderField::AreaPart{&V::data_area, &BoardArea::pages} },
    { 0xB0,   3, HeaderField::AreaPart{&V::boot_area, &BoardArea::first} },
    { 0xB3,   3, HeaderField::AreaPart{&V::boot_area, &BoardArea::last} },
    { 0xB6,   2, HeaderField::AreaPart{&V::boot_area, &BoardArea::pages} },
                                                // B8: first address of the flash, 0
    { 0xBB,   3, &V::flash_code_last },
    { 0xBE,   3, &V::flash_data_last },
    { 0xCA,   3, &V::behind_source },
    { 0xCD,   3, &V::rest_code_last },
    { 0xD0,   3, &V::rest_data_last },
    { 0xD3,   3, &V::older_last },
    { 0xD6,   3, &V::older_last },
    { 0xD9,   3, &V::older_last },
    { 0xDC,  11, &V::data_number },
    { 0xEC,   4, &V::data_next },
};
// clang-format on
constexpr std::size_t crc_offset = 0xFE; // low byte first, over all that stands in front of it

// What a model can use of a board. A series without a row has a limit of 0.
struct Limit {
    int series;
    std::int32_t all_flash; // for models whose code may reach the top of the flash
    std::int32_t usual;
};
// clang-format off
constexpr Limit limits[] = {
//  series  all flash usual
    {  1,   0xF800,   0xF800 },
    {  2,   0xF400,   0xF400 },
    {  3,   0x1400,   0x1400 },
    {  4,   0x7000,   0x7000 },
    {  5,   0x7800,   0x7000 },
    {  6,   0x1800,   0x1400 },
    {  7,   0xF800,   0xF400 },
    {  8,   0x3800,   0x3400 },
    {  9,   0x1800,   0x1400 },
    { 10,   0xF800,   0xF400 },
    { 11,   0xF400,   0xF400 },
    { 13,   0xF400,   0xF400 },
    { 15,   0x3800,   0x3400 },
    { 16,   0x3800,   0x3400 },
    { 17,   0x3800,   0x3400 },
    { 18,   0xF000,   0xF000 },
};

// Which option bytes go where, by row of the option bytes.
struct OptionPlace { std::size_t offset; std::size_t row; };
constexpr OptionPlace older_options[] = { { 1, 1 } };
constexpr OptionPlace middle_options[] = { { 0, 2 }, { 1, 3 }, { 2, 8 }, { 3, 10 }, { 4, 11 }, { 5, 0 } };
constexpr OptionPlace newer_options[] = { { 0, 0 }, { 1, 1 }, { 2, 2 }, { 3, 3 }, { 8, 8 }, { 9, 9 } };
// clang-format on

constexpr std::size_t longest_name = 31;
constexpr std::int32_t first_area = 0x4000; // on the board; the target's address 0
constexpr std::int32_t first_area_last = 0xEBFF;
constexpr std::int32_t flash_top = 0xF7FF; // the highest address that some rows tell
constexpr std::uint8_t no_format = 0xFF; // of a number that is not in use

std::int32_t limit_of(const McuRecord& model)
{
    if (model.series == 12) // two sizes of flash share this series
        return model.mcu_id.starts_with("F1") ? 0xF400 : 0x3400;
    const auto row = std::ranges::find(limits, model.series, &Limit::series);
    if (row == std::end(limits))
        return 0;
    return model.cap_all_flash_ap ? row->all_flash : row->usual;
}

std::uint32_t flag(bool set) { return set ? 0xFF : 0x00; }

// Its first and its last two digits; an id of two digits stands twice.
std::uint32_t id_number(std::string_view id)
{
    if (id.size() < 2)
        return 0;
    return static_cast<std::uint32_t>(hex_number(id.substr(0, 2)) * 256 + hex_number(id.substr(id.size() - 2)));
}

V::Bytes name_bytes(std::string_view name)
{
    V::Bytes bytes;
    for (const char c : first_characters(trimmed(name), longest_name)) {
        if (begins_character(c)) // the names of models are ASCII; what a hand has typed otherwise the board cannot show
            bytes.push_back(static_cast<unsigned char>(c) < 0x80 ? static_cast<std::uint8_t>(c) : '?');
    }
    return bytes;
}

std::span<const OptionPlace> option_places(int series)
{
    if (series_is_rc_group(series) || series == 2)
        return older_options;
    if (series >= 3 && series <= 6)
        return middle_options;
    if (series >= 7)
        return newer_options;
    return {};
}

V::Bytes option_bytes(const BoardJob& job)
{
    V::Bytes bytes(16, 0xFF);
    const OptionBytes wanted = job.options.wanted();
    for (const OptionPlace& place : option_places(job.model.series))
        bytes[place.offset] = wanted[place.row];
    return bytes;
}

std::uint32_t check_bits(const BoardChecks& checks)
{
    return (checks.options_only ? 1U : 0U) | (checks.pass_below_5_ua ? 2U : 0U) | (checks.pass_below_2_ua ? 4U : 0U);
}

std::uint8_t byte_of(std::int32_t value) { return low(static_cast<std::uint32_t>(value)); }

V::Bytes number_block(const BoardNumber& number, const NumberField& field)
{
    const auto first = static_cast<std::uint32_t>(field.first);
    const auto second = static_cast<std::uint32_t>(field.second_first);
    return {number.in_use ? std::uint8_t{1} : std::uint8_t{0}, low(first >> 16), high(first), low(first),
        byte_of(field.first_count), low(second >> 16), high(second), low(second), byte_of(field.second_count),
        byte_of(number.increment), number.in_use ? static_cast<std::uint8_t>(number.format) : no_format};
}

std::uint32_t next_value(const BoardNumber& number)
{
    return number.in_use ? static_cast<std::uint32_t>(number.next_value) : 0;
}

BoardArea area(std::int32_t first, std::int32_t last, std::int32_t page_size)
{
    const double pages = round_half_even(static_cast<double>(last - first + 1) / page_size);
    return {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(last),
        static_cast<std::uint32_t>(static_cast<std::int32_t>(pages))};
}

void put_areas(const McuRecord& model, const BoardFit& fit, V& values)
{
    const std::int32_t page_size = model.series == 0 ? 0x80 : 0x200;
    values.page_size = static_cast<std::uint32_t>(page_size);
    values.code_area = area(model.ap_first, std::min(model.ap_last, fit.limit), page_size);
    if (model.series == 3)
        values.gap_area = area(model.ap_last + 1, model.eeprom_first - 1, page_size);
    if (model.series == 0 || model.series == 1)
        values.data_area = area(model.eeprom_first, model.eeprom_last, page_size);
    values.boot_area = area(model.isp_first, model.isp_last, page_size);
}

void put_ends(const McuRecord& model, std::int32_t source_last, V& values)
{
    const auto number = [](std::int32_t value) { return static_cast<std::uint32_t>(value); };
    const std::int32_t code_last = model.series == 3 ? model.eeprom_first - 1 : model.ap_last;
    values.flash_code_last = number(std::min(code_last, flash_top));
    values.flash_data_last = number(std::min(model.eeprom_last, flash_top));
    values.behind_source = number(source_last + 1);
    values.rest_code_last = number(std::max(std::min(model.eeprom_first - 1, flash_top), source_last));
    values.rest_data_last = number(std::max(std::min(model.eeprom_last, flash_top), source_last));
    values.older_last = model.alt_id.empty() ? 0 : number(source_last);
}

void put(std::span<std::uint8_t> place, std::uint32_t number)
{
    for (std::size_t i = place.size(); i > 0; --i, number >>= 8)
        place[i - 1] = low(number);
}

void put(std::span<std::uint8_t> place, const V::Bytes& bytes)
{
    std::copy_n(bytes.begin(), std::min(bytes.size(), place.size()), place.begin());
}

struct Putter {
    const V& values;
    std::span<std::uint8_t> place;

    void operator()(HeaderField::Number what) const { put(place, values.*what); }
    void operator()(HeaderField::AreaPart what) const { put(place, values.*what.area.*what.part); }
    void operator()(HeaderField::Bytes what) const { put(place, values.*what); }
};

} // namespace

std::span<const HeaderField> header_fields() { return fields; }

BoardFit board_fit(const McuRecord& model, std::int32_t board_capacity, std::int32_t source_last)
{
    BoardFit fit;
    fit.limit = limit_of(model);
    fit.capacity = std::min(board_capacity, fit.limit);
    fit.cut = source_last >= fit.capacity;
    fit.code_end = fit.cut ? fit.capacity - 1 : source_last;
    return fit;
}

Line cut_text(const BoardFit& fit)
{
    const std::string kilobytes = number_text(fit.capacity / 1024.0);
    Line text;
    text.en =
        "The maximum size of downloading code and data is " + kilobytes + "K, The exceeding part won't be downloaded.";
    text.zh = "此脱机下载板版本或该型号的 MCU 最多下载" + kilobytes +
        "K 程序和数据, 超出部分将不下载。\n\n                      按确定继续";
    return text;
}

HeaderValues header_values(const BoardJob& job, const BoardSource& source, const BoardFit& fit)
{
    const McuRecord& model = job.model;
    V values;
    values.name = name_bytes(job.model_name);
    values.id = id_number(model.mcu_id);
    values.alt_id = id_number(model.alt_id);
    values.new_protocol = flag(model.cap_new_protocol);
    values.parity = flag(model.cap_parity);
    values.parity_even = flag(model.cap_parity_even);
    values.long_frame = flag(model.cap_long_frame);
    values.no_option_write = flag(model.cap_no_option_write);
    values.all_flash_ap = flag(model.cap_all_flash_ap);
    values.pins = static_cast<std::uint32_t>(job.pins);
    values.no_eeprom = flag(model.cap_no_eeprom);
    values.checks = check_bits(job.checks);
    values.options = option_bytes(job);

    const std::int32_t on_board_last = std::min(fit.code_end + first_area, first_area_last);
    values.code_on_board_first = first_area;
    values.code_on_board_last = static_cast<std::uint32_t>(on_board_last);
    values.code_last = static_cast<std::uint32_t>(on_board_last - first_area);
    values.code_most = (model.alt_id.starts_with("F0") ? 0x7C00U : 0xEC00U) - 1;
    values.second_on_board_first = 0x2000;
    values.second_on_board_last = 0x3FFF;
    values.second_first = 0xAC00;
    values.second_last = 0xCBFF;
    values.code_end = static_cast<std::uint32_t>(fit.code_end);
    values.mark = 0xF3;

    values.code_number = number_block(job.code_number, code_number_field(job));
    values.code_next = next_value(job.code_number);
    values.data_number = number_block(job.data_number, data_number_field(job));
    values.data_next = next_value(job.data_number);

    put_areas(model, fit, values);
    put_ends(model, source.last, values);
    return values;
}

std::array<std::uint8_t, header_size> build_board_header(const HeaderValues& values)
{
    std::array<std::uint8_t, header_size> header{};
    for (const HeaderField& field : fields)
        std::visit(Putter{values, std::span{header}.subspan(field.offset, field.size)}, field.what);
    const std::uint16_t crc = crc16_of(std::span{header}.first(crc_offset));
    header[crc_offset] = low(crc);
    header[crc_offset + 1] = high(crc);
    return header;
}

} // namespace vrk
