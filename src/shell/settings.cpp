#include "shell/settings.h"

#include "form/main_form.h"

#include "catalog/families.h"
#include "platform/text_number.h"
#include "shell/device.h"
#include "shell/kept_settings.h"
#include "shell/ports.h"
#include "shell/settings_table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

namespace vrk {

namespace {

constexpr const char* section = "Settings";

std::string get(Shell& shell, std::string_view key, std::string_view fallback)
{
    return shell.platform.settings.get(section, std::string{key}, std::string{fallback});
}

void set(Shell& shell, std::string_view key, const std::string& value)
{
    shell.platform.settings.set(section, std::string{key}, value);
}

// Numbers. Far more than any list or screen has, and still a number that every type here can hold.
constexpr double largest = 1e9;

double number_of(std::string_view text) { return std::clamp(number_in(text), -largest, largest); }
int whole_number_of(std::string_view text) { return static_cast<int>(round_half_even(number_of(text))); }

bool is_on(std::string_view text) { return upper_case(trimmed(text)) == "TRUE" || number_in(text) != 0; }
const char* on_text(bool on) { return on ? "True" : "False"; }

// Seven digits: what a 32-bit number is sure of.
std::string place_text(float value)
{
    std::array<char, 32> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.7g", static_cast<double>(value));
    return {text.data(), static_cast<std::size_t>(size)};
}

// One control of a row, or each of its array.
struct Setting {
    std::string key;
    const SettingRow& row;
    Control* control; // of an array of buttons the first
};

template <typename Act> void for_each_setting(const Shell& shell, Act act)
{
    for (const SettingRow& row : setting_rows()) {
        if (row.index == SettingRow::each) {
            for (int i = 0; Control* control = shell.controls.find(row.control, i); ++i)
                act(Setting{std::string{row.key} + "_" + std::to_string(i), row, control});
        } else {
            const int index = row.holds == Holds::choice ? 0 : row.index;
            if (Control* control = shell.controls.find(row.control, index))
                act(Setting{std::string{row.key}, row, control});
        }
    }
}

// The control of a row; which type it has follows from what the row holds.
template <typename Type> Type& as(const Setting& setting) { return dynamic_cast<Type&>(*setting.control); }

int chosen_of(const std::vector<OptionButton*>& group)
{
    const auto chosen = std::find_if(group.begin(), group.end(), [](const OptionButton* one) { return one->value(); });
    return chosen == group.end() ? 0 : static_cast<int>(chosen - group.begin());
}

bool is_in(int place, std::size_t count) { return place >= 0 && static_cast<std::size_t>(place) < count; }

// A list that cannot be typed into takes only what it has.
void choose_text(ComboBox& list, const std::string& text)
{
    const auto& items = list.items();
    if (list.editable || std::find(items.begin(), items.end(), text) != items.end())
        list.set_text(text);
    else
        list.choose(0);
}

// How each kind of row is written and read.
struct Keeper {
    Holds holds;
    std::string (*value)(const Setting& setting);
    void (*take)(const Setting& setting, const std::string& value);
};

// clang-format off
constexpr Keeper keepers[] = {
    { Holds::text,
      [](const Setting& s) { return as<TextBox>(s).text(); },
      [](const Setting& s, const std::string& value) { as<TextBox>(s).set_text(value); } },
    { Holds::count,
      [](const Setting& s) { return as<TextBox>(s).text(); },
      [](const Setting& s, const std::string& value) { as<TextBox>(s).set_text(std::to_string(whole_number_of(value))); } },
    { Holds::item,
      [](const Setting& s) { return as<ComboBox>(s).text(); },
      [](const Setting& s, const std::string& value) { choose_text(as<ComboBox>(s), value); } },
    { Holds::place,
      [](const Setting& s) { return std::to_string(as<ComboBox>(s).index_chosen()); },
      [](const Setting& s, const std::string& value) {
          const int place = whole_number_of(value);
          as<ComboBox>(s).choose(is_in(place, as<ComboBox>(s).items().size()) ? place : 0);
      } },
    { Holds::check,
      [](const Setting& s) { return std::string{as<CheckBox>(s).value() ? "1" : "0"}; },
      [](const Setting& s, const std::string& value) { as<CheckBox>(s).set_value(is_on(value)); } },
    { Holds::button, // a False leaves the choice to the other buttons, so that one is always chosen
      [](const Setting& s) { return std::string{on_text(as<OptionButton>(s).value())}; },
      [](const Setting& s, const std::string& value) { if (is_on(value)) as<OptionButton>(s).set_value(true); } },
    { Holds::choice,
      [](const Setting& s) { return std::to_string(chosen_of(as<OptionButton>(s).group)); },
      [](const Setting& s, const std::string& value) {
          const auto& group = as<OptionButton>(s).group;
          const int place = whole_number_of(value);
          group[is_in(place, group.size()) ? static_cast<std::size_t>(place) : 0]->set_value(true);
      } },
};
// clang-format on

const Keeper& keeper_of(const Setting& setting)
{
    return *std::find_if(
        std::begin(keepers), std::end(keepers) - 1, [&](const Keeper& one) { return one.holds == setting.row.holds; });
}

void load_rows(Shell& shell)
{
    for_each_setting(shell, [&shell](const Setting& setting) {
        const char* fallback = setting.row.fallback;
        const Keeper& keeper = keeper_of(setting);
        keeper.take(setting, get(shell, setting.key, fallback != nullptr ? fallback : keeper.value(setting)));
    });
}

void save_rows(Shell& shell)
{
    for_each_setting(
        shell, [&shell](const Setting& setting) { set(shell, setting.key, keeper_of(setting).value(setting)); });
}

// The model. Where no model's node is selected, the oldest family stands in for it. A look at the tool in the other
// language does not cost a user the model chosen in the first.
void save_device(Shell& shell)
{
    if (shell.model_stands_in)
        return;
    constexpr int birch = 2;
    constexpr int name_column = 9;
    std::string key = shell.form.TreeViewDevice.selected_key();
    if (key.empty() || key.starts_with("Family"))
        key = shell.mcu_table.cell(birch, 0, name_column);
    set(shell, "DeviceProducts", key);
}

// Written for whoever looks into the store, and not read: where the panel starts is a matter of the model.
void save_for_the_record(Shell& shell)
{
    const int first_three = (shell.form.Option0[0].value() ? 4 : 0) + (shell.form.Option1[0].value() ? 2 : 0) +
        (shell.form.Option2[0].value() ? 1 : 0);
    set(shell, "安全锁", std::to_string(first_three));
    set(shell, "fillbyte", "00");
}

void load_beep(Shell& shell)
{
    OptionButton& chosen = is_on(get(shell, "BeepYesNo", "True")) ? shell.form.optBeepYes : shell.form.optBeepNo;
    chosen.set_value(true);
}
void save_beep(Shell& shell) { set(shell, "BeepYesNo", on_text(shell.form.optBeepYes.value())); }

// Places in the list change with what is plugged in: the path wins over the place that its row has chosen.
constexpr const char* port_key = "COM_port_path";

// One that a hand had named is named again while it is there; a bare number of a pseudo terminal is anybody's by then.
bool is_named_device(const std::string& path)
{
    std::error_code fault;
    return !path.starts_with("/dev/pts/") && std::filesystem::is_character_file(path, fault);
}

void load_port(Shell& shell)
{
    const std::string path = get(shell, port_key, chosen_port(shell));
    if (is_named_device(path))
        add_port(shell, path);
    else
        choose_port(shell, path);
}
void save_port(Shell& shell) { set(shell, port_key, chosen_port(shell)); }

struct PlaceKey {
    const char* key;
    float WindowPlace::*field;
};
constexpr PlaceKey place_keys[] = {
    {"MainLeft", &WindowPlace::left},
    {"MainTop", &WindowPlace::top},
    {"MainWidth", &WindowPlace::width},
    {"MainHeight", &WindowPlace::height},
};
constexpr const char* splitter_key = "Frame24_Width";

float stored_place(Shell& shell, const char* key, float otherwise)
{
    return static_cast<float>(number_of(get(shell, key, place_text(otherwise))));
}

// The right half has what the window is wider than standard.
void load_window(Shell& shell)
{
    constexpr WindowPlace standard;
    for (const PlaceKey& row : place_keys)
        shell.form.window.*row.field = stored_place(shell, row.key, standard.*row.field);
    shell.form.window.debug_width = standard.debug_width + shell.form.window.width - standard.width;
    shell.form.window.frame24_width =
        splitter_held(stored_place(shell, splitter_key, standard.frame24_width), shell.form.window);
}

void set_window(Shell& shell)
{
    for (const PlaceKey& row : place_keys)
        set(shell, row.key, place_text(shell.form.window.*row.field));
    set(shell, splitter_key, place_text(shell.form.window.frame24_width));
}

bool is_option_button(std::string_view name)
{
    constexpr std::string_view word = "Option";
    return name.size() > word.size() && name.starts_with(word) && name[word.size()] >= '0' && name[word.size()] <= '9';
}

bool arms_save(std::string_view control)
{
    constexpr std::string_view others[] = {
        "optBeepYes", "optBeepNo", "txt_DEMO_UserCode", "txt_length", "txt_Start_Address", "optFillbyte"};
    const auto rows = setting_rows();
    return is_option_button(control) || std::find(std::begin(others), std::end(others), control) != std::end(others) ||
        std::any_of(rows.begin(), rows.end(), [&](const SettingRow& row) { return row.control == control; });
}

} // namespace

void load_settings(Shell& shell)
{
    restore_device(shell);
    load_rows(shell);
    load_port(shell);
    load_beep(shell);
    load_window(shell);
}

void save_settings(Shell& shell)
{
    save_device(shell);
    save_for_the_record(shell);
    save_rows(shell);
    save_port(shell);
    save_beep(shell);
    set_window(shell);
    keep_settings(shell);
}

void save_window(Shell& shell)
{
    set_window(shell);
    keep_settings(shell);
}

void arm_save_after(Shell& shell, const Control& control)
{
    if (arms_save(control.name))
        arm_save(shell);
}

} // namespace vrk
