#include "fuzz/load_bench.h"

#include "catalog/isp_start.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "image/download_plan.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/open_file.h"
#include "shell/screen_report.h"

#include <unistd.h>

#include <fstream>

namespace fuzz {

namespace {

// One of each way in which code, data and boot loader share the flash.
// clang-format off
constexpr const char* models[16] = {
    "Alder-64",   // no data flash, nothing above the code
    "Aspen-63",   // code up to the boot area
    "Birch-4",    // data flash up to the boot area
    "Birch-20",   // and a wide boot area above it
    "Cedar-0.5",  // flat, a gap between code and data
    "Elm-1L",     // flat, no gap
    "Fir-1",      // an EEPROM buffer of its own
    "Fir-28",     // and the largest of its family, without one
    "Hazel-6",    // the boot area lies in the tabulated code
    "Juniper-8Q", // EEPROM buffer up to 60 KB
    "Juniper-I8", // user code may rewrite the flash
    "Oak-I8",     // and no data flash at all
    "Pine-61",    // calibrated oscillator, code up to the boot area
    "Rowan-4",    // calibrated oscillator, data flash
    "Poplar-I1",  // rewrites its flash and has an EEPROM buffer
    "",           // none selected
};
// clang-format on

const vrk::McuTable& catalogue()
{
    static const vrk::McuTable table = [] {
        vrk::McuTable filled;
        vrk::load_mcu_tables(filled, false);
        return filled;
    }();
    return table;
}

void select_model(vrk::Shell& shell, const char* name)
{
    const auto found = vrk::locate_mcu_by_name(catalogue(), name);
    shell.selected = found ? vrk::read_mcu_row(catalogue(), found->series, found->row) : vrk::McuRecord{};
    vrk::NamedControls{shell.controls}
        .label("LabISP_reange", 1)
        .set_caption(vrk::four_hex_digits(vrk::derive_isp_start(shell.selected).shown_last));
}

// In memory where the system has such a place.
std::filesystem::path own_folder()
{
    std::error_code fault;
    const std::filesystem::path in_memory = "/dev/shm";
    const bool usable = std::filesystem::is_directory(in_memory, fault) && ::access(in_memory.c_str(), W_OK) == 0;
    const auto parent = usable ? in_memory : std::filesystem::temp_directory_path(fault);
    return parent / ("vrk_fuzz_" + std::to_string(::getpid()));
}

// Draws the dump at both ends of its scroll bar and somewhere between.
void look_at_dump(vrk::Shell& shell, int index)
{
    vrk::ScrollBar& bar = vrk::NamedControls{shell.controls}.scroll_bar("vscFile", index);
    for (const int value : {bar.min(), bar.max(), bar.min() + (bar.max() - bar.min()) / 2}) {
        bar.set_value(value);
        vrk::vscFile_Change(shell, index);
    }
}

// For every stepping of the boot loader that has rules of its own, with the option bytes in either order.
void plan_downloads(const vrk::Shell& shell)
{
    for (const char* letter : {"A", "C", "D", "E", "I"}) {
        for (const double version : {4.9, 6.3}) {
            vrk::build_download_plan(shell.code_buffer.view_high, shell.selected, letter, version, 0);
            vrk::build_download_plan(shell.code_buffer.view_high, shell.selected, letter, version, 5);
        }
    }
}

} // namespace

vrk::Reply LoadBench::Hands::show(const vrk::MessageBox& box)
{
    const bool first = answered == 0;
    const bool yes = (answers >> (answered % 4) & 1) != 0;
    ++answered;
    if (first && act)
        act();
    if (box.buttons == vrk::Buttons::ok)
        return vrk::Reply::ok;
    if (box.buttons == vrk::Buttons::ok_cancel)
        return yes ? vrk::Reply::ok : vrk::Reply::cancel;
    return yes ? vrk::Reply::yes : vrk::Reply::no;
}

LoadBench::LoadBench(Input& input, const char* named, const char* unnamed)
    : shell_({loop_, ports_, dialogs_, settings_})
    , folder_(own_folder())
{
    const std::uint8_t what = take_byte(input);
    const std::uint8_t hands = take_byte(input);
    const std::uint32_t high = take_byte(input);
    const std::uint32_t middle = take_byte(input);
    const std::uint32_t start = high << 16 | middle << 8 | take_byte(input);

    buffer_ = (what & 0x10) != 0 ? &shell_.data_buffer : &shell_.code_buffer;
    shell_.language_is_english = (what & 0x20) != 0;
    const vrk::BufferControls controls = vrk::controls_of(shell_, buffer_->kind);
    controls.clear_first.set_value((what & 0x40) != 0);
    controls.start.set_text(vrk::hex_text(start));
    dialogs_.answers = hands & 0x0F;
    dialogs_.meanwhile = static_cast<Meanwhile>(hands >> 4 & 3);
    dialogs_.act = [this] { act_meanwhile(); };

    select_model(shell_, models[what & 0x0F]);
    vrk::clear_buffer(shell_, 0, shell_.code_buffer);
    vrk::clear_buffer(shell_, 0, shell_.data_buffer);
    if ((what & 0x80) != 0) {
        shell_.file_loaded = true;
        buffer_->data[0x20] = 0x5A;
        fresh_ = false;
    }

    std::error_code fault;
    std::filesystem::create_directories(folder_, fault);
    path_ = (folder_ / ((hands & 0x40) != 0 ? unnamed : named)).string();
}

LoadBench::~LoadBench()
{
    std::error_code fault;
    std::filesystem::remove_all(folder_, fault);
}

void LoadBench::act_meanwhile()
{
    switch (dialogs_.meanwhile) {
    case Meanwhile::nothing:
        return;
    case Meanwhile::buffer_cleared:
        return vrk::clear_buffer(shell_, 0, *buffer_);
    case Meanwhile::loaded_anew:
        vrk::load_file(shell_, path_, *buffer_);
        return;
    case Meanwhile::other_model:
        return select_model(shell_, "Maple-1S");
    }
}

bool LoadBench::load(Input file)
{
    std::ofstream{path_, std::ios::binary | std::ios::trunc}.write(
        reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
    dialogs_.answered = 0;
    const bool loaded = vrk::load_file(shell_, path_, *buffer_);
    look_at_dump(shell_, 0);
    look_at_dump(shell_, 1);
    plan_downloads(shell_);
    return loaded;
}

vrk::Loaded LoadBench::load_on_values()
{
    dialogs_.answered = 0;
    vrk::ScreenReport boxes{shell_};
    vrk::FileBuffer empty{buffer_->kind};
    empty.start = buffer_->start;
    const std::int32_t shown_ap_last = vrk::hex_address_4(form_.label("LabISP_reange", 1).caption());
    vrk::ImageFile file = vrk::open_image_file(path_, empty.data.size());
    return vrk::load_image(empty, file, {shell_.selected, shown_ap_last, false}, boxes, [] { return true; });
}

std::string LoadBench::complaint(bool loaded) const
{
    constexpr std::size_t most_boxes = 24; // 3 wrong checksums, a question, 3 findings; twice where loaded anew
    const auto last = static_cast<std::int32_t>(buffer_->data.size()) - 1;
    if (shell_.code_buffer.last() != vrk::FileBuffer::code_last ||
        shell_.data_buffer.last() != vrk::FileBuffer::data_last)
        return "a buffer has changed its size";
    if (loaded && !buffer_->loaded)
        return "the load says done, and the buffer is not loaded";
    if (loaded && (buffer_->high < -1 || buffer_->high > last))
        return "high lies outside the buffer: " + vrk::hex_text(buffer_->high);
    if (dialogs_.answered > most_boxes)
        return "one load showed " + std::to_string(dialogs_.answered) + " boxes";
    return {};
}

} // namespace fuzz
