#include "shell/shrink.h"

#include "form/main_form.h"

#include "shell/device.h"
#include "shell/messages.h"
#include "shell/tabs.h"

namespace vrk {

namespace {

constexpr Text shrink_caption = {"收缩主窗体", "Shrink"};
constexpr Text restore_caption = {"恢复主窗体", "Resume"};
constexpr int download_step = 4;

} // namespace

void show_main_window(Shell& shell)
{
    MainForm& form = shell.form;
    form.comMastWindow.set_caption(in_language(shell, shell.shrunk ? restore_caption : shrink_caption));
    for (int step = 0; step < download_step; ++step)
        form.FrameX[step].set_visible(!shell.shrunk);
    form.TabStrip1.set_visible(!shell.shrunk);
    form.TabStrip2.set_visible(!shell.shrunk);
    form.Frame16.set_visible(!shell.shrunk);
    TabStrip1_Click(shell);
    TabStrip2_Click(shell);
}

void comMastWindow_Click(Shell& shell)
{
    close_device_tree(shell);
    shell.shrunk = !shell.shrunk;
    show_main_window(shell);
}

} // namespace vrk
