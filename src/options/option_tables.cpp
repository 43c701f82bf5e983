#include "options/option_tables.h"

#include "options/option_pages.h"

#include <string>

namespace vrk {

namespace {

using enum OptionColumn;

// Columns 7 to 12: visible, then enabled or spare by panel mode.
constexpr std::string_view always = "111111";
constexpr std::string_view while_idle = "111010"; // can be changed while nothing runs and nothing is locked
constexpr std::string_view parked = "000000";

constexpr std::string_view parked_left = "90000";
constexpr std::string_view lefts_of_buttons[] = {"2900", "4150", "4900"};
constexpr std::string_view left_of_box = "4500";

// One row in the order of the columns that differ.
struct Row {
    std::string_view key;
    std::string_view control;
    std::string_view type;
    std::string_view index;
    std::string_view property;
    std::string_view value;
    std::string_view states;
    std::string_view left;
    std::string_view report = {};
    std::string_view bit_code = {};
};

class PageWriter {
public:
    PageWriter(OptionTable& table, int page, bool english)
        : table_(table)
        , page_(page)
        , english_(english)
    {
    }

    void add(const Row& row)
    {
        set(key, row.key);
        set(control, row.control);
        set(control_type, row.type);
        set(index, row.index);
        set(property, row.property);
        set(value, row.value);
        for (int i = 0; i < 6; ++i)
            table_.set_cell(
                page_, row_, static_cast<int>(visible) + i, row.states.substr(static_cast<std::size_t>(i), 1));
        set(left, row.left);
        set(report, row.report);
        set(bit_code, row.bit_code);
        ++row_;
    }

    void add(const Strip& strip)
    {
        const std::string number = std::to_string(strip.index);
        if (strip.pair != nullptr)
            add({strip.pair->label_key, "LabOption", "Label", number, "Caption", text(strip.pair->label), always, "0"});
        else
            add({strip.note_key.empty() ? "Clew" : strip.note_key, "LabOption", "Label", number, "Caption",
                text(strip.note), always, "0"});
        set_on_last(top, "0");

        const std::string group = "Option" + number;
        if (strip.pair == nullptr) {
            for (const std::string_view button : {"0", "1"}) {
                add({"Clew", group, "OptionButton", button, "Caption", "", parked, parked_left});
                add({"Clew", group, "OptionButton", button, "Value", "", parked, parked_left});
            }
        } else {
            const char other_value = strip.first_value == '0' ? '1' : '0';
            add_choice(group, 0, strip.pair->first, std::string{strip.bit} + strip.first_value, strip.first_is_default);
            add_choice(group, 1, strip.pair->second, std::string{strip.bit} + other_value, !strip.first_is_default);
        }
        if (strip.third != nullptr)
            add_choice(group, 2, *strip.third, std::string{strip.third_code}, false);
        if (strip.box == Box::watchdog_divider)
            add_box("WDT_Prescalar", "0", "256", watchdog_report);
        if (strip.box == Box::rc30k_divider)
            add_box("RC30K_Divder", "1", "32768", rc30k_report);
    }

private:
    static constexpr Text watchdog_report = {"冷启动后内部看门狗预分频数:", "Prescalar value of WatchDog Timer:"};
    static constexpr Text rc30k_report = {
        "启动系统振荡器后等待时钟数(复位和掉电唤醒):", "Wait n clocks after MCU is waked up:"};

    std::string_view text(const Text& both) const { return in_language(english_, both); }
    void set(OptionColumn column, std::string_view cell) { table_.set_cell(page_, row_, column, cell); }
    void set_on_last(OptionColumn column, std::string_view cell) { table_.set_cell(page_, row_ - 1, column, cell); }

