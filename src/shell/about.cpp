#include "shell/about.h"

#include "form/named_controls.h"

#include "shell/buffer_view.h"
#include "shell/messages.h"
#include "shell/ports.h"

namespace vrk {

namespace {

constexpr Text about_title = {"关于 VRK-ISP", "About VRK-ISP"};
constexpr Text about_text = {"通过串口在系统中下载 8051 兼容单片机的程序。",
    "Programs 8051-compatible microcontrollers in the system, over a serial port."};
constexpr Text version_word = {"版本 ", "Version "};

std::string file_in_title(Shell& shell)
{
    const BufferControls code = controls_of(shell, BufferKind::code);
    std::string path = code.path_frame.caption();
    path.erase(0, code.path_caption.size());
    path.erase(0, path.find_last_of('/') + 1); // where there is none: nothing
    return path + (shell.loader.edited[index_of(BufferKind::code)] ? "*" : "");
}

} // namespace

std::string_view program_version() { return VRK_VERSION; }

std::string window_title(Shell& shell)
{
    std::string title = std::string{program_name} + " V" + std::string{program_version()};
    for (const std::string& part :
        {file_in_title(shell), NamedControls{shell.controls}.text_box("txtDevice").text(), chosen_port(shell)}) {
        if (!part.empty())
            title += " - " + part;
    }
    return title;
}

void mnuAbout_Click(Shell& shell)
{
    const std::string text = std::string{program_name} + "\n" + std::string{in_language(shell, version_word)} +
        std::string{program_version()} + "\n\n" + std::string{in_language(shell, about_text)};
    show_box(shell, text, in_language(shell, about_title), BoxIcon::information);
}

} // namespace vrk
