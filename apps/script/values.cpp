#include "script/values.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"
#include "session/write_range.h"
#include "shell/panel_state.h"

namespace vrk::script {

namespace {

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += text.empty() ? line : "\n" + line;
    return text;
}

Json main_value(const Control& control)
{
    if (const auto* box = dynamic_cast<const TextBox*>(&control))
        return box->text();
    if (const auto* list = dynamic_cast<const ComboBox*>(&control))
        return list->text();
    if (const auto* lines = dynamic_cast<const ListBox*>(&control))
        return joined(lines->items());
    if (const auto* box = dynamic_cast<const CheckBox*>(&control))
        return box->value() ? "1" : "0";
    if (const auto* button = dynamic_cast<const OptionButton*>(&control))
        return button->value() ? "1" : "0";
    if (const auto* captioned = dynamic_cast<const CaptionControl*>(&control))
        return captioned->caption();
    if (const auto* tree = dynamic_cast<const Tree*>(&control))
        return tree->selected_key();
    if (const auto* strip = dynamic_cast<const TabStrip*>(&control))
        return std::string{strip->selected_key()};
    if (const auto* bar = dynamic_cast<const ProgressBar*>(&control))
        return std::to_string(bar->value());
    if (const auto* bar = dynamic_cast<const ScrollBar*>(&control))
        return std::to_string(bar->value());
    return "";
}

std::optional<Json> text_property(const TextBox& box, std::string_view property)
{
    if (property == "text")
        return box.text();
    if (property == "selstart")
        return box.sel_start();
    if (property == "sellength")
        return box.sel_length();
    if (property == "max" && box.max_length > 0)
        return box.max_length;
    return std::nullopt;
}

std::optional<Json> list_property(const ComboBox& list, std::string_view property)
{
    if (property == "text")
        return list.text();
    if (property == "index")
        return list.index_chosen();
    if (property == "items")
        return list.items();
    return std::nullopt;
}

std::optional<Json> strip_property(const TabStrip& strip, std::string_view property)
{
    if (property == "index")
        return strip.selected();
    if (property == "caption")
        return strip.tabs().empty() ? "" : strip.tabs()[static_cast<std::size_t>(strip.selected())].caption;
    if (property != "items")
        return std::nullopt;
    Json items = Json::array();
    for (const TabStrip::Tab& tab : strip.tabs())
        items.push_back({{"key", tab.key}, {"caption", tab.caption}});
    return items;
}

std::optional<Json> tree_property(const Tree& tree, std::string_view property)
{
    if (property != "items")
        return std::nullopt;
    Json items = Json::array();
    for (const Tree::Node& node : tree.nodes())
        items.push_back({{"key", node.key}, {"text", node.text}, {"parent", node.parent}});
    return items;
}

template <typename Bar> std::optional<Json> range_property(const Bar& bar, std::string_view property)
{
    if (property == "min")
        return bar.min();
    if (property == "max")
        return bar.max();
    if (property == "value")
        return bar.value();
    return std::nullopt;
}

std::optional<Json> own_property(const Control& control, std::string_view property)
{
    if (const auto* box = dynamic_cast<const TextBox*>(&control))
        return text_property(*box, property);
    if (const auto* list = dynamic_cast<const ComboBox*>(&control))
        return list_property(*list, property);
    if (const auto* lines = dynamic_cast<const ListBox*>(&control); lines && property == "items")
        return lines->items();
    if (const auto* strip = dynamic_cast<const TabStrip*>(&control))
        return strip_property(*strip, property);
    if (const auto* tree = dynamic_cast<const Tree*>(&control))
        return tree_property(*tree, property);
    if (const auto* bar = dynamic_cast<const ProgressBar*>(&control))
        return range_property(*bar, property);
    if (const auto* bar = dynamic_cast<const ScrollBar*>(&control))
        return range_property(*bar, property);
    if (const auto* captioned = dynamic_cast<const CaptionControl*>(&control); captioned && property == "caption")
        return captioned->caption();
    if (const auto* box = dynamic_cast<const CheckBox*>(&control); box && property == "value")
        return box->value() ? 1 : 0;
    if (const auto* button = dynamic_cast<const OptionButton*>(&control); button && property == "value")
        return button->value();
    return std::nullopt;
}

template <typename Array> Json numbers(const Array& values)
{
    Json list = Json::array();
    for (const auto value : values)
        list.push_back(value);
    return list;
}

Json option_byte_rows(const Shell& shell)
{
    Json rows = Json::array();
    for (const auto& row : shell.options.bytes)
        rows.push_back(numbers(row));
    return rows;
}

Json plan_value(const DownloadPlan& plan)
{
    return {{"name", plan.name}, {"ap_from", plan.ap_from}, {"ap_to", plan.ap_to}, {"file_from", plan.file_from},
        {"file_to", plan.file_to}, {"data_from", plan.data_from}, {"data_to", plan.data_to},
        {"erase_from", plan.erase_from}, {"erase_to", plan.erase_to}, {"spill_from", plan.spill_from},
        {"spill_to", plan.spill_to}, {"spill", plan.spill}, {"rest_from", plan.rest_from}, {"rest_to", plan.rest_to},
        {"erase_by_firmware", plan.erase_by_firmware}};
}

// The model last taken: the chip on the wire where it is known, else the selected one.
const McuRecord& model_in_hand(const Shell& shell)
{
    return shell.session != nullptr ? shell.session->model() : shell.selected;
}

std::string rom_image_name(const McuRecord& model) { return std::string{trimmed(model.rom_image)}; }

struct VariableRow {
    std::string_view name;
    Json (*value)(const Shell& shell);
};

// clang-format off
constexpr VariableRow variables[] = {
    { "target_ok",           [](const Shell& f) -> Json { return f.talk().chip.target_ok; } },
    { "tl_mode_active",      [](const Shell& f) -> Json { return f.talk().chip.tl_mode_active; } },
    { "target_name",         [](const Shell& f) -> Json { return f.talk().chip.target_name; } },
    { "target_id_hi",        [](const Shell& f) -> Json { return f.talk().chip.target_id_hi; } },
    { "target_id_lo",        [](const Shell& f) -> Json { return f.talk().chip.target_id_lo; } },
    { "target_id_alt",       [](const Shell& f) -> Json { return f.talk().chip.target_id_alt; } },
    { "fw_version",          [](const Shell& f) -> Json { return f.talk().chip.fw_version; } },
    { "fw_letter",           [](const Shell& f) -> Json { return f.talk().chip.fw_letter; } },
    { "mcu_clock_hz",        [](const Shell& f) -> Json { return f.talk().chip.mcu_clock_hz; } },
    { "mcu_clock_saved",     [](const Shell& f) -> Json { return f.talk().chip.mcu_clock_saved; } },
    { "clock_doubled_flag",  [](const Shell& f) -> Json { return f.talk().chip.clock_doubled_flag; } },
    { "double_speed_on",     [](const Shell& f) -> Json { return f.talk().chip.double_speed_on; } },
    { "boot_size_known",     [](const Shell& f) -> Json { return f.talk().chip.boot_size_known; } },
    { "boot_size",           [](const Shell& f) -> Json { return f.talk().chip.boot_size; } },
    { "status_has_options",  [](const Shell& f) -> Json { return f.talk().chip.status_has_options; } },
    { "options_read_ok",     [](const Shell& f) -> Json { return f.talk().chip.options_read_ok; } },
    { "reload_hi",           [](const Shell& f) -> Json { return f.talk().chip.reload_hi; } },
    { "reload_lo",           [](const Shell& f) -> Json { return f.talk().chip.reload_lo; } },
    { "reload2_hi",          [](const Shell& f) -> Json { return f.talk().chip.reload2_hi; } },
    { "reload2_lo",          [](const Shell& f) -> Json { return f.talk().chip.reload2_lo; } },
    { "baud_error",          [](const Shell& f) -> Json { return f.talk().chip.baud_error; } },
    { "serial_number",       [](const Shell& f) -> Json { return f.talk().chip.serial_number; } },
    { "handshake_baud",      [](const Shell& f) -> Json { return std::to_string(f.talk().line.contact_baud); } },
    { "rx_count",            [](const Shell& f) -> Json { return f.desk.terminal.has_port ? f.desk.terminal.rx_count : f.talk().rx.count; } },
    { "accept_frames",       [](const Shell& f) -> Json { return f.talk().rx.accept_frames; } },
    { "header_required",     [](const Shell& f) -> Json { return f.talk().rx.header_required; } },
    { "reply_ok",            [](const Shell& f) -> Json { return f.talk().rx.reply_ok; } },
    { "reply_timeout",       [](const Shell& f) -> Json { return f.talk().rx.reply_timeout; } },
    { "reply_bad",           [](const Shell& f) -> Json { return f.talk().rx.reply_bad; } },
    { "stop_requested",      [](const Shell& f) -> Json { return f.talk().stop_requested; } },
    { "demo_mode",           [](const Shell& f) -> Json { return f.talk().demo_mode; } },
    { "terminal_mode",       [](const Shell& f) -> Json { return f.desk.terminal.has_port; } },
    { "tx_count",            [](const Shell& f) -> Json { return f.desk.terminal.tx_count; } },
    { "spread_current",      [](const Shell& f) -> Json { return f.desk.spread_current; } },
    { "debug_retries",       [](const Shell& f) -> Json { return f.desk.repeats_left; } },
    { "board_mode",          [](const Shell& f) -> Json { return f.talk().board_mode; } },
    { "board_image",         [](const Shell& f) -> Json { return hex_bytes(f.board_image); } },
    { "link_parity_on",      [](const Shell& f) -> Json { return f.talk().parity_on; } },
    { "link_parity_even",    [](const Shell& f) -> Json { return f.selected.cap_parity_even; } },
    { "data_sum",            [](const Shell& f) -> Json { return f.talk().data_sum; } },
    { "Settings",            [](const Shell& f) -> Json { return line_text(f.port.line()); } },
    { "PortOpen",            [](const Shell& f) -> Json { return f.port.is_open(); } },
    { "rc_calibrate",        [](const Shell& f) -> Json { return series_is_15_16(f.selected.series); } },
    { "rc_trim",             [](const Shell& f) -> Json { return f.talk().rc.rc_trim; } },
    { "rc_error",            [](const Shell& f) -> Json { return f.talk().rc.rc_error; } },
    { "rc_target",           [](const Shell& f) -> Json { return f.talk().rc.rc_target; } },
    { "rc_saved",            [](const Shell& f) -> Json { return numbers(f.talk().rc.rc_saved); } },
    { "rc_last",             [](const Shell& f) -> Json { return f.talk().rc.rc_last; } },
    { "rc_factory",          [](const Shell& f) -> Json { return f.talk().rc.rc_factory; } },
    { "last_rc_trim",        [](const Shell& f) -> Json { return f.talk().rc.last_rc_trim; } },
    { "program_ok",          [](const Shell& f) -> Json { return f.talk().program_ok; } },
    { "options_done",        [](const Shell& f) -> Json { return f.talk().options_done; } },
    { "succeeded",           [](const Shell& f) -> Json { return f.succeeded; } },
    { "sequence_running",    [](const Shell& f) -> Json { return f.running; } },
    { "panel_state",         [](const Shell& f) -> Json { return panel_state(f); } },
    { "write_chunk",         [](const Shell&  ) -> Json { return write_chunk; } },
    { "erase_time",          [](const Shell& f) -> Json { return f.talk().erase_time; } },
    { "program_time",        [](const Shell& f) -> Json { return f.talk().program_time; } },
    { "option_bytes",        [](const Shell& f) -> Json { return option_byte_rows(f); } },
    { "status_bytes",        [](const Shell& f) -> Json { return numbers(f.talk().status_bytes); } },
    { "spare_row_16",        [](const Shell& f) -> Json { return f.options.spare_row_16; } },
    { "byte_text",           [](const Shell& f) -> Json { return f.option_byte_text; } },
    { "option_family",       [](const Shell& f) -> Json { return option_family(f.selected.series); } },
    { "block_bytes",         [](const Shell& f) -> Json { return block_bytes(model_in_hand(f)); } },
    { "has_rom_image",       [](const Shell& f) -> Json { return !rom_image_name(model_in_hand(f)).empty(); } },
    { "rom_image_name",      [](const Shell& f) -> Json { return rom_image_name(model_in_hand(f)); } },
    { "series_is_15_16_17",  [](const Shell& f) -> Json { return series_is_15_16_17(f.selected.series); } },
    { "series_is_15_16",     [](const Shell& f) -> Json { return series_is_15_16(f.selected.series); } },
    { "file_loaded",         [](const Shell& f) -> Json { return f.file_loaded; } },
    { "current_path",        [](const Shell& f) -> Json { return f.loader.current_path; } },
    { "plan",                [](const Shell& f) -> Json { return plan_value(f.talk().plan); } },
    { "language_is_english", [](const Shell& f) -> Json { return f.language_is_english; } },
};
// clang-format on

} // namespace

