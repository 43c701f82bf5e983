#include "image/auto_increase.h"

#include "catalog/attributes.h"
#include "form/messages.h"
#include "image/buffer_view.h"
#include "options/panel.h"
#include "platform/text_number.h"

#include <algorithm>
#include <limits>

namespace vrk {

namespace {

constexpr std::int64_t largest_value = 2147483647;
constexpr int most_hex_bytes = 4;
constexpr int most_bytes = 10;
constexpr int lines_above_number = 3; // it does not stand at the upper edge of the view

enum Field { address_field, bytes_field, next_field, increment_field };

// clang-format off
struct PlaceText { PlaceFault fault; Text text; };
constexpr PlaceText place_texts[] = {
//    fault                                Chinese, English
    { PlaceFault::code_past_code_flash,  { "文件缓冲区自动增量存放地址太大",
                                           "The address of auto increament in the data buffer is too big." } },
    { PlaceFault::code_past_flash,       { "文件缓冲区自动增量存放地址太大",
                                           "The address of auto increament in the buffer is too big." } },
    { PlaceFault::code_below_zero,       { "文件缓冲区自动增量存放地址太小或字节数太长",
                                           "The address of auto increament in the code buffer is too small or the number of bytes is too big." } },
    { PlaceFault::data_past_end,         { "数据文件缓冲区自动增量存放地址太大, ",
                                           "The address of auto increament in the data buffer is too big." } },
    { PlaceFault::data_below_zero,       { "数据文件缓冲区自动增量存放地址太小或字节数太长",
                                           "The address of auto increament in the EEPROM file buffer is too small or the number of bytes is too big." } },
};

struct ValueText { ValueFault fault; Text text; };
constexpr ValueText value_texts[] = {
//    fault                                  Chinese, English
    { ValueFault::no_decimal,              { " '下一个值' 应输入10进制数",
                                             "The format of Next Value must be 10 base." } },
    { ValueFault::too_large,               { "下一值必须小于 2147483648。",
                                             "The Next Value must be less than 2147483648." } },
    { ValueFault::too_few_bytes,           { "自动增量字节数太小",
                                             "The number of bytes is too small." } },
    { ValueFault::too_many_bytes_for_hex,  { "选择 16进制时，字节数必须小于或等于 4。",
                                             "If choose HEX, the number of bytes must be less than or equal to 4." } },
    { ValueFault::too_many_bytes,          { "字节数必须小于或等于 10。",
                                             "The number of Bytes must be less than or equal to 10." } },
};

struct SettingRow { const char* key; const char* otherwise; Field field; };
constexpr SettingRow setting_rows[] = {
//    key           default  field
    { "address",    "FFFF",  address_field },
    { "Length",     "8",     bytes_field },
    { "next_value", "0000",  next_field },
    { "Increase",   "1",     increment_field },
};
// clang-format on
constexpr const char* system_key = "numeral_system";
constexpr const char* system_otherwise = "1";

struct IncreaseRole {
    BufferKind kind;
    const char* name;
    const char* section;
    Text title;
};
constexpr IncreaseRole roles[] = {
    {BufferKind::code, "AP_AUTO_INCREASE", "Auto_Increase",
        {"设置程序文件自动增量", "Set Program Automatic Increment"}},
    {BufferKind::data, "Data_Auto_Increase", "Data_Auto_Increase",
        {"设置 EEPROM 文件自动增量", "Set EEPROM Automatic Increment"}},
};

// A record with all that belongs to it.
struct Increase {
    const IncreaseRole& role;
    AutoIncrease& record;
    FileBuffer& buffer;
    int scroll_index;
    CheckBox& box;
    TextBox (&fields)[4];
    OptionButton (&systems)[3];
};
Increase code_side(Shell& shell)
{
    return {roles[0], shell.code_increase, shell.code_buffer, 0, shell.form.cheAuto_Increase, shell.form.texAuto_Increase,
        shell.form.optAuto_Increase};
}
Increase data_side(Shell& shell)
{
    return {roles[1], shell.data_increase, shell.data_buffer, 1, shell.form.cheData_Auto_Increase, shell.form.texData_Auto_Increase,
        shell.form.optData_Auto_Increase};
}
Increase side_of(Shell& shell, const AutoIncrease& record)
{
    return &record == &shell.data_increase ? data_side(shell) : code_side(shell);
}

std::string_view last_characters(std::string_view text, int count)
{
    const auto wanted = static_cast<std::size_t>(std::max(count, 0));
    return text.size() > wanted ? text.substr(text.size() - wanted) : text;
}

std::string padded(std::string_view text, int width)
{
    const std::string zeros(static_cast<std::size_t>(std::max(width, 0)), '0');
    return std::string{last_characters(zeros + std::string{text}, width)};
}

bool is_decimal(std::string_view text) { return text.find_first_not_of("0123456789") == std::string_view::npos; }

std::string_view without_leading_zeros(std::string_view text)
{
    return text.substr(std::min(text.find_first_not_of('0'), text.size()));
}

// Of a decimal text of any length; above largest_value it is held just there.
std::int64_t value_in(std::string_view text)
{
    std::int64_t value = 0;
    for (const char digit : text)
        value = std::min(value * 10 + (digit - '0'), largest_value + 1);
    return value;
}

int digits_per_byte(std::int16_t system) { return system == AutoIncrease::ascii ? 1 : 2; }

std::int16_t short_number(std::string_view text)
{
    constexpr double least = std::numeric_limits<std::int16_t>::min();
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::clamp(round_half_even(number_in(text)), least, most));
}

int chosen_system(const OptionButton (&systems)[3])
{
    for (int i = 0; i < 3; ++i) {
        if (systems[i].value())
            return i;
    }
    return AutoIncrease::hex;
}

void read_record(const Increase& side)
{
    AutoIncrease& record = side.record;
    record.name = side.role.name;
    side.fields[address_field].set_text(upper_case(side.fields[address_field].text()));
    record.address = hex_address_5(side.fields[address_field].text());
    record.bytes = short_number(side.fields[bytes_field].text());
    record.next_value = side.fields[next_field].text();
    record.increment = short_number(side.fields[increment_field].text());
    record.system = static_cast<std::int16_t>(chosen_system(side.systems));
}

template <typename Fault, typename Row, std::size_t Count> const Text& text_of(Fault fault, const Row (&rows)[Count])
{
    return std::find_if(std::begin(rows), std::end(rows) - 1, [&](const Row& row) { return row.fault == fault; })->text;
}

std::string place_text(const Shell& shell, PlaceFault fault)
{
    std::string text{in_language(shell, text_of(fault, place_texts))};
    if (fault == PlaceFault::data_past_end && !shell.language_is_english)
        text += "\n" + hex_text(shell.selected.eeprom_last - shell.selected.eeprom_first) + "H";
    return text;
}

void load_side(Shell& shell, const Increase& side)
{
    SettingsStore& settings = shell.platform.settings;
    for (const SettingRow& row : setting_rows)
        side.fields[row.field].set_text(settings.get(side.role.section, row.key, row.otherwise));
    const double system = number_in(settings.get(side.role.section, system_key, system_otherwise));
    side.systems[system >= 0 && system < 3 ? static_cast<int>(system) : 0].set_value(true);
}

void save_side(Shell& shell, const Increase& side)
{
    SettingsStore& settings = shell.platform.settings;
    for (const SettingRow& row : setting_rows)
        settings.set(side.role.section, row.key, side.fields[row.field].text());
    settings.set(side.role.section, system_key, std::to_string(chosen_system(side.systems)));
}

void box_clicked(Shell& shell, const Increase& side)
{
    enable_number_fields(shell);
    side.record.valid = false;
    if (!side.box.value())
        return;
    read_records(shell);
    check_record(shell, side.record);
    save_increase_settings(shell);
    if (!side.record.valid)
        return;
    stamp(shell, side.record);
    update_view(shell, side.buffer);
    scroll_to(shell, side.record);
}

bool tell_value_fault(Shell& shell, const Increase& side)
{
    const ValueFault fault = value_fault(side.record);
    if (fault == ValueFault::none)
        return false;
    show_box(shell, in_language(shell, text_of(fault, value_texts)), in_language(shell, side.role.title));
    return true;
}

bool move_valid(Shell& shell, const Increase& side)
{
    if (!side.record.valid)
        return true;
    advance(shell, side.record);
    const bool stamped = stamp(shell, side.record);
    vscFile_Change(shell, side.scroll_index);
    save_increase_settings(shell);
    return stamped;
}

void stop_side(const Increase& side)
{
    side.box.set_value(false);
    side.record.valid = false;
}

} // namespace

