#include "shell/events.h"

#include "form/messages.h"
#include "image/auto_increase.h"
#include "image/buffer_edit.h"
#include "image/buffer_view.h"
#include "image/file_loader.h"
#include "image/file_watch.h"
#include "image/store_range.h"
#include "link/option_commit.h"
#include "link/sequencer.h"
#include "options/panel.h"
#include "options/pins.h"
#include "options/rc_setting.h"
#include "shell/device.h"
#include "shell/project.h"
#include "shell/settings.h"
#include "shell/tabs.h"

#include <span>

namespace vrk {

namespace {

void comClear_OK_Count_Click(MainForm& form)
{
    constexpr Text question = {"您要把下载成功计数清0吗(Y/N)? ", "Do you want to clear the number of success programs to 0 (Y/N)?"};
    if (!ask_yes_no(form, in_language(form, question)))
        return;
    form.txtWrite_OK_Count.set_text("0");
    form.platform.settings.set("Settings", "Write_OK_Count", "0");
}

// A project may be chosen in the dialog of either buffer.
void open_if_project(MainForm& form, Chosen chosen)
{
    if (chosen != Chosen::project)
        return;
    form.TabStrip2.select(form.TabStrip2.find("Batch_quantity"));
    TabStrip2_Click(form);
    open_project(form, form.loader.current_path);
}

struct EventRow {
    std::string_view control;
    void (*event)(MainForm& form, int index);
};

// clang-format off
// What follows a click or, of a list, tab strip or scroll bar, a change by hand. A control that is not listed holds its
// state and nothing else.
constexpr EventRow events[] = {
    { "txtDevice",          [](MainForm& form, int) { open_device_tree(form); } },
    { "FrameX",             [](MainForm& form, int) { close_device_tree(form); } },
    { "comLoadFile",        [](MainForm& form, int) { open_if_project(form, comLoadFile_Click(form)); } },
    { "comLoadDataFile",    [](MainForm& form, int) { open_if_project(form, comLoadDataFile_Click(form)); } },
    { "comDownload",        [](MainForm& form, int index) { comDownload_Click(form, index); } },
    { "comStop_Download",   [](MainForm& form, int) { comStop_Download_Click(form); } },
    { "comClear_OK_Count",  [](MainForm& form, int) { comClear_OK_Count_Click(form); } },
    { "Option0",            [](MainForm& form, int index) { option_button_click(form, 0, index); } },
    { "Option1",            [](MainForm& form, int index) { option_button_click(form, 1, index); } },
    { "Option2",            [](MainForm& form, int index) { option_button_click(form, 2, index); } },
    { "Option3",            [](MainForm& form, int index) { option_button_click(form, 3, index); } },
    { "Option4",            [](MainForm& form, int index) { option_button_click(form, 4, index); } },
    { "Option5",            [](MainForm& form, int index) { option_button_click(form, 5, index); } },
    { "Option6",            [](MainForm& form, int index) { option_button_click(form, 6, index); } },
    { "Option7",            [](MainForm& form, int index) { option_button_click(form, 7, index); } },
    { "Option8",            [](MainForm& form, int index) { option_button_click(form, 8, index); } },
    { "Option9",            [](MainForm& form, int index) { option_button_click(form, 9, index); } },
    { "Option10",           [](MainForm& form, int index) { option_button_click(form, 10, index); } },
    { "Option11",           [](MainForm& form, int index) { option_button_click(form, 11, index); } },
    { "Option12",           [](MainForm& form, int index) { option_button_click(form, 12, index); } },
    { "Option13",           [](MainForm& form, int index) { option_button_click(form, 13, index); } },
    { "com_RC_frequency",   [](MainForm& form, int) { com_RC_frequency_Click(form); } },
    { "comb_485_pin",       [](MainForm& form, int) { comb_485_pin_Click(form); } },
    { "opt_485_pin",        [](MainForm& form, int) { opt_485_pin_Click(form); } },
    { "opt_485_logic",      [](MainForm& form, int) { opt_485_logic_Click(form); } },
    { "comb_External_WDT",  [](MainForm& form, int) { comb_External_WDT_Click(form); } },
    { "opt_External_WDT",   [](MainForm& form, int) { opt_External_WDT_Click(form); } },
    { "opt_ISP_DEMO_WDT",   [](MainForm& form, int) { opt_ISP_DEMO_WDT_Click(form); } },
    { "comReadChipLock",    [](MainForm& form, int) { comReadChipLock_Click(form); } },
    { "comOpenBatchFile",   [](MainForm& form, int) { comOpenBatchFile_Click(form); } },
    { "comSaveBatchFile",   [](MainForm& form, int) { comSaveBatchFile_Click(form); } },
    { "comLockOptions",     [](MainForm& form, int) { comLockOptions_Click(form); } },
    { "comUnlockOptions",   [](MainForm& form, int) { comUnlockOptions_Click(form); } },
    { "Command1",           [](MainForm& form, int) { Command1_Click(form); } },
    { "TabStrip1",          [](MainForm& form, int) { TabStrip1_Click(form); } },
    { "TabStrip2",          [](MainForm& form, int) { TabStrip2_Click(form); } },
    { "vscFile",            [](MainForm& form, int index) { vscFile_Change(form, index); } },
    { "txtBuffer2",         [](MainForm& form, int) { highlight_digit(form.txtBuffer2); } },
    { "tetDataFlash2",      [](MainForm& form, int) { highlight_digit(form.tetDataFlash2); } },
    { "cheAuto_Increase",   [](MainForm& form, int) { cheAuto_Increase_Click(form); } },
    { "cheData_Auto_Increase", [](MainForm& form, int) { cheData_Auto_Increase_Click(form); } },
    { "comStoreFile",       [](MainForm& form, int) { comStoreFile_Click(form); } },
};
// clang-format on

void run_event(MainForm& form, const Control& control)
{
    arm_save_after(form, control);
    for (const EventRow& row : events) {
        if (row.control == control.name)
            return row.event(form, control.index);
    }
}

} // namespace

bool click(MainForm& form, Control& control)
{
    if (!control.enabled())
        return false;
    if (auto* box = dynamic_cast<CheckBox*>(&control))
        return set_checked(form, *box, !box->value());
    if (auto* button = dynamic_cast<OptionButton*>(&control))
        return choose_option(form, *button);
    run_event(form, control);
    return true;
}

bool type_text(MainForm& form, Control& control, std::string_view text)
{
    if (!control.enabled())
        return false;
    if (auto* box = dynamic_cast<TextBox*>(&control)) {
        box->set_text(text);
        arm_save_after(form, control);
    } else if (auto* list = dynamic_cast<ComboBox*>(&control); list != nullptr && list->editable) {
        list->set_text(text);
        run_event(form, control);
    } else {
        return false;
    }
    return true;
}

bool choose_item(MainForm& form, ComboBox& box, int item)
{
    if (!box.enabled() || item < 0 || static_cast<std::size_t>(item) >= box.items().size())
        return false;
    box.choose(item);
    run_event(form, box);
    return true;
}

bool set_checked(MainForm& form, CheckBox& box, bool value)
{
    if (!box.enabled())
        return false;
    box.set_value(value);
    run_event(form, box);
    return true;
}

bool choose_option(MainForm& form, OptionButton& button)
{
    if (!button.enabled())
        return false;
    button.set_value(true);
    run_event(form, button);
    return true;
}

bool choose_tab(MainForm& form, TabStrip& strip, int tab)
{
    if (!strip.enabled() || tab < 0 || static_cast<std::size_t>(tab) >= strip.tabs().size())
        return false;
    strip.select(tab);
    run_event(form, strip);
    return true;
}

bool choose_node(MainForm& form, Tree& tree, std::string_view key)
{
    if (!tree.enabled() || tree.find(key) == nullptr)
        return false;
    TreeViewDevice_NodeClick(form, key);
    return true;
}

bool scroll_to(MainForm& form, ScrollBar& bar, int value)
{
    if (!bar.enabled())
        return false;
    bar.set_value(value);
    run_event(form, bar);
    return true;
}

bool press_key(MainForm& form, Control& control, std::string_view key)
{
    if (!control.enabled())
        return false;
    if (&control == &form.TreeViewDevice && key == "Esc")
        close_device_tree(form);
    if (&control == &form.txtBuffer2)
        press_edit_key(form, form.code_buffer, key);
    if (&control == &form.tetDataFlash2)
        press_edit_key(form, form.data_buffer, key);
    arm_save_after(form, control);
    return true;
}

bool put_caret(MainForm& form, TextBox& box, int position, int length)
{
    if (!box.enabled())
        return false;
    box.select(position, length);
    if (length == 0 && (&box == &form.txtBuffer2 || &box == &form.tetDataFlash2))
        run_event(form, box);
    return true;
}

void Timer12_Timer(MainForm& form)
{
    if (watch_code_file(form))
        comDownload_Click(form, 0);
}

} // namespace vrk