std::optional<Json> control_property(const Control& control, std::string_view property)
{
    if (property.empty())
        return main_value(control);
    if (property == "enabled")
        return control.enabled();
    if (property == "visible")
        return control.visible();
    return own_property(control, property);
}

Json control_names(const Shell& shell, std::string_view prefix)
{
    Json names = Json::array();
    for (const Control* control : shell.controls.all()) {
        if (control->full_name().starts_with(prefix))
            names.push_back({{"name", control->full_name()}, {"type", kind_name(control->kind)}});
    }
    return names;
}

std::optional<Json> variable(const Shell& shell, std::string_view name)
{
    for (const VariableRow& row : variables) {
        if (row.name == name)
            return row.value(shell);
    }
    return std::nullopt;
}

Json record_value(const McuRecord& record)
{
    const auto size = size_digits(record);
    return {{"series", record.series}, {"mcu_id", record.mcu_id}, {"ap_first", record.ap_first},
        {"ap_last", record.ap_last}, {"ap_last_alt", record.ap_last_alt}, {"eeprom_first", record.eeprom_first},
        {"eeprom_last", record.eeprom_last}, {"isp_first", record.isp_first}, {"isp_start", record.isp_start},
        {"isp_last", record.isp_last}, {"ap_abuts_isp", record.ap_abuts_isp}, {"mcu_name", record.mcu_name},
        {"alt_id", record.alt_id}, {"rom_image", record.rom_image}, {"listed", record.listed},
        {"cap_new_protocol", record.cap_new_protocol}, {"cap_parity", record.cap_parity},
        {"cap_parity_even", record.cap_parity_even}, {"cap_long_frame", record.cap_long_frame},
        {"cap_no_option_write", record.cap_no_option_write}, {"cap_all_flash_ap", record.cap_all_flash_ap},
        {"cap_no_eeprom", record.cap_no_eeprom}, {"is_iap_class", is_iap_class(record)},
        {"voltage_class", voltage_class(record) == VoltageClass::V5 ? "V5" : "V3"},
        {"size_digits", size ? Json(std::to_string(*size / 10) + std::to_string(*size % 10)) : Json()},
        {"is_wide_boot", is_wide_boot(record)}, {"is_aspen_top", is_aspen_top(record)},
        {"series_is_rc_group", series_is_rc_group(record.series)},
        {"series_is_15_16_17", series_is_15_16_17(record.series)}, {"series_is_15_16", series_is_15_16(record.series)},
        {"has_eeprom_buffer", has_eeprom_buffer(record)}, {"option_family", option_family(record.series)}};
}

Json buffer_info(const FileBuffer& buffer)
{
    return {{"low", buffer.low}, {"high", buffer.high}, {"view_low", buffer.view_low}, {"view_high", buffer.view_high},
        {"checksum", buffer.checksum}, {"start", buffer.start}, {"loaded", buffer.loaded}};
}

std::string hex_bytes(std::span<const std::uint8_t> bytes)
{
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

} // namespace vrk::script
