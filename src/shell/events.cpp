#include "shell/events.h"

#include "form/main_form.h"

#include "shell/about.h"
#include "shell/buffer_edit.h"
#include "shell/buffer_view.h"
#include "shell/copy_command_line.h"
#include "shell/device.h"
#include "shell/dump_search.h"
#include "shell/file_watch.h"
#include "shell/help_texts.h"
#include "shell/kept_settings.h"
#include "shell/language.h"
#include "shell/line_books.h"
#include "shell/messages.h"
#include "shell/monitor_pages.h"
#include "shell/open_file.h"
#include "shell/open_path.h"
#include "shell/option_panel.h"
#include "shell/option_pins.h"
#include "shell/ports.h"
#include "shell/press.h"
#include "shell/project.h"
#include "shell/rc_boxes.h"
#include "shell/recent.h"
#include "shell/serial_numbers.h"
#include "shell/settings.h"
#include "shell/shrink.h"
#include "shell/store_file.h"
#include "shell/tabs.h"
#include "shell/terminal_page.h"
#include "shell/terminal_send.h"
#include "shell/tool_press.h"

#include "platform/text_number.h"

#include <span>

namespace vrk {

namespace {

void comClear_OK_Count_Click(Shell& shell)
{
    constexpr Text question = {
        "您要把下载成功计数清0吗(Y/N)? ", "Do you want to clear the number of success programs to 0 (Y/N)?"};
    if (!ask_yes_no(shell, in_language(shell, question)))
        return;
    shell.form.txtWrite_OK_Count.set_text("0");
    shell.form.txtWrite_Bad_Count.set_text("0");
    shell.platform.settings.set("Settings", "Write_OK_Count", "0");
    shell.platform.settings.set("Settings", "Write_Bad_Count", "0");
    keep_settings(shell);
}

struct EventRow {
    std::string_view control;
    void (*event)(Shell& shell, int index);
};

// clang-format off
// What follows a click or, of a list, tab strip or scroll bar, a change by hand. A control that is not listed holds its
// state and nothing else.
constexpr EventRow events[] = {
    { "txtDevice",          [](Shell& shell, int) { open_device_tree(shell); } },
    { "Command3",           [](Shell& shell, int) { toggle_device_tree(shell); } },
    { "FrameX",             [](Shell& shell, int) { close_device_tree(shell); } },
    { "comOtherPort",       [](Shell& shell, int) { comOtherPort_Click(shell); } },
    { "comLoadFile",        [](Shell& shell, int) { open_if_project(shell, comLoadFile_Click(shell)); } },
    { "comLoadDataFile",    [](Shell& shell, int) { open_if_project(shell, comLoadDataFile_Click(shell)); } },
    { "comDownload",        [](Shell& shell, int index) { comDownload_Click(shell, index); } },
    { "comStop_Download",   [](Shell& shell, int) { comStop_Download_Click(shell); } },
    { "comClear_OK_Count",  [](Shell& shell, int) { comClear_OK_Count_Click(shell); } },
    { "Option0",            [](Shell& shell, int index) { option_button_click(shell, 0, index); } },
    { "Option1",            [](Shell& shell, int index) { option_button_click(shell, 1, index); } },
    { "Option2",            [](Shell& shell, int index) { option_button_click(shell, 2, index); } },
    { "Option3",            [](Shell& shell, int index) { option_button_click(shell, 3, index); } },
    { "Option4",            [](Shell& shell, int index) { option_button_click(shell, 4, index); } },
    { "Option5",            [](Shell& shell, int index) { option_button_click(shell, 5, index); } },
    { "Option6",            [](Shell& shell, int index) { option_button_click(shell, 6, index); } },
    { "Option7",            [](Shell& shell, int index) { option_button_click(shell, 7, index); } },
    { "Option8",            [](Shell& shell, int index) { option_button_click(shell, 8, index); } },
    { "Option9",            [](Shell& shell, int index) { option_button_click(shell, 9, index); } },
    { "Option10",           [](Shell& shell, int index) { option_button_click(shell, 10, index); } },
    { "Option11",           [](Shell& shell, int index) { option_button_click(shell, 11, index); } },
    { "Option12",           [](Shell& shell, int index) { option_button_click(shell, 12, index); } },
    { "Option13",           [](Shell& shell, int index) { option_button_click(shell, 13, index); } },
    { "com_RC_frequency",   [](Shell& shell, int) { com_RC_frequency_Click(shell); } },
    { "comb_485_pin",       [](Shell& shell, int) { comb_485_pin_Click(shell); } },
    { "opt_485_pin",        [](Shell& shell, int) { enable_pin_choices(shell); } },
    { "opt_485_logic",      [](Shell& shell, int) { opt_485_logic_Click(shell); } },
    { "comb_External_WDT",  [](Shell& shell, int) { comb_External_WDT_Click(shell); } },
    { "opt_External_WDT",   [](Shell& shell, int) { enable_pin_choices(shell); } },
    { "opt_ISP_DEMO_WDT",   [](Shell& shell, int) { enable_watchdog_pin(shell); } },
    { "comReadChipLock",    [](Shell& shell, int) { comReadChipLock_Click(shell); } },
    { "comOpenBatchFile",   [](Shell& shell, int) { comOpenBatchFile_Click(shell); } },
    { "comSaveBatchFile",   [](Shell& shell, int) { comSaveBatchFile_Click(shell); } },
    { "comLockOptions",     [](Shell& shell, int) { comLockOptions_Click(shell); } },
    { "comUnlockOptions",   [](Shell& shell, int) { comUnlockOptions_Click(shell); } },
    { "Command1",           [](Shell& shell, int) { show_help(shell, Help::project); } },
    { "comHelp",            [](Shell& shell, int index) { comHelp_Click(shell, index); } },
    { "com_TJXZ_help",      [](Shell& shell, int) { show_help(shell, Help::board); } },
    { "comDebugHelp",       [](Shell& shell, int index) { comDebugHelp_Click(shell, index); } },
    { "comMastWindow",      [](Shell& shell, int) { comMastWindow_Click(shell); } },
    { "mnuRecentFile",      [](Shell& shell, int index) { mnuRecentFile_Click(shell, index); } },
    { "mnuRecentProject",   [](Shell& shell, int index) { mnuRecentProject_Click(shell, index); } },
    { "mnuLanguage",        [](Shell& shell, int) { mnuLanguage_Click(shell); } },
    { "mnuAbout",           [](Shell& shell, int) { mnuAbout_Click(shell); } },
    { "mnuCopyCommandLine", [](Shell& shell, int) { mnuCopyCommandLine_Click(shell); } },
    { "TabStrip1",          [](Shell& shell, int) { TabStrip1_Click(shell); } },
    { "TabStrip2",          [](Shell& shell, int) { TabStrip2_Click(shell); } },
    { "vscFile",            [](Shell& shell, int index) { vscFile_Change(shell, index); } },
    { "txtBuffer2",         [](Shell& shell, int) { highlight_digit(shell.form.txtBuffer2); } },
    { "tetDataFlash2",      [](Shell& shell, int) { highlight_digit(shell.form.tetDataFlash2); } },
    { "cheAuto_Increase",   [](Shell& shell, int) { cheAuto_Increase_Click(shell); } },
    { "cheData_Auto_Increase", [](Shell& shell, int) { cheData_Auto_Increase_Click(shell); } },
    { "cheLedger",          [](Shell& shell, int) { cheLedger_Click(shell); } },
    { "comStoreFile",       [](Shell& shell, int) { comStoreFile_Click(shell); } },
    { "comSendUserCode",    [](Shell& shell, int) { comSendUserCode_Click(shell); } },
    { "com_Demo_DownLoad",  [](Shell& shell, int) { com_Demo_DownLoad_Click(shell, false); } },
    { "com_Demo_Re_DownLoad", [](Shell& shell, int) { com_Demo_DownLoad_Click(shell, true); } },
    { "com_Demo_Stop",      [](Shell& shell, int) { comStop_Download_Click(shell); } },
    { "comTJXZ",            [](Shell& shell, int) { comTJXZ_Click(shell); } },
    { "Read24C512",         [](Shell& shell, int) { Read24C512_Click(shell); } },
    { "mnuProduction",      [](Shell& shell, int) { show_production_controls(shell); } },
    { "comOpenCOM",         [](Shell& shell, int) { comOpenCOM_Click(shell); } },
    { "imgNotOpen",         [](Shell& shell, int) { terminal_open(shell); } },
    { "imgOpen",            [](Shell& shell, int) { terminal_close(shell); } },
    { "com_Debug_COM",      [](Shell& shell, int) { terminal_line_Change(shell); } },
    { "com_Debug_Baud",     [](Shell& shell, int) { terminal_line_Change(shell); } },
    { "com_Debug_DataBits", [](Shell& shell, int) { terminal_line_Change(shell); } },
    { "com_Debug_ParityCheck", [](Shell& shell, int) { terminal_line_Change(shell); } },
    { "com_Debug_StopBits", [](Shell& shell, int) { terminal_line_Change(shell); } },
    { "combDebugCodePage",  [](Shell& shell, int) { combDebugCodePage_Click(shell); } },
    { "comDebugLog",        [](Shell& shell, int) { comDebugLog_Click(shell); } },
    { "che_DebugDTR",       [](Shell& shell, int) { set_control_lines(shell); } },
    { "che_DebugRTS",       [](Shell& shell, int) { set_control_lines(shell); } },
    { "comDebugFind",       [](Shell& shell, int) { comDebugFind_Click(shell); } },
    { "comDebugClear",      [](Shell& shell, int index) { comDebugClear_Click(shell, index); } },
    { "comComp",            [](Shell& shell, int) { comComp_Click(shell); } },
    { "comDebugSend",       [](Shell& shell, int) { comDebugSend_Click(shell); } },
    { "comAutoSend",        [](Shell& shell, int) { comAutoSend_Click(shell); } },
    { "comSpreadSendCom",   [](Shell& shell, int index) { comSpreadSendCom_Click(shell, index); } },
    { "comSpreadAutoSend",  [](Shell& shell, int) { comSpreadAutoSend_Click(shell); } },
    { "comDebugContinue",   [](Shell& shell, int) { comDebugContinue_Click(shell); } },
};
// clang-format on

void run_event(Shell& shell, const Control& control)
{
    arm_save_after(shell, control);
    for (const EventRow& row : events) {
        if (row.control == control.name)
            return row.event(shell, control.index);
    }
}

} // namespace

Touch click(Shell& shell, Control& control)
{
    if (auto* box = dynamic_cast<CheckBox*>(&control))
        return set_checked(shell, *box, !box->value());
    if (auto* button = dynamic_cast<OptionButton*>(&control))
        return choose_option(shell, *button);
    const Touch touch = may_touch(shell, control);
    if (touch == Touch::taken)
        run_event(shell, control);
    return touch;
}

Touch type_text(Shell& shell, Control& control, std::string_view text)
{
    const Touch touch = may_touch(shell, control);
    if (touch != Touch::taken)
        return touch;
    if (auto* box = dynamic_cast<TextBox*>(&control)) {
        box->set_text(box->max_length > 0 ? first_characters(text, box->max_length) : text);
        arm_save_after(shell, control);
        take_send_cycles(shell);
    } else if (auto* list = dynamic_cast<ComboBox*>(&control); list != nullptr && list->editable) {
        list->set_text(text);
        run_event(shell, control);
    } else {
        return Touch::impossible;
    }
    return Touch::taken;
}

Touch choose_item(Shell& shell, ComboBox& box, int item)
{
    const Touch touch = may_touch(shell, box);
    if (touch != Touch::taken)
        return touch;
    if (item < 0 || static_cast<std::size_t>(item) >= box.items().size())
        return Touch::impossible;
    box.choose(item);
    run_event(shell, box);
    return Touch::taken;
}

Touch set_checked(Shell& shell, CheckBox& box, bool value)
{
    const Touch touch = may_touch(shell, box);
    if (touch != Touch::taken)
        return touch;
    box.set_value(value);
    run_event(shell, box);
    return Touch::taken;
}

Touch choose_option(Shell& shell, OptionButton& button)
{
    const Touch touch = may_touch(shell, button);
    if (touch != Touch::taken)
        return touch;
    button.set_value(true);
    run_event(shell, button);
    return Touch::taken;
}

Touch choose_tab(Shell& shell, TabStrip& strip, int tab)
{
    const Touch touch = may_touch(shell, strip);
    if (touch != Touch::taken)
        return touch;
    if (tab < 0 || static_cast<std::size_t>(tab) >= strip.tabs().size())
        return Touch::impossible;
    strip.select(tab);
    run_event(shell, strip);
    return Touch::taken;
}

Touch choose_node(Shell& shell, Tree& tree, std::string_view key)
{
    const Touch touch = may_touch(shell, tree);
    if (touch != Touch::taken)
        return touch;
    if (tree.find(key) == nullptr)
        return Touch::impossible;
    TreeViewDevice_NodeClick(shell, key);
    return Touch::taken;
}

Touch scroll_to(Shell& shell, ScrollBar& bar, int value)
{
    const Touch touch = may_touch(shell, bar);
    if (touch != Touch::taken)
        return touch;
    bar.set_value(value);
    run_event(shell, bar);
    return Touch::taken;
}

Touch press_key(Shell& shell, Control& control, std::string_view key)
{
    const Touch touch = may_press(shell, control, key);
    if (touch != Touch::taken)
        return touch;
    if (&control == &shell.form.TreeViewDevice && key == "Esc")
        close_device_tree(shell);
    if (&control == &shell.form.txtBuffer2)
        press_edit_key(shell, shell.code_buffer, key);
    if (&control == &shell.form.tetDataFlash2)
        press_edit_key(shell, shell.data_buffer, key);
    if (&control == &shell.form.texReceive)
        send_key(shell, key);
    if (&control == &shell.form.texDebugFind && key == "Enter")
        comDebugFind_Click(shell);
    if (control.name == "texDumpAddress" && key == "Enter")
        go_to_address(shell, static_cast<BufferKind>(control.index));
    if (control.name == "texDumpFind" && key == "Enter")
        find_in_dump(shell, static_cast<BufferKind>(control.index));
    arm_save_after(shell, control);
    return Touch::taken;
}

Touch put_caret(Shell& shell, TextBox& box, int position, int length)
{
    const Touch touch = may_touch(shell, box);
    if (touch != Touch::taken)
        return touch;
    box.select(position, length);
    if (length == 0 && (&box == &shell.form.txtBuffer2 || &box == &shell.form.tetDataFlash2))
        run_event(shell, box);
    return Touch::taken;
}

void Timer12_Timer(Shell& shell)
{
    if (!watch_code_file(shell))
        return;
    if (shell.form.cekReloadFileWhileFileChange1.value())
        comSendUserCode_Click(shell);
    else
        comDownload_Click(shell, 0);
}

} // namespace vrk
