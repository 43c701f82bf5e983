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

void set_panel_state(MainForm& form, std::int16_t state)
{
    if (form.selected.cap_no_option_write)
        return;
    form.job.panel_state = state;
    apply_options_to_controls(form);
    for (const PanelRow& row : panel_rows) {
        if (Control* control = form.controls.find(row.control, row.index))
            control->set_enabled(row.enabled[static_cast<std::size_t>(state)] == '1');
    }
    enable_eeprom_controls(form, state == panel::free && has_eeprom_buffer(form.selected));
}

void lock_panel_for_sequence(MainForm& form)
{
    const std::int16_t state = form.job.panel_state;
    if (state == panel::free || state == panel::locked)
        set_panel_state(form, static_cast<std::int16_t>(state + 1));
}

void unlock_panel_after_sequence(MainForm& form)
{
    const std::int16_t state = form.job.panel_state;
    if (state == panel::free_running || state == panel::locked_running)
        set_panel_state(form, static_cast<std::int16_t>(state - 1));
}

void enable_eeprom_controls(MainForm& form, bool enabled)
{
    form.comLoadDataFile.set_enabled(enabled);
    form.txtDataFileStart.set_enabled(enabled);
    form.txtDataFileCheckSum.set_enabled(enabled);
    form.cheClearDataBuffer.set_enabled(enabled);
    form.cheData_Auto_Increase.set_enabled(enabled);
    enable_number_fields(form);
}

void enable_buttons(MainForm& form)
{
    form.comDownload[0].set_enabled(true);
    form.comDownload[1].set_enabled(true);
    form.comStop_Download.set_enabled(false);
}

void disable_buttons(MainForm& form)
{
    form.comDownload[0].set_enabled(false);
    form.comDownload[1].set_enabled(false);
    form.comStop_Download.set_enabled(true);
}

} // namespace vrk
