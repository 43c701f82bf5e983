#include "shell/open_path.h"

#include "form/main_form.h"

#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/project.h"
#include "shell/tabs.h"

#include <filesystem>

namespace vrk {

namespace {

const Button& button_for(const Shell& shell, BufferKind kind)
{
    return kind == BufferKind::code ? shell.form.comLoadFile : shell.form.comLoadDataFile;
}

} // namespace

void show_project(Shell& shell, const std::string& path)
{
    shell.form.TabStrip2.select(shell.form.TabStrip2.find("Batch_quantity"));
    TabStrip2_Click(shell);
    open_project(shell, path);
}

void open_if_project(Shell& shell, Chosen chosen)
{
    if (chosen == Chosen::project)
        show_project(shell, shell.loader.current_path);
}

void open_path(Shell& shell, const std::string& path, BufferKind kind)
{
    const std::string caption_before = controls_of(shell, kind).path_frame.caption();
    take_path(shell, kind, path);
    open_if_project(shell, load_chosen(shell, path, buffer_of(shell, kind), caption_before));
}

BufferKind buffer_in_view(const Shell& shell)
{
    return shell.form.TabStrip2.selected_key() == "EEPROM_File" ? BufferKind::data : BufferKind::code;
}

Touch may_drop(const Shell& shell, const std::string& path)
{
    if (shell.dialogs_open > 0)
        return Touch::busy; // what it asks comes first
    const std::string suffix = upper_case(std::filesystem::path{path}.extension().string());
    if (suffix == ".VRK")
        return may_touch(shell, shell.form.comOpenBatchFile);
    if (suffix == ".HEX" || suffix == ".BIN")
        return may_touch(shell, button_for(shell, buffer_in_view(shell)));
    return Touch::impossible;
}

Touch drop_file(Shell& shell, const std::string& path)
{
    const Touch touch = may_drop(shell, path);
    if (touch == Touch::taken)
        open_path(shell, path, buffer_in_view(shell));
    return touch;
}

} // namespace vrk
