#include "shell/rc_boxes.h"

#include "form/main_form.h"

#include "options/rc_setting.h"
#include "shell/arm_save.h"

namespace vrk {

void fill_low_voltage_list(Shell& shell, int default_index)
{
    shell.form.com_RC_frequency[4].set_items(low_voltage_items(shell.selected));
    shell.form.com_RC_frequency[4].choose(default_index);
}

void sync_rc_divider(Shell& shell)
{
    const int band = shell.form.com_RC_frequency[1].index_chosen();
    shell.form.com_RC_frequency[3].choose(rc_divider_of_band(band));
    arm_save(shell);
}

void com_RC_frequency_Click(Shell& shell) { sync_rc_divider(shell); }

} // namespace vrk
