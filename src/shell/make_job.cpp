#include "shell/make_job.h"

#include "form/main_form.h"

#include "shell/option_choices.h"

#include "link/seal_job.h"
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

std::vector<StampedNumber> stamped_numbers(const Shell& shell)
{
    return stamped_numbers(
        shell.selected, {shell.code_buffer, shell.code_increase}, {shell.data_buffer, shell.data_increase});
}

Job make_job(Shell& shell)
{
    JobChoices choices{.model = shell.selected,
        .model_name = std::string{trimmed(shell.form.txtDevice.text())},
        .english = shell.language_is_english,
        .line = line_of(shell),
        .code = {shell.code_buffer, shell.code_increase},
        .data = {shell.data_buffer, shell.data_increase},
        .options = read_option_choices(shell),
        .guards_block_1 = guards_block_1(shell.option_byte_text),
        .watchdog_pin = std::nullopt,
        .rc_target_mhz = number_in(shell.form.com_RC_frequency[5].text())};
    if (shell.form.opt_ISP_DEMO_WDT[1].value())
        choices.watchdog_pin = shell.form.comb_WDT.text();
    const Job job = seal_job(choices);
    if (option_group(shell.selected.series))
        shell.options = job.options;
    return job;
}

} // namespace vrk
