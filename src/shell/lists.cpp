#include "shell/lists.h"

#include "form/main_form.h"

#include "options/codec.h"
#include "options/pins.h"
#include "options/rc_setting.h"
#include "session/line_items.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vrk {

namespace {

using Items = std::vector<std::string>;
using Texts = std::span<const char* const>;

// clang-format off
constexpr const char* demo_bauds[]      = { "115200", "57600", "38400", "28800", "19200", "14400", "12800", "11520", "9600", "4800", "2400" };
constexpr const char* terminal_bauds[]  = { "256000", "128000", "115200", "57600", "38400", "28800", "19200", "14400", "9600", "4800", "2400", "1200", "600" };
constexpr const char* parities[]        = { "Even", "Odd", "None" };
constexpr const char* data_bits[]       = { "8", "7", "6", "5" };
constexpr const char* stop_bits[]       = { "1", "1.5", "2" };
constexpr const char* repeat_delays_s[] = { "9", "8", "7", "6", "5", "4", "3", "2", "1" };
// clang-format on

constexpr int terminal_ports = 16;

Items items(Texts texts) { return {texts.begin(), texts.end()}; }

Items items(std::span<const std::int32_t> bauds)
{
    Items texts;
    for (const std::int32_t baud : bauds)
        texts.push_back(std::to_string(baud));
    return texts;
}

Items port_names()
{
    Items names;
    for (int port = 1; port <= terminal_ports; ++port)
        names.push_back("COM" + std::to_string(port));
    return names;
}

// The four lists that make up the setting of a line.
void fill_line(Items bauds, ComboBox& baud, ComboBox& parity, ComboBox& data, ComboBox& stop)
{
    baud.set_items(std::move(bauds));
    parity.set_items(items(parities));
    data.set_items(items(data_bits));
    stop.set_items(items(stop_bits));
}

void fill_option_lists(MainForm& form)
{
    form.comWDT_Prescalar[0].set_items(watchdog_divider_items());
    form.comWDT_Prescalar[1].set_items(rc30k_divider_items());
    Items wanted = rc_wanted_items();
    wanted.insert(wanted.begin(), "com_RC_frequency "); // the list's own name stands first, and always has
    form.com_RC_frequency[0].set_items(std::move(wanted));
    form.com_RC_frequency[1].set_items(rc_band_items());
    form.com_RC_frequency[2].set_items(rc_trim_items());
    form.com_RC_frequency[3].set_items(rc_divider_items());
    form.com_RC_frequency[4].set_items(rc_voltage_items());
    form.com_RC_frequency[5].set_items(rc_test_items());
    form.comb_485_pin.set_items(option_pin_items());
    form.comb_External_WDT.set_items(option_pin_items());
}

} // namespace

void fill_lists(Shell& shell)
{
    shell.form.cobBaudMax.set_items(items(max_bauds));
    shell.form.cobBaudMin.set_items(items(contact_bauds));
    shell.form.comDalay_ReDownLoad.set_items(items(repeat_delays_s));
    shell.form.comb_WDT.set_items(all_pin_items());
    fill_option_lists(shell.form);

    shell.form.com_Debug_COM.set_items(port_names());
    fill_line(items(terminal_bauds), shell.form.com_Debug_Baud, shell.form.com_Debug_ParityCheck,
        shell.form.com_Debug_DataBits, shell.form.com_Debug_StopBits);
    fill_line(items(max_bauds), shell.form.cobUserCodeBaud, shell.form.cobUserCodeParity,
        shell.form.cobUserCodeDataBits, shell.form.cobUserCodeStopBits);
    fill_line(items(demo_bauds), shell.form.cob_DEMO_DownLoad_Baud, shell.form.cob_DEMO_DownLoad_Parity,
        shell.form.cob_DEMO_DownLoad_DataBits, shell.form.cob_DEMO_DownLoad_StopBits);
    fill_line(items(max_bauds), shell.form.cob_DEMO_UserCode_Baud, shell.form.cob_DEMO_UserCode_Parity,
        shell.form.cob_DEMO_UserCode_DataBits, shell.form.cob_DEMO_UserCode_StopBits);
}

} // namespace vrk
