#include "shell/gate.h"

#include "shell/buffer_edit.h"

#include <algorithm>

namespace vrk {

namespace {

// clang-format off
constexpr std::string_view free_while_running[] = {
    "comStop_Download", "com_Demo_Stop",
    // to look at
    "TabStrip1", "TabStrip2", "vscFile", "txtBuffer", "txtBuffer2", "txtDataFlash1", "tetDataFlash2", "textMsg",
    "texDumpAddress", "texDumpFind", "mnuLog",
    // looked at when the next press comes
    "cekReloadFile", "cekReloadFileWhileFileChange", "cekReloadFileWhileFileChange1",
    // the terminal's own
    "com_Debug_COM", "com_Debug_Baud", "com_Debug_DataBits", "com_Debug_ParityCheck", "com_Debug_StopBits",
    "che_AutoOpenPort", "texSend", "optHexSend", "texSendCycle", "texSpreadSend", "cheSpreadHex", "texSpreadSendCycle",
    "texReceive", "optReceiveHex", "combDebugCodePage", "comDebugClear", "ImgSplitter",
    "che_DebugTime", "texDebugFind", "comDebugFind",
};
constexpr std::string_view dumps[] = { "txtBuffer2", "tetDataFlash2" };
// clang-format on

bool is_one_of(std::span<const std::string_view> names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

// Labels and frames hold nothing; a click on one may close the tree.
bool holds_nothing(const Control& control)
{
    return control.kind == ControlKind::Label || control.kind == ControlKind::Frame;
}

} // namespace

Touch may_touch(const Shell& shell, const Control& control)
{
    if (shell.running && !holds_nothing(control) && !is_one_of(free_while_running, control.name))
        return Touch::busy;
    return control.enabled() ? Touch::taken : Touch::disabled;
}

Touch may_press(const Shell& shell, const Control& control, std::string_view key)
{
    if (shell.running && changes_bytes(key) && is_one_of(dumps, control.name))
        return Touch::busy;
    return may_touch(shell, control);
}

} // namespace vrk
