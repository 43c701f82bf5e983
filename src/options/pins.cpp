#include "options/pins.h"

#include "form/arm_save.h"
#include "form/messages.h"

#include <string>
#include <vector>

namespace vrk {

namespace {

// P3.6 is not offered: the chips write to their outer memory with it.
constexpr const char* pins[] = {"P1.0", "P1.1", "P1.2", "P1.3", "P1.4", "P1.5", "P1.6", "P1.7", "P3.0", "P3.1", "P3.2",
    "P3.3", "P3.4", "P3.5", "P3.7"};

constexpr std::string_view clash = "请不要用同一个 I/O 口线控制 485 和 外部看门狗。"; // in both languages

} // namespace

void fill_pin_lists(Shell& shell)
{
    const std::vector<std::string> list{std::begin(pins), std::end(pins)};
    shell.form.comb_485_pin.set_items(list);
    shell.form.comb_External_WDT.set_items(list);
}

void check_pin_clash(Shell& shell)
{
    if (shell.form.comb_485_pin.text() == shell.form.comb_External_WDT.text())
        show_box(shell, clash);
}

void comb_485_pin_Click(Shell& shell)
{
    check_pin_clash(shell);
    arm_save(shell);
}

void comb_External_WDT_Click(Shell& shell) { check_pin_clash(shell); }

void opt_485_pin_Click(Shell& shell)
{
    const bool used = !shell.form.opt_485_pin[0].value();
    shell.form.comb_485_pin.set_enabled(used);
    shell.form.Lab_485_pin.set_enabled(used);
    shell.form.opt_485_logic[0].set_enabled(used);
    shell.form.opt_485_logic[1].set_enabled(used);
}

void opt_External_WDT_Click(Shell& shell) { shell.form.comb_External_WDT.set_enabled(!shell.form.opt_External_WDT[0].value()); }

void opt_485_logic_Click(Shell& shell) { arm_save(shell); }

void opt_ISP_DEMO_WDT_Click(Shell& shell) { shell.form.comb_WDT.set_enabled(shell.form.opt_ISP_DEMO_WDT[1].value()); }

} // namespace vrk
