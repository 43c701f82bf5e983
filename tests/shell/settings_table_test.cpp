// The table itself: every row has its control, and all of it comes back after a restart.
#include "form/main_form.h"
#include "shell/settings_bench.h"

#include "platform/text_number.h"
#include "shell/settings_table.h"

#include <gmock/gmock.h>

#include <map>
#include <set>

using namespace vrk;

namespace {

using Values = std::map<std::pair<std::string, std::string>, std::string>;

// Something else than the default, for every control that is kept.
void change(const SettingRow& row, Control& control)
{
    const int n = std::max(0, control.index);
    if (auto* box = dynamic_cast<TextBox*>(&control))
        box->set_text(row.holds == Holds::count ? "4711" : "changed, \"" + std::to_string(n) + "\" 改了");
    if (auto* list = dynamic_cast<ComboBox*>(&control)) {
        if (list->editable)
            list->set_text("7.3728");
        else
            list->choose(list->index_chosen() == 1 ? 0 : 1);
    }
    if (auto* box = dynamic_cast<CheckBox*>(&control))
        box->set_value(!box->value());
    if (auto* button = dynamic_cast<OptionButton*>(&control); button != nullptr && !button->value())
        button->set_value(true);
}

void change_all(Shell& shell)
{
    for (const SettingRow& row : setting_rows()) {
        const int first = row.index == SettingRow::each || row.holds == Holds::choice ? 0 : row.index;
        Control* control = shell.controls.find(row.control, first);
        ASSERT_NE(control, nullptr) << row.key;
        if (row.index != SettingRow::each) {
            change(row, *control);
            continue;
        }
        for (int i = 0; (control = shell.controls.find(row.control, i)) != nullptr; ++i)
            change(row, *control);
    }
    NamedControls(shell.controls).option("optBeepNo").set_value(true);
    shell.form.window.left = -150;
    shell.form.window.top = 300;
    shell.form.window.width = 18000;
    shell.form.window.height = 12345;
    shell.form.window.frame24_width = 4321;
}

Values save(Program& run)
{
    MemoryStore& store = static_cast<MemoryStore&>(run.shell.platform.settings);
    store.values.clear();
    save_settings(run.shell);
    return store.values;
}

// What stands under the keys of `one` and differs in `two`.
std::string differences(const Values& one, const Values& two)
{
    std::string text;
    for (const auto& [key, value] : one) {
        const auto found = two.find(key);
        if (found == two.end() || found->second != value)
            text += key.second + ": '" + value + "'\n";
    }
    return text;
}

} // namespace

TEST(SettingsTable, NamesEveryKeyOnce)
{
    std::set<std::string_view> keys;
    for (const SettingRow& row : setting_rows())
        EXPECT_TRUE(keys.insert(row.key).second) << row.key;
}

TEST(SettingsTable, FindsItsControlsAndItsDefaultsInTheirLists)
{
    MemoryStore store;
    Program run(store);
    const Values first_start = save(run);
    for (const SettingRow& row : setting_rows()) {
        const std::string key = std::string{row.key} + (row.index == SettingRow::each ? "_0" : "");
        const auto found = first_start.find({"Settings", key});
        ASSERT_NE(found, first_start.end()) << key;
        EXPECT_EQ(found->second, row.fallback != nullptr ? row.fallback : found->second) << key;
    }
}

TEST(SettingsTable, IsWrittenUnderTheseKeys)
{
    MemoryStore store;
    Program run(store);
    std::set<std::string> written;
    for (const auto& [key, value] : save(run)) {
        EXPECT_EQ(key.first, "Settings");
        written.insert(key.second);
    }
    std::set<std::string> wanted{"DeviceProducts", "安全锁", "fillbyte", "COM_port", "COM_port_path", "BaudMin",
        "BeepYesNo", "Dalay_ReDownLoad", "Write_OK_Count", "Write_Bad_Count", "pin_for_485", "pin_address_for_485",
        "logic_of_control_485", "pin_External_WDT", "pin_address_External_WDT", "WDT_Prescalar", "com_RC_frequency_0",
        "com_RC_frequency_1", "com_RC_frequency_2", "com_RC_frequency_3", "com_RC_frequency_4", "com_RC_frequency_5",
        "txt_RC_frequency", "LedgerNumbers", "LedgerRecord", "LedgerOrder", "LedgerStation", "LedgerAddress",
        "MainLeft", "MainTop", "MainWidth", "MainHeight", "Frame24_Width", "DebugCOM", "DebugBaud", "DebugDataBits",
        "DebugParity", "DebugStopBits", "DebugAutoOpenPort", "optHexSend_0", "optHexSend_1", "texSendCycle",
        "texSendText", "texSpreadSendCycle", "UserCodeBaud", "UserCodeParity", "UserCodeDataBits", "UserCodeStopBits",
        "ISP_DEMO_DownLoad_Baud", "ISP_DEMO_DownLoad_Parity", "ISP_DEMO_DownLoad_DataBits",
        "ISP_DEMO_DownLoad_StopBits", "ISP_DEMO_UserCodeBaud", "ISP_DEMO_UserCodeParity", "ISP_DEMO_UserCodeDataBits",
        "ISP_DEMO_UserCodeStopBits"};
    for (int i = 0; i < 25; ++i) {
        wanted.insert("cheSpreadHex_" + std::to_string(i));
        wanted.insert("texSpreadSend_" + std::to_string(i));
    }
    EXPECT_EQ(written, wanted);
}

TEST(SettingsTable, ComesBackKeyByKeyAfterARestart)
{
    MemoryStore store;
    Values first_start;
    Values changed;
    {
        Program run(store);
        first_start = save(run);
        choose_node(run.shell, run.form.tree("TreeViewDevice"), "Maple-4");
        change_all(run.shell);
        changed = save(run);
    }
    Program again(store);
    EXPECT_EQ(differences(changed, save(again)), "");
    EXPECT_EQ(again.form.text_box("txtDevice").text(), "Maple-4");
    // All of it had been changed: nothing comes back by being the default.
    first_start.erase({"Settings", "安全锁"}); // a matter of the model's panel
    Values unchanged;
    for (const auto& [key, value] : changed) {
        if (first_start.contains(key) && first_start[key] == value)
            unchanged[key] = value;
    }
    EXPECT_THAT(differences(unchanged, {}), testing::StrEq("fillbyte: '00'\n"));
}

// The note of the first three options is the one key that is written and not read.
TEST(SettingsTable, LeavesThePanelToTheModel)
{
    MemoryStore store;
    put(store, "安全锁", "7");
    Program run(store);
    const bool on = run.form.option("Option0", 0).value();
    MemoryStore empty;
    Program other(empty);
    EXPECT_EQ(on, other.form.option("Option0", 0).value());
}
