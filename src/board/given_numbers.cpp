#include "board/given_numbers.h"

#include "board/quantity.h"

#include <string>

namespace vrk {

namespace {

constexpr double largest_number = 2147483648.0;

constexpr Text stands_still = {"增量的低 8 位为 0，脱机下载板会给每个 MCU 写入相同的数值，未写入。",
    "An off-line board counts with the low byte of the increment, and that is 0: every MCU would get the same number. "
    "Nothing was written."};
constexpr Text of_code = {"程序文件自动增量", "Auto increment of the code file"};
constexpr Text of_data = {"数据文件自动增量", "Auto increment of the EEPROM file"};
constexpr Text this_board = {": 本脱机下载板写入 ", ": this board gives "};
constexpr Text up_to = {" 到 ", " to "};
constexpr Text in_steps = {"，增量 ", ", increment "};
constexpr Text next_stays = {"。下一个值仍为 ", ". Next Value is still "};
constexpr Text set_it = {"，准备另一块板或直接下载前请改为 ", ": set it to "};
constexpr Text full_stop = {"。", "."};
constexpr Text before_next = {"。", " before you prepare another board or program an MCU from here."};

bool grows_too_large(const BoardNumber& number, double quantity)
{
    return number.in_use && static_cast<double>(number.next_value) + quantity * number.increment > largest_number;
}

Line digits(std::int64_t number) { return Line{std::to_string(number)}; }

std::optional<NumberRefusal> why_refused(const BoardNumber& number, double quantity, BufferKind kind)
{
    if (!number.in_use)
        return std::nullopt;
    const GivenNumbers given = given_numbers(number, quantity);
    if (given.step == 0 && number.increment != 0 && quantity > 1)
        return NumberRefusal{stands_still, increase_title(kind)};
    AutoIncrease last(kind);
    last.bytes = static_cast<std::int16_t>(number.bytes);
    last.system = static_cast<std::int16_t>(number.format);
    last.next_value = std::to_string(given.last);
    if (const ValueFault fault = value_fault(last); fault != ValueFault::none)
        return NumberRefusal{value_text(fault), increase_title(kind)};
    return std::nullopt;
}

Line given_text(const Text& whose, const BoardNumber& number, double quantity)
{
    const GivenNumbers given = given_numbers(number, quantity);
    const Line range = Line{whose} + this_board + digits(given.first) + up_to + digits(given.last);
    if (given.step == 0)
        return range + full_stop;
    return range + in_steps + digits(given.step) + next_stays + digits(given.first) + set_it +
        digits(given.last + given.step) + before_next;
}

} // namespace

GivenNumbers given_numbers(const BoardNumber& number, double quantity)
{
    const std::int64_t step = number.increment & 0xFF;
    return {number.next_value, number.next_value + (static_cast<std::int64_t>(quantity) - 1) * step, step};
}

NumberGrowth number_growth(const BoardJob& job)
{
    const double quantity = board_quantity(job);
    if (grows_too_large(job.code_number, quantity))
        return NumberGrowth::code_too_large;
    return grows_too_large(job.data_number, quantity) ? NumberGrowth::data_too_large : NumberGrowth::fits;
}

const Line& growth_text(NumberGrowth growth)
{
    static const Line code{Text{"程序文件自动增量下一值 + (程序文件增量*脱机下载板下载数限量) 太大( >2147483648 ), \n"
                                "请减小程序文件自动增量下一值, 或减小程序文件增量, 或减小脱机下载板下载数限量",
        "Auto increment + (increment * 'Number of MCU') too big( >2147483648 ), \n"
        "Please decrease the auto increment value, or decrease the increment value，"
        "or decrease the limitation of the number of MCU."}};
    static const Line data{Text{"数据文件自动增量下一值 + (数据文件增量*脱机下载板下载数限量) 太大( >2147483648 ), \n"
                                "请减小数据文件自动增量下一值, 或减小数据文件增量, 或减小脱机下载板下载数限量",
        "Auto increment + (increment * 'Number of MCU') too big( >2147483648 ), \n"
        "Please decrease the auto increment value, or decrease the increment value，"
        "or decrease the number of MCU."}};
    return growth == NumberGrowth::code_too_large ? code : data;
}

std::optional<NumberRefusal> why_numbers_are_refused(const BoardJob& job)
{
    if (const NumberGrowth growth = number_growth(job); growth != NumberGrowth::fits)
        return NumberRefusal{growth_text(growth), {}};
    const double quantity = board_quantity(job);
    const auto code = why_refused(job.code_number, quantity, BufferKind::code);
    return code ? code : why_refused(job.data_number, quantity, BufferKind::data);
}

std::vector<Line> given_texts(const BoardJob& job)
{
    std::vector<Line> texts;
    const double quantity = board_quantity(job);
    if (job.code_number.in_use)
        texts.push_back(given_text(of_code, job.code_number, quantity));
    if (job.data_number.in_use)
        texts.push_back(given_text(of_data, job.data_number, quantity));
    return texts;
}

} // namespace vrk
