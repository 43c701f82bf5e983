// A status frame, decoded and reported as at power-up and as an answer:
//   0     model, low five bits; bit 5: English; bit 6: an answer; bit 7: after the erase stage too
//   1     stepping letter, any byte
//   2     version byte
//   3..   the frame from its length byte on
#include "fuzz/target.h"

#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "form/shell.h"
#include "options/codec.h"
#include "options/option_tables.h"
#include "options/status_frame.h"
#include "options/status_report.h"
#include "platform/scripted_dialogs.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <algorithm>

namespace fuzz {

namespace {

constexpr const char* models[] = {"Alder-64", "Aspen-16", "Birch-8", "Cedar-4R", "Elm-28R", "Fir-20R", "Fir-28R",
    "Hazel-4R", "Juniper-60Q", "Juniper-8L", "Juniper-I62Q", "Larch-12V", "Maple-4S", "Oak-20V", "Pine-32", "Rowan-8",
    "Spruce-16", "Poplar-4L", "Holly-4", "Willow-12R"};

// Filled once: that takes longer than all else.
struct Tables {
    vrk::McuTable models;
    vrk::OptionTable options[2]; // Chinese, English

    Tables()
    {
        vrk::load_mcu_tables(models, false);
        vrk::load_option_tables(options[0], false);
        vrk::load_option_tables(options[1], true);
    }
    vrk::McuRecord record(const char* name) const
    {
        const auto found = vrk::locate_mcu_by_name(models, name);
        return found ? vrk::read_mcu_row(models, found->series, found->row) : vrk::McuRecord{};
    }
};
const Tables& tables()
{
    static const Tables all;
    return all;
}

std::string complaint_of(const vrk::Shell& shell, bool was_english)
{
    for (const std::int16_t row : shell.options.status_bytes) {
        if (row < 0 || row > 255)
            return "an option byte of " + std::to_string(row);
    }
    if (shell.language_is_english != was_english)
        return "the language changed";
    for (const vrk::Label& label : shell.form.LabLock) {
        if (label.caption().find('\n') != std::string::npos)
            return "a label of two lines";
    }
    return "";
}

} // namespace

std::string fuzz_status_frame(Input input)
{
    const std::uint8_t how = take_byte(input);
    sim::VirtualLoop loop;
    sim::SimPortDriver ports(loop);
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell(vrk::Platform{loop, ports, dialogs, settings});
    shell.language_is_english = (how & 32) != 0;
    shell.option_table = tables().options[shell.language_is_english ? 1 : 0];
    shell.selected = tables().record(models[(how & 31U) % std::size(models)]);
    shell.connected = shell.selected;
    shell.target.identified = true;
    shell.target.target_name = shell.selected.mcu_name;
    shell.target.fw_letter = std::string(1, static_cast<char>(take_byte(input)));
    shell.target.fw_version = vrk::decode_version(take_byte(input));
    shell.link.rx_buffer[0] = 0x68;
    std::copy_n(input.begin(), std::min(input.size(), shell.link.rx_buffer.size() - 2), shell.link.rx_buffer.begin() + 2);

    vrk::build_option_bytes(shell);
    vrk::decode_status_frame(shell, (how & 64) != 0 ? vrk::StatusLayout::answer : vrk::StatusLayout::power_up);
    vrk::report_status(shell);
    if ((how & 128) != 0) {
        vrk::report_serial(shell);
        vrk::report_rc_frequency(shell, true);
    }
    return complaint_of(shell, (how & 32) != 0);
}

} // namespace fuzz
