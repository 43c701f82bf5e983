#include "shell/tabs.h"

#include "form/main_form.h"

#include "catalog/attributes.h"
#include "shell/messages.h"

namespace vrk {

namespace {

struct Page {
    std::string_view key;
    Text caption;
    Frame MainForm::*frame;
};

// clang-format off
constexpr Page left_pages[] = {
    { "options",         { "选项", "Options" },                     &MainForm::Frame12 },
    { "CheckMCUoption",  { "检测 MCU 选项", "Check MCU Options" },   &MainForm::Frame4 },
    { "AUTO_INCREASE",   { "自动增量", "Auto Increase" },              &MainForm::fraAuto_Increase },
    { "store_buffer",    { "保存缓冲区", "Save Buffer" },              &MainForm::Frame9 },
};
constexpr Page right_pages[] = {
    { "tab_file",        { "程序文件", "File Buffer" },             &MainForm::Frame7 },
    { "EEPROM_File",     { "EEPROM 文件", "EEPROM File Buffer" },   &MainForm::frmDataFlash },
    { "Debug_COM",       { "串口助手", "COM Tool" },                &MainForm::fraDebug },
    { "Debug1",          { "Debug_SFR", "Debug_SFR" },              &MainForm::Frame21 },
    { "Debug2",          { "Debug_xdata", "Debug_xdata" },          &MainForm::Frame22 },
    { "Batch_quantity",  { "工程文件", "Project" },                 &MainForm::fra_Batch_quantity },
};
// clang-format on

bool is_monitor_page(const Page& page) { return page.key == "Debug1" || page.key == "Debug2"; }

void fill(const Shell& shell, TabStrip& strip, std::span<const Page> pages)
{
    std::vector<TabStrip::Tab> tabs;
    for (const Page& page : pages)
        tabs.push_back({std::string{page.key}, std::string{in_language(shell, page.caption)}});
    strip.set_tabs(std::move(tabs));
}

// A tab that is hidden cannot stay selected: the first takes its place.
void show_selected(Shell& shell, TabStrip& strip, std::span<const Page> pages)
{
    const auto selected = static_cast<std::size_t>(strip.selected());
    if (strip.tabs()[selected].caption == TabStrip::hidden_caption)
        strip.select(0);
    for (const Page& page : pages)
        (shell.form.*page.frame).set_visible(page.key == strip.selected_key());
}

} // namespace

void set_up_tabs(Shell& shell)
{
    fill(shell, shell.form.TabStrip1, left_pages);
    fill(shell, shell.form.TabStrip2, right_pages);
}

void show_tabs_of_model(Shell& shell)
{
    for (const Page& page : right_pages) {
        const bool hidden = (page.key == "EEPROM_File" && !has_eeprom_buffer(shell.selected)) ||
            (is_monitor_page(page) && (shell.selected.series < 1 || shell.selected.series > 18));
        shell.form.TabStrip2.set_caption(
            page.key, hidden ? TabStrip::hidden_caption : in_language(shell, page.caption));
    }
    TabStrip1_Click(shell);
    TabStrip2_Click(shell);
}

void TabStrip1_Click(Shell& shell) { show_selected(shell, shell.form.TabStrip1, left_pages); }

void TabStrip2_Click(Shell& shell) { show_selected(shell, shell.form.TabStrip2, right_pages); }

} // namespace vrk
