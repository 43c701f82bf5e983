#include "shell/rc_boxes.h"

#include "form/named_controls.h"

#include "catalog/attributes.h"
#include "options/rc_setting.h"
#include "platform/text_number.h"
#include "shell/arm_save.h"
#include "shell/messages.h"

namespace vrk {

namespace {

ComboBox& rc_list(const Shell& shell, int index)
{
    return NamedControls{shell.controls}.list("com_RC_frequency", index);
}

constexpr std::size_t wanted_box = 0;
constexpr std::size_t test_box = 5;

bool fits(Shell& shell, const std::string& text)
{
    const double mhz = number_in(text);
    if (mhz >= rc_least_mhz && mhz <= rc_most_mhz)
        return true;
    const std::string least = number_text(rc_least_mhz);
    const std::string most = number_text(rc_most_mhz);
    Line line;
    line.en = "The RC frequency must be a number from " + least + " to " + most + " MHz.";
    line.zh = "RC 频率必须是 " + least + " 到 " + most + " MHz 之间的数。";
    show_box(shell, line.in(shell.language_is_english));
    return false;
}

} // namespace

void fill_low_voltage_list(Shell& shell, int default_index)
{
    rc_list(shell, 4).set_items(low_voltage_items(shell.selected));
    rc_list(shell, 4).choose(default_index);
}

void sync_rc_divider(Shell& shell)
{
    const int band = rc_list(shell, 1).index_chosen();
    rc_list(shell, 3).choose(rc_divider_of_band(band));
    arm_save(shell);
}

// The box of the frequency wanted may hold none, or the heading of its list.
bool rc_frequencies_fit(Shell& shell)
{
    if (!series_is_15_16(shell.selected.series))
        return true;
    const ComboBox& wanted = rc_list(shell, wanted_box);
    const bool names_none = trimmed(wanted.text()).empty() || wanted.index_chosen() == 0;
    return (names_none || fits(shell, wanted.text())) && fits(shell, rc_list(shell, test_box).text());
}

void com_RC_frequency_Click(Shell& shell) { sync_rc_divider(shell); }

} // namespace vrk
