// A project file from its text to the form. What stands before the text:
//   0  model that the text is given a head for, low four bits; language, bit 4: 1 English; bit 5: no head, the text is
//      the whole file
#include "form/named_controls.h"
#include "fuzz/target.h"

#include "image/project_format.h"
#include "options/codec.h"
#include "platform/scripted_dialogs.h"
#include "shell/panel_state.h"
#include "shell/project.h"
#include "shell/row_control.h"
#include "shell/start_up.h"
#include "sim/virtual_loop.h"

#include <algorithm>

namespace fuzz {

namespace {

// One of each page of options, and what stands aside.
// clang-format off
constexpr const char* models[16] = {
    "Alder-64",    // page 0
    "Aspen-63",    // page 1, without rows
    "Birch-4",     // page 2
    "Pine-61",     // page 2, calibrated oscillator
    "Cedar-0.5",   // page 4, small
    "Fir-28",      // page 4
    "Hazel-6",     // page 5
    "Juniper-60Q", // page 6
    "Larch-4V",    // page 7
    "Larch-I14",   // no options to write: the panel cannot be locked
    "Maple-1S",    // page 8
    "Oak-32",      // page 9
    "Poplar-1",    // page 10
    "Holly-4",     // page 10, another series
    "Hazel-1000",  // no model at all
    "",            // and none told
};
// clang-format on

struct NoPorts final : vrk::PortDriver {
    std::vector<vrk::PortInfo> list() override { return {}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
};

// Started once, for its tables; every input finds it with the same job.
struct ProjectBench {
    sim::VirtualLoop loop;
    NoPorts ports;
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell{vrk::Platform{loop, ports, dialogs, settings}};

    ProjectBench() { vrk::start_up(shell); }

    void open(std::string_view text)
    {
        dialogs.shown.clear();
        vrk::take_project(shell, text);
    }
    void begin(bool english)
    {
        shell.language_is_english = english;
        open("VER: 1.2\nMCU_Type: Hazel-1\nAuto_Increase_Enable: 0\nData_Increase_Enable: 0\n"
             "Auto_Increase_Address: FFFF\nAuto_Increase_Bytes: 8\nbuffer_check_sum: 3\nEND\n0102\n");
    }
};

ProjectBench& the_bench()
{
    static ProjectBench bench;
    return bench;
}

std::string reader_complaint(const vrk::Project& project)
{
    if (project.code.bytes.size() > std::size_t{vrk::FileBuffer::code_last} + 1 ||
        project.data.bytes.size() > std::size_t{vrk::FileBuffer::data_last} + 1)
        return "an image is longer than its buffer";
    const vrk::Project again = vrk::parse_project(
        vrk::project_text({project.values, project.code.bytes, std::span<const std::uint8_t>{project.data.bytes}}));
    if (again.code.bytes != project.code.bytes || again.data.bytes != project.data.bytes)
        return "an image that is written again is another one";
    return {};
}

bool holds(const vrk::FileBuffer& buffer, const std::vector<std::uint8_t>& bytes)
{
    const auto end = buffer.data.begin() + static_cast<std::ptrdiff_t>(bytes.size());
    return std::equal(bytes.begin(), bytes.end(), buffer.data.begin()) &&
        std::all_of(end, buffer.data.end(), [](std::uint8_t byte) { return byte == 0; });
}

bool every_pair_has_a_choice(const vrk::Shell& shell)
{
    if (shell.selected.cap_no_option_write)
        return true;
    const int page = vrk::option_page_of_series(shell.selected.series).page;
    for (int row = 0; row < shell.option_table.filled_rows(page); ++row) {
        const auto* button = dynamic_cast<const vrk::OptionButton*>(vrk::control_of_row(shell, page, row));
        const bool is_value = !shell.option_table.cell(page, row, vrk::OptionColumn::bit_code).empty();
        if (button != nullptr && is_value &&
            std::ranges::count(button->group, true, [](const vrk::OptionButton* one) { return one->value(); }) != 1)
            return false;
    }
    return true;
}

std::string form_complaint(const vrk::Shell& shell, const vrk::Project& project)
{
    if (vrk::NamedControls{shell.controls}.text_box("txtDevice").text() != shell.selected.mcu_name)
        return "the name shown is not the model in force";
    if (!every_pair_has_a_choice(shell))
        return "a pair of the panel has no choice";
    const std::string* model = project.find("MCU_Type");
    const bool taken =
        project.version != vrk::Project::Version::refused && model != nullptr && *model == shell.selected.mcu_name;
    if (!taken) // the job before stands
        return shell.selected.mcu_name == "Hazel-1" && shell.file_loaded && shell.code_buffer.high == 1
            ? ""
            : "a file that was refused has changed the job";
    if (shell.file_loaded != project.code.found || shell.data_buffer.loaded != project.data.found)
        return "what is loaded is not what was found";
    if (!holds(shell.code_buffer, project.code.bytes) || !holds(shell.data_buffer, project.data.bytes))
        return "a buffer does not hold its image";
    if (vrk::panel_state(shell) != 2)
        return "the panel is not locked";
    return {};
}

} // namespace

std::string fuzz_project(Input input)
{
    const std::uint8_t head = take_byte(input);
    std::string text;
    if ((head & 0x20) == 0)
        text = "VER: 1.2\r\nMCU_Type: " + std::string{models[head & 0x0F]} + "\r\n";
    text.append(reinterpret_cast<const char*>(input.data()), input.size());

    const vrk::Project project = vrk::parse_project(text);
    if (std::string complaint = reader_complaint(project); !complaint.empty())
        return complaint;
    ProjectBench& bench = the_bench();
    bench.begin((head & 0x10) != 0);
    bench.open(text);
    return form_complaint(bench.shell, project);
}

} // namespace fuzz
