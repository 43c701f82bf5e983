#include "shell/option_pins.h"

#include "form/main_form.h"

#include "shell/arm_save.h"
#include "shell/messages.h"

namespace vrk {

namespace {

constexpr std::string_view clash = "请不要用同一个 I/O 口线控制 485 和 外部看门狗。"; // in both languages

} // namespace

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

void enable_pin_choices(Shell& shell)
{
    const bool free = shell.job_may_change();
    const bool steered = free && !shell.form.opt_485_pin[0].value();
    shell.form.comb_485_pin.set_enabled(steered);
    shell.form.Lab_485_pin.set_enabled(steered);
    shell.form.opt_485_logic[0].set_enabled(steered);
    shell.form.opt_485_logic[1].set_enabled(steered);
    shell.form.comb_External_WDT.set_enabled(free && !shell.form.opt_External_WDT[0].value());
}

void enable_watchdog_pin(Shell& shell)
{
    shell.form.comb_WDT.set_enabled(shell.job_may_change() && shell.form.opt_ISP_DEMO_WDT[1].value());
}

void opt_485_logic_Click(Shell& shell) { arm_save(shell); }

} // namespace vrk
