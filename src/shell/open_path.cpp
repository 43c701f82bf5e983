#include "shell/open_path.h"

#include "form/main_form.h"

#include "shell/project.h"
#include "shell/tabs.h"

namespace vrk {

void open_if_project(Shell& shell, Chosen chosen)
{
    if (chosen != Chosen::project)
        return;
    shell.form.TabStrip2.select(shell.form.TabStrip2.find("Batch_quantity"));
    TabStrip2_Click(shell);
    open_project(shell, shell.loader.current_path);
}

void open_path(Shell& shell, const std::string& path)
{
    const std::string caption_before = shell.form.Frame7.caption();
    take_path(shell, BufferKind::code, path);
    open_if_project(shell, load_chosen(shell, path, shell.code_buffer, caption_before));
}

} // namespace vrk
