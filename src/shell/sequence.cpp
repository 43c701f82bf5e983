#include "shell/sequence.h"

#include "shell/panel_state.h"
#include "shell/ports.h"
#include "shell/screen_report.h"
#include "shell/terminal_page.h"

namespace vrk {

Sequence::Sequence(Shell& shell)
    : shell_(shell)
{
    shell_.running = true;
    shell_.stop_requested = false;
    wait_for_target(shell_);
    terminal_close(shell);
    close_port();
    if (shell_.port_paths.empty()) // the list may have failed; nobody has to plug something in to get another
        refresh_ports(shell_);
}

Sequence::~Sequence()
{
    close_port();
    shell_.running = false;
    settle_verdict(shell_);
    show_panel_state(shell_);
}

void Sequence::close_port()
{
    shell_.port.close();
    show_port_lamp(shell_, false);
}

Talk::Talk(Shell& shell, const McuRecord& model, const LineChoice& line)
    : session(shell.platform.loop, shell.port, shell.mcu_table, model, line)
    , shell_(shell)
{
    session.stop_requested = shell.stop_requested;
    shell_.session = &session;
}

Talk::~Talk()
{
    shell_.last_talk = session;
    shell_.session = nullptr;
}

} // namespace vrk
