#include "link/panel_state.h"

#include "catalog/attributes.h"
#include "options/panel.h"

namespace vrk {

namespace {

struct PanelRow {
    std::string_view control;
    int index; // -1: a single control
    std::string_view enabled; // in states 0 to 3, '1' or '0' each
};

// clang-format off
constexpr PanelRow panel_rows[] = {
//    control               index  0123
    { "txtDevice",            -1, "1000" },
    { "TreeViewDevice",       -1, "1000" },
    { "txtAP_FileStart",      -1, "1000" },
    { "txtFileCheckSum",      -1, "1000" },
    { "cheClearAP_Buffer",    -1, "1000" },
    { "cheClearDataBuffer",   -1, "1000" },
    { "comLoadFile",          -1, "1000" },
    { "comDownload",           0, "1010" },
    { "comDownload",           1, "1010" },
    { "comReadChipLock",      -1, "1010" },
    { "comOpenBatchFile",     -1, "1010" },
    { "comSaveBatchFile",     -1, "1010" },
    { "comUnlockOptions",     -1, "1010" },
    { "comLockOptions",       -1, "1000" },
    { "comStoreFile",         -1, "1000" },
    { "comStop_Download",     -1, "0101" },
};
// clang-format on

} // namespace

void set_panel_state(Shell& shell, std::int16_t state)
{
    if (shell.selected.cap_no_option_write)
        return;
    shell.job.panel_state = state;
    apply_options_to_controls(shell);
    for (const PanelRow& row : panel_rows) {
        if (Control* control = shell.form.controls.find(row.control, row.index))
            control->set_enabled(row.enabled[static_cast<std::size_t>(state)] == '1');
    }
    enable_eeprom_controls(shell, state == panel::free && has_eeprom_buffer(shell.selected));
}

void lock_panel_for_sequence(Shell& shell)
{
    const std::int16_t state = shell.job.panel_state;
    if (state == panel::free || state == panel::locked)
        set_panel_state(shell, static_cast<std::int16_t>(state + 1));
}

void unlock_panel_after_sequence(Shell& shell)
{
    const std::int16_t state = shell.job.panel_state;
    if (state == panel::free_running || state == panel::locked_running)
        set_panel_state(shell, static_cast<std::int16_t>(state - 1));
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

void enable_buttons(Shell& shell)
{
    shell.form.comDownload[0].set_enabled(true);
    shell.form.comDownload[1].set_enabled(true);
    shell.form.comStop_Download.set_enabled(false);
}

void disable_buttons(Shell& shell)
{
    shell.form.comDownload[0].set_enabled(false);
    shell.form.comDownload[1].set_enabled(false);
    shell.form.comStop_Download.set_enabled(true);
}

} // namespace vrk
