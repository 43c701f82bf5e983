#include "shell/tabs.h"

#include "form/main_form.h"

#include "catalog/attributes.h"
#include "shell/messages.h"

#include <algorithm>

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
    { "user_code",       { "自定义下载", "Custom" },         &MainForm::Frame8 },
    { "TJXZ",            { "脱机下载", "Off-Line-ISP" },              &MainForm::Frame18 },
    { "CheckMCUoption",  { "检测 MCU 选项", "Check MCU Options" },   &MainForm::Frame4 },
    { "AUTO_INCREASE",   { "自动增量", "Auto Increase" },              &MainForm::fraAuto_Increase },
    { "ISP_DEMO",        { "ISP DEMO", "ISP DEMO" },                &MainForm::Frame11 },
    { "store_buffer",    { "保存缓冲区", "Save Buffer" },              &MainForm::Frame9 },
    { "Hardware_Help",   { "硬件", "Hardware" },                  &MainForm::fraAboutHardWare },
};
constexpr Page right_pages[] = {
    { "tab_file",        { "程序文件", "File Buffer:" },             &MainForm::Frame7 },
    { "EEPROM_File",     { "EEPROM 文件", "EEPROM File Buffer" },   &MainForm::frmDataFlash },
    { "Debug_COM",       { "串口助手", "COM Tool" },                &MainForm::fraDebug },
    { "Debug1",          { "Debug_SFR", "Debug_SFR" },              &MainForm::Frame21 },
    { "Debug2",          { "Debug_xdata", "Debug_xdata" },          &MainForm::Frame22 },
    { "Batch_quantity",  { "工程文件", "Project" },                 &MainForm::fra_Batch_quantity },
};
// clang-format on

// The tools that not every family has.
bool is_hidden(const Page& page, const McuRecord& model)
{
    constexpr std::string_view of_newer[] = {"TJXZ", "ISP_DEMO", "Debug1", "Debug2"};
    if (page.key == "EEPROM_File")
        return !has_eeprom_buffer(model);
    return std::ranges::find(of_newer, page.key) != std::end(of_newer) && (model.series < 1 || model.series > 18);
}

void fill(const Shell& shell, TabStrip& strip, std::span<const Page> pages)
{
    std::vector<TabStrip::Tab> tabs;
    for (const Page& page : pages)
        tabs.push_back({std::string{page.key}, std::string{in_language(shell, page.caption)}});
    strip.set_tabs(std::move(tabs));
}

void show_captions(const Shell& shell, TabStrip& strip, std::span<const Page> pages)
{
    for (const Page& page : pages) {
        const bool hidden = is_hidden(page, shell.selected);
        strip.set_caption(page.key, hidden ? TabStrip::hidden_caption : in_language(shell, page.caption));
    }
}

// A tab that is hidden cannot stay selected: the first takes its place.
void show_selected(Shell& shell, TabStrip& strip, std::span<const Page> pages)
{
    const auto selected = static_cast<std::size_t>(strip.selected());
    if (strip.tabs()[selected].caption == TabStrip::hidden_caption)
        strip.select(0);
    for (const Page& page : pages)
        (shell.form.*page.frame).set_visible(page.key == strip.selected_key() && !shell.shrunk);
}

} // namespace

void set_up_tabs(Shell& shell)
{
    fill(shell, shell.form.TabStrip1, left_pages);
    fill(shell, shell.form.TabStrip2, right_pages);
}

void show_tabs_of_model(Shell& shell)
{
    show_captions(shell, shell.form.TabStrip1, left_pages);
    show_captions(shell, shell.form.TabStrip2, right_pages);
    TabStrip1_Click(shell);
    TabStrip2_Click(shell);
}

void TabStrip1_Click(Shell& shell) { show_selected(shell, shell.form.TabStrip1, left_pages); }

void TabStrip2_Click(Shell& shell) { show_selected(shell, shell.form.TabStrip2, right_pages); }

} // namespace vrk
