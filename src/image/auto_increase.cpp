#include "image/auto_increase.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>

namespace vrk {

namespace {

constexpr std::int64_t largest_value = 2147483647;
constexpr int most_hex_bytes = 4;
constexpr int most_bytes = 10;

// clang-format off
struct FieldText { FieldFault fault; Text text; };
constexpr FieldText field_texts[] = {
//    fault                                       Chinese, English
    { FieldFault::bytes_no_whole_number,        { "字节数必须是整数。",
                                                  "The number of bytes must be a whole number." } },
    { FieldFault::increment_no_whole_number,    { "增量必须是整数。",
                                                  "The increment must be a whole number." } },
    { FieldFault::increment_too_large,          { "增量必须是 -32768 到 32767 之间的整数。",
                                                  "The increment must be a whole number from -32768 to 32767." } },
    { FieldFault::address_no_number,            { "存放地址必须是16进制数。",
                                                  "The address must be a hexadecimal number." } },
};

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

constexpr Text titles[] = { // by BufferKind
    { "设置程序文件自动增量",     "Set Program Automatic Increment" },
    { "设置 EEPROM 文件自动增量", "Set EEPROM Automatic Increment" },
};
// clang-format on

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

bool consists_of(std::string_view characters, std::string_view text)
{
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}
bool is_decimal(std::string_view text) { return consists_of("0123456789", text); }

std::string_view without_sign(std::string_view text)
{
    return text.starts_with('-') || text.starts_with('+') ? text.substr(1) : text;
}
bool is_whole_number(std::string_view text) { return is_decimal(without_sign(trimmed(text))); }

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

template <typename Fault, typename Row, std::size_t Count> const Text& text_of(Fault fault, const Row (&rows)[Count])
{
    return std::find_if(std::begin(rows), std::end(rows) - 1, [&](const Row& row) { return row.fault == fault; })->text;
}

} // namespace

FieldFault counts_fault(std::string_view bytes, std::string_view increment)
{
    if (!is_whole_number(bytes))
        return FieldFault::bytes_no_whole_number;
    if (!is_whole_number(increment))
        return FieldFault::increment_no_whole_number;
    const double step = number_in(increment);
    const bool fits =
        step >= std::numeric_limits<std::int16_t>::min() && step <= std::numeric_limits<std::int16_t>::max();
    return fits ? FieldFault::none : FieldFault::increment_too_large;
}

std::int16_t record_number(std::string_view text)
{
    constexpr double least = std::numeric_limits<std::int16_t>::min();
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::clamp(round_half_even(number_in(text)), least, most));
}

FieldFault address_fault(std::string_view address)
{
    return consists_of("0123456789ABCDEFabcdef", trimmed(address)) ? FieldFault::none : FieldFault::address_no_number;
}

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
    if (digits > room || record.bytes < 1)
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

std::string padded_value(const AutoIncrease& record, double value)
{
    const std::string digits = number_text(value);
    if (record.system == AutoIncrease::hex)
        return padded(digits, (record.bytes * 241 + 150) / 100); // as many as the bytes can hold, and one
    return padded(digits, record.bytes * digits_per_byte(record.system));
}

std::string advanced_value(const AutoIncrease& record)
{
    return padded_value(record, number_in(record.next_value) + record.increment);
}

Line place_text(PlaceFault fault, const McuRecord& model)
{
    Line text = text_of(fault, place_texts);
    if (fault == PlaceFault::data_past_end)
        text.zh += "\n" + hex_text(model.eeprom_last - model.eeprom_first) + "H";
    return text;
}

const Text& field_text(FieldFault fault) { return text_of(fault, field_texts); }

const Text& value_text(ValueFault fault) { return text_of(fault, value_texts); }

const Text& increase_title(BufferKind kind) { return titles[index_of(kind)]; }

bool stamp(const AutoIncrease& record, FileBuffer& buffer)
{
    if (value_fault(record) != ValueFault::none)
        return false;
    const std::vector<std::uint8_t> bytes = stamp_bytes(record);
    const auto count = static_cast<std::int32_t>(bytes.size());
    if (record.address > buffer.last() || record.address + 1 - count < 0)
        return false;
    std::int32_t address = record.address;
    for (const std::uint8_t byte : bytes)
        buffer.data[static_cast<std::size_t>(address--)] = byte;
    return true;
}

} // namespace vrk
