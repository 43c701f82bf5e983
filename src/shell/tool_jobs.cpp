#include "shell/tool_jobs.h"

#include "form/main_form.h"

#include "shell/make_job.h"
#include "shell/option_choices.h"

#include "catalog/attributes.h"
#include "inapp/hex_pairs.h"
#include "link/seal_job.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

BoardNumber board_number(const AutoIncrease& record)
{
    BoardNumber number;
    number.in_use = record.valid;
    number.address = record.address;
    number.bytes = record.bytes;
    number.next_value = static_cast<std::int64_t>(number_in(record.next_value));
    number.increment = record.increment;
    number.format = static_cast<AutoIncrease::System>(record.system);
    return number;
}

std::optional<LineSettings> line_of(
    const ComboBox& baud, const ComboBox& parity, const ComboBox& data_bits, const ComboBox& stop_bits)
{
    return user_line(baud.text(), parity.text(), data_bits.text(), stop_bits.text());
}

} // namespace

LineChoice user_port(const Shell& shell)
{
    LineChoice port;
    port.port_path = chosen_port_path(shell);
    return port;
}

UserCommand make_user_command(const Shell& shell)
{
    const MainForm& form = shell.form;
    return {line_of(form.cobUserCodeBaud, form.cobUserCodeParity, form.cobUserCodeDataBits, form.cobUserCodeStopBits),
        parse_hex_pairs(form.txtUserCode.text())};
}

DemoJob make_demo_job(Shell& shell)
{
    const MainForm& form = shell.form;
    DemoJob job;
    job.model = shell.selected;
    job.code = image_of(shell.code_buffer);
    job.data = image_of(shell.data_buffer);
    job.numbers = stamped_numbers(shell);
    job.port = user_port(shell);
    job.line = line_of(form.cob_DEMO_DownLoad_Baud, form.cob_DEMO_DownLoad_Parity, form.cob_DEMO_DownLoad_DataBits,
        form.cob_DEMO_DownLoad_StopBits);
    if (form.che_Demo_DownLoad.value())
        job.command = UserCommand{line_of(form.cob_DEMO_UserCode_Baud, form.cob_DEMO_UserCode_Parity,
                                      form.cob_DEMO_UserCode_DataBits, form.cob_DEMO_UserCode_StopBits),
            parse_hex_pairs(form.txt_DEMO_UserCode.text())};
    return job;
}

BoardJob make_board_job(Shell& shell)
{
    const MainForm& form = shell.form;
    BoardJob job;
    job.model = shell.selected;
    job.model_name = trimmed(form.txtDevice.text());
    job.line.port_path = chosen_port_path(shell);
    job.reported_id = shell.last_talk.chip.target_id_hi + shell.last_talk.chip.target_id_lo;
    job.code = image_of(shell.code_buffer);
    job.data = image_of(shell.data_buffer);
    const OptionChoices choices = read_option_choices(shell);
    if (option_group(shell.selected.series))
        shell.options = encode_options(shell.selected.series, choices);
    job.options = shell.options;
    job.code_number = board_number(shell.code_increase);
    job.data_number = board_number(shell.data_increase);
    job.quantity = number_in(form.txt_download_max.text());
    job.pins = static_cast<int>(number_in(form.combPins.text()));
    job.behind_sorter = form.che_staple[0].value();
    job.checks = {form.che_staple[1].value(), form.che_staple[2].value(), form.che_staple[3].value()};
    return job;
}

} // namespace vrk
