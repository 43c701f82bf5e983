#include "shell/make_job.h"

#include "form/main_form.h"

#include "shell/option_choices.h"

#include "catalog/attributes.h"
#include "link/negotiate.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

std::int32_t baud_of(const ComboBox& list) { return static_cast<std::int32_t>(number_in(list.text())); }

LineChoice line_of(const Shell& shell)
{
    LineChoice line;
    line.port_path = chosen_port_path(shell);
    line.contact_baud = baud_of(shell.form.cobBaudMin);
    line.max_baud = baud_of(shell.form.cobBaudMax);
    line.fixed_115200 = shell.form.cheTL.value();
    return line;
}

// What of a number stands in its buffer; nothing where none was stamped.
void add_number(
    std::vector<StampedNumber>& numbers, const AutoIncrease& record, const FileBuffer& buffer, std::int32_t flash_first)
{
    const std::int32_t first = record.address + 1 - record.bytes;
    if (!record.valid || record.bytes <= 0 || first < 0 || record.address > buffer.last())
        return;
    const auto begin = buffer.data.begin() + first;
    numbers.push_back({flash_first + first, {begin, begin + record.bytes}});
}

// Third field of the option byte text.
bool guards_block_1(const std::string& text)
{
    const std::size_t first = text.find(',');
    const std::size_t second = first == std::string::npos ? first : text.find(',', first + 1);
    return second != std::string::npos && text.substr(second + 1, 1) == "1";
}

} // namespace

std::string chosen_port_path(const Shell& shell)
{
    const auto port = static_cast<std::size_t>(shell.form.combCommPort.index_chosen());
    return port < shell.port_paths.size() ? shell.port_paths[port] : std::string{};
}

JobImage image_of(const FileBuffer& buffer)
{
    return {buffer.data, buffer.low, buffer.high, buffer.view_high, buffer.loaded};
}

std::vector<StampedNumber> stamped_numbers(const Shell& shell)
{
    std::vector<StampedNumber> numbers;
    add_number(numbers, shell.code_increase, shell.code_buffer, 0);
    add_number(numbers, shell.data_increase, shell.data_buffer, shell.selected.eeprom_first);
    return numbers;
}

Job make_job(Shell& shell)
{
    Job job;
    job.model = shell.selected;
    job.model_name = trimmed(shell.form.txtDevice.text());
    job.english = shell.language_is_english;
    job.line = line_of(shell);

    job.code = image_of(shell.code_buffer);
    job.data = image_of(shell.data_buffer);
    job.numbers = stamped_numbers(shell);

    const OptionChoices choices = read_option_choices(shell);
    if (option_group(shell.selected.series))
        shell.options = encode_options(shell.selected.series, choices);
    job.options = shell.options;
    job.double_speed = choices.holds("Double_speed_YES");
    job.guards_block_1 = guards_block_1(shell.option_byte_text);
    if (shell.form.opt_ISP_DEMO_WDT[1].value())
        job.watchdog_pin = watchdog_pin_code(shell.form.comb_WDT.text());

    job.calibrate_rc = series_is_15_16(shell.selected.series);
    job.rc_target_mhz = number_in(shell.form.com_RC_frequency[5].text());
    return job;
}

} // namespace vrk
