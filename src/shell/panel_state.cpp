#include "shell/panel_state.h"

#include "shell/line_books.h"
#include "shell/option_panel.h"
#include "shell/option_pins.h"

#include "catalog/attributes.h"
#include "form/main_form.h"

namespace vrk {

namespace {

constexpr int single = -1;
constexpr int each = -2; // all of an array

struct PanelRow {
    std::string_view control;
    int index;
    std::string_view enabled; // in states 0 to 3, '1' or '0' each
};

// clang-format off
constexpr PanelRow panel_rows[] = {
//    control                index    0123
    { "txtDevice",           single, "1000" },
    { "Command3",            single, "1000" },
    { "TreeViewDevice",      single, "1000" },
    { "txtAP_FileStart",     single, "1000" },
    { "txtFileCheckSum",     single, "1000" },
    { "cheClearAP_Buffer",   single, "1000" },
    { "cheClearDataBuffer",  single, "1000" },
    { "comLoadFile",         single, "1000" },
    { "combCommPort",        single, "1010" },
    { "comOtherPort",        single, "1010" },
    { "cobBaudMax",          single, "1010" },
    { "cobBaudMin",          single, "1010" },
    { "cheTL",               single, "1010" },
    { "com_RC_frequency",    each,   "1000" },
    { "opt_485_pin",         each,   "1000" },
    { "opt_485_logic",       each,   "1000" },
    { "comb_485_pin",        single, "1000" },
    { "opt_External_WDT",    each,   "1000" },
    { "comb_External_WDT",   single, "1000" },
    { "opt_ISP_DEMO_WDT",    each,   "1000" },
    { "comb_WDT",            single, "1000" },
    { "comDownload",         each,   "1010" },
    { "comReadChipLock",     single, "1010" },
    { "txtWrite_OK_Count",   single, "1010" },
    { "txtWrite_Bad_Count",  single, "1010" },
    { "comClear_OK_Count",   single, "1010" },
    { "optBeepYes",          single, "1010" },
    { "optBeepNo",           single, "1010" },
    { "comDalay_ReDownLoad", single, "1010" },
    { "texBatchFileName",    single, "1010" },
    { "comOpenBatchFile",    single, "1010" },
    { "comSaveBatchFile",    single, "1010" },
    { "comUnlockOptions",    single, "1010" },
    { "comLockOptions",      single, "1000" },
    { "Command1",            single, "1010" },
    { "txt_Start_Address",   single, "1010" },
    { "txt_length",          single, "1010" },
    { "comStoreFile",        single, "1000" },
    { "comStop_Download",    single, "0101" },
    { "comTJXZ",             single, "1000" },
    { "mnuRecentFile",       each,   "1000" },
    { "mnuRecentProject",    each,   "1010" },
    { "comMastWindow",       single, "1000" },
    { "Read24C512",          single, "1000" },
    { "comSendUserCode",     single, "1000" },
    { "com_Demo_DownLoad",   single, "1010" },
    { "com_Demo_Re_DownLoad", single, "1010" },
    { "com_Demo_Stop",       single, "0101" },
    { "comOpenCOM",          each,   "1000" },
    { "comDebugSend",        single, "1000" },
    { "comAutoSend",         single, "1000" },
    { "comDebugClear",       1,      "1000" },
    { "comDebugClear",       2,      "1000" },
    { "comDebugContinue",    1,      "1000" },
    { "comDebugContinue",    2,      "1000" },
    { "comDebugHelp",        1,      "1010" },
    { "comDebugHelp",        2,      "1010" },
};
// clang-format on

void enable_row(Shell& shell, const PanelRow& row, bool enabled)
{
    if (row.index != each) {
        if (Control* control = shell.controls.find(row.control, row.index))
            control->set_enabled(enabled);
        return;
    }
    for (int i = 0; Control* control = shell.controls.find(row.control, i); ++i)
        control->set_enabled(enabled);
}

} // namespace

std::int16_t panel_state(const Shell& shell)
{
    return static_cast<std::int16_t>((shell.locked ? 2 : 0) + (shell.running ? 1 : 0));
}

void show_panel_state(Shell& shell)
{
    apply_panel_state_to_options(shell);
    const std::int16_t state = panel_state(shell);
    for (const PanelRow& row : panel_rows)
        enable_row(shell, row, row.enabled[static_cast<std::size_t>(state)] == '1');
    enable_line_controls(shell);
    enable_pin_choices(shell);
    enable_watchdog_pin(shell);
    enable_eeprom_controls(shell, state == panel::free && has_eeprom_buffer(shell.selected));
}

void set_locked(Shell& shell, bool locked)
{
    shell.locked = locked;
    show_panel_state(shell);
}

void enable_eeprom_controls(Shell& shell, bool enabled)
{
    shell.form.comLoadDataFile.set_enabled(enabled);
    shell.form.txtDataFileStart.set_enabled(enabled);
    shell.form.txtDataFileCheckSum.set_enabled(enabled);
    shell.form.cheClearDataBuffer.set_enabled(enabled);
    shell.form.cheData_Auto_Increase.set_enabled(enabled);
    enable_number_fields(shell);
}

} // namespace vrk