PlaceFault place_fault(const McuRecord& model, BufferKind kind, std::int32_t address, std::int32_t bytes)
{
    const bool below_zero = address + 1 - bytes < 0;
    if (kind == BufferKind::data) {
        if (address > model.eeprom_last - model.eeprom_first)
            return PlaceFault::data_past_end;
        return below_zero ? PlaceFault::data_below_zero : PlaceFault::none;
    }
    if (has_separate_eeprom(model)) {
        if (address > model.ap_last)
            return PlaceFault::code_past_code_flash;
    } else if (address > (model.series >= 2 ? model.eeprom_last : model.ap_last)) {
        return PlaceFault::code_past_flash;
    }
    return below_zero ? PlaceFault::code_below_zero : PlaceFault::none;
}

ValueFault value_fault(const AutoIncrease& record)
{
    if (!is_decimal(record.next_value))
        return ValueFault::no_decimal;
    const std::int64_t value = value_in(record.next_value);
    if (value > largest_value)
        return ValueFault::too_large;
    const bool is_hex = record.system == AutoIncrease::hex;
    const std::size_t digits = is_hex ? hex_text(value).size() : without_leading_zeros(record.next_value).size();
    const auto room = static_cast<std::size_t>(std::max<int>(record.bytes, 0) * digits_per_byte(record.system));
    if (digits > room)
        return ValueFault::too_few_bytes;
    if (is_hex && record.bytes > most_hex_bytes)
        return ValueFault::too_many_bytes_for_hex;
    return record.bytes > most_bytes ? ValueFault::too_many_bytes : ValueFault::none;
}

