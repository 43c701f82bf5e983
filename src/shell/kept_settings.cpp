#include "shell/kept_settings.h"

#include "shell/messages.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

// clang-format off
struct FaultText { SettingsFault::Kind kind; Text text; };
constexpr FaultText fault_texts[] = {
//    kind                            Chinese, English
    { SettingsFault::Kind::held,       { "另一个程序正在使用这些设置，本程序的设置不会保存，不能使用自动增量。",
                                      "Another program uses these settings. Those of this one are not stored, and automatic increment can not be used." } },
    { SettingsFault::Kind::no_file,    { "设置的路径不是文件，设置不会保存，不能使用自动增量。",
                                      "The path of the settings is no file. Settings are not stored, and automatic increment can not be used." } },
    { SettingsFault::Kind::unreadable, { "设置文件无法读取，设置不会保存，不能使用自动增量。",
                                      "The settings file can not be read. Settings are not stored, and automatic increment can not be used." } },
    { SettingsFault::Kind::unwritable, { "设置无法保存，不能使用自动增量。",
                                      "The settings can not be stored, and automatic increment can not be used." } },
};
// clang-format on

} // namespace

bool keep_settings(Shell& shell)
{
    const auto fault = shell.platform.settings.write_through();
    if (!fault) {
        shell.settings_fault.reset();
        shell.settings_fault_told = false;
        return true;
    }
    shell.settings_fault = fault;
    if (!shell.running)
        tell_settings_fault(shell);
    return false;
}

void tell_settings_fault(Shell& shell)
{
    if (!shell.settings_fault || shell.settings_fault_told)
        return;
    shell.settings_fault_told = true; // before the box: under it a timer may save again
    show_box(shell, settings_fault_text(*shell.settings_fault).in(shell.language_is_english), {}, BoxIcon::error);
}

Line settings_fault_text(const SettingsFault& fault)
{
    const auto* row = std::find_if(std::begin(fault_texts), std::end(fault_texts) - 1,
        [&fault](const FaultText& one) { return one.kind == fault.kind; });
    const std::string reason = fault.reason.empty() ? "" : "\n" + fault.reason;
    return Line{row->text} + ("\n" + fault.path + reason);
}

} // namespace vrk