    void add_choice(
        const std::string& group, std::size_t button, const Choice& choice, const std::string& code, bool chosen)
    {
        const std::string number = std::to_string(button);
        const std::string_view at = lefts_of_buttons[button];
        add({choice.clew_key, group, "OptionButton", number, "Caption", text(choice.caption), always, at,
            text(choice.report)});
        add({choice.key, group, "OptionButton", number, "Value", chosen ? "1" : "0", while_idle, at,
            text(choice.report), code});
    }
    void add_box(std::string_view its_key, std::string_view number, std::string_view divider, const Text& its_report)
    {
        add({its_key, "comWDT_Prescalar", "ComboBox", number, "Text", divider, while_idle, left_of_box,
            text(its_report)});
    }

    OptionTable& table_;
    int page_;
    bool english_;
    int row_ = 0;
};

// clang-format off
constexpr Row project_fields[] = {
//    key                      control                  type            index  property   value           states      left
    { "MCU_Type",              "txtDevice",             "TextBox",      "",    "Text",    "",             while_idle, "" },
    { "File_Name",             "Frame7",                "Frame",        "",    "Caption", "File Buffer:", always,     "" },
    { "File_Check_Sum",        "txtFileCheckSum",       "TextBox",      "",    "Text",    "",             while_idle, "" },
    { "Dtat_File_Name",        "frmDataFlash",          "Frame",        "",    "Caption", "Data File:",   always,     "" },
    { "Dtat_File_CheckSum",    "txtDataFileCheckSum",   "TextBox",      "",    "Text",    "",             while_idle, "" },
    { "Auto_Increase_Enable",  "cheAuto_Increase",      "CheckBox",     "",    "Value",   "",             while_idle, "" },
    { "Auto_Increase_Address", "texAuto_Increase",      "TextBox",      "0",   "Text",    "",             while_idle, "" },
    { "Auto_Increase_Bytes",   "texAuto_Increase",      "TextBox",      "1",   "Text",    "",             while_idle, "" },
    { "Auto_Increase_Next",    "texAuto_Increase",      "TextBox",      "2",   "Text",    "",             while_idle, "" },
    { "Auto_Increase",         "texAuto_Increase",      "TextBox",      "3",   "Text",    "",             while_idle, "" },
    { "Auto_Increase_HEX",     "optAuto_Increase",      "OptionButton", "0",   "Value",   "",             while_idle, "" },
    { "Auto_Increase_BCD",     "optAuto_Increase",      "OptionButton", "1",   "Value",   "",             while_idle, "" },
    { "Auto_Increase_ASCII",   "optAuto_Increase",      "OptionButton", "2",   "Value",   "",             while_idle, "" },
    { "Data_Increase_Enable",  "cheData_Auto_Increase", "CheckBox",     "",    "Value",   "",             while_idle, "" },
    { "Data_Increase_Address", "texData_Auto_Increase", "TextBox",      "0",   "Text",    "",             while_idle, "" },
    { "Data_Increase_Bytes",   "texData_Auto_Increase", "TextBox",      "1",   "Text",    "",             while_idle, "" },
    { "Data_Increase_Next",    "texData_Auto_Increase", "TextBox",      "2",   "Text",    "",             while_idle, "" },
    { "Data_Increase",         "texData_Auto_Increase", "TextBox",      "3",   "Text",    "",             while_idle, "" },
    { "Data_Increase_HEX",     "optData_Auto_Increase", "OptionButton", "0",   "Value",   "",             while_idle, "" },
    { "Data_Increase_BCD",     "optData_Auto_Increase", "OptionButton", "1",   "Value",   "",             while_idle, "" },
    { "Data_Increase_ASCII",   "optData_Auto_Increase", "OptionButton", "2",   "Value",   "",             while_idle, "" },
};
// clang-format on

} // namespace

void load_option_tables(OptionTable& table, bool english)
{
    table = OptionTable{};
    for (const Page& page : option_pages(english)) {
        PageWriter writer(table, page.number, english);
        for (const Strip& strip : strips_of(page))
            writer.add(strip);
    }
    PageWriter writer(table, option_page::project_fields, english);
    for (const Row& row : project_fields)
        writer.add(row);
}

void load_teak_table(OptionTable& table, bool english)
{
    PageWriter writer(table, option_page::juniper, english);
    for (const Strip& strip : teak_strips())
        writer.add(strip);
}

} // namespace vrk