std::string stamp_digits(const AutoIncrease& record)
{
    switch (record.system) {
    case AutoIncrease::bcd:
        return padded(record.next_value, record.bytes * 2);
    case AutoIncrease::ascii: {
        std::string digits;
        const std::string_view value = last_characters(record.next_value, record.bytes);
        for (auto character = value.rbegin(); character != value.rend(); ++character)
            digits += hex_text(static_cast<unsigned char>(*character), 2);
        return digits;
    }
    default:
        return "00000000" + hex_text(value_in(record.next_value));
    }
}

std::vector<std::uint8_t> stamp_bytes(const AutoIncrease& record)
{
    std::string digits = stamp_digits(record);
    std::vector<std::uint8_t> bytes;
    for (int i = 0; i < record.bytes; ++i) {
        const std::string_view pair = last_characters(digits, 2);
        bytes.push_back(static_cast<std::uint8_t>(hex_number(pair)));
        digits.resize(digits.size() - pair.size());
    }
    return bytes;
}

std::string advanced_value(const AutoIncrease& record)
{
    const std::string sum = number_text(number_in(record.next_value) + record.increment);
    if (record.system == AutoIncrease::hex)
        return padded(sum, (record.bytes * 241 + 150) / 100); // as many decimal digits as the bytes can hold, and one
    return padded(sum, record.bytes * digits_per_byte(record.system));
}

void read_records(Shell& shell)
{
    read_record(code_side(shell));
    read_record(data_side(shell));
}

void check_record(Shell& shell, AutoIncrease& record)
{
    const Increase side = side_of(shell, record);
    const PlaceFault fault = place_fault(shell.selected, side.role.kind, record.address, record.bytes);
    record.valid = fault == PlaceFault::none;
    if (!record.valid)
        show_box(shell, place_text(shell, fault), in_language(shell, side.role.title));
}

bool stamp(Shell& shell, const AutoIncrease& record)
{
    const Increase side = side_of(shell, record);
    if (tell_value_fault(shell, side))
        return false;
    const std::vector<std::uint8_t> bytes = stamp_bytes(record);
    const auto count = static_cast<std::int32_t>(bytes.size());
    if (record.address > side.buffer.last() || record.address + 1 - count < 0)
        return false;
    std::int32_t address = record.address;
    for (const std::uint8_t byte : bytes)
        side.buffer.data[static_cast<std::size_t>(address--)] = byte;
    return true;
}

void advance(Shell& shell, AutoIncrease& record)
{
    record.next_value = advanced_value(record);
    side_of(shell, record).fields[next_field].set_text(record.next_value);
}

void load_increase_settings(Shell& shell)
{
    load_side(shell, code_side(shell));
    load_side(shell, data_side(shell));
}

void save_increase_settings(Shell& shell)
{
    save_side(shell, code_side(shell));
    save_side(shell, data_side(shell));
}

void scroll_to(Shell& shell, const AutoIncrease& record)
{
    const Increase side = side_of(shell, record);
    shell.form.vscFile[side.scroll_index].set_value(
        (record.address - side.buffer.view_low) / bytes_per_line - lines_above_number);
    vscFile_Change(shell, side.scroll_index);
}

void cheAuto_Increase_Click(Shell& shell) { box_clicked(shell, code_side(shell)); }
void cheData_Auto_Increase_Click(Shell& shell) { box_clicked(shell, data_side(shell)); }

bool numbers_fit(Shell& shell)
{
    const auto fits = [&shell](const Increase& side) { return !side.record.valid || !tell_value_fault(shell, side); };
    const bool code = fits(code_side(shell));
    return fits(data_side(shell)) && code;
}

bool move_numbers(Shell& shell)
{
    const bool code = move_valid(shell, code_side(shell));
    return move_valid(shell, data_side(shell)) && code;
}

void stop_stamping(Shell& shell)
{
    stop_side(code_side(shell));
    stop_side(data_side(shell));
    enable_number_fields(shell);
}

} // namespace vrk
