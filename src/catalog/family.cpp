#include "catalog/family.h"

#include "catalog/mcu_table.h"
#include "platform/text_number.h"

namespace vrk {
namespace {

std::int32_t data_first_of(const Model& model)
{
    const bool above_code = model.line->data_flash == DataFlash::none_above_code ||
        (model.line->data_flash == DataFlash::as_sized && model.size->data_first == right_above_code);
    if (above_code) {
        return model.size->ap_last + 1;
    }
    return model.line->data_flash == DataFlash::none ? model.size->data_last + 1 : model.size->data_first;
}

std::int32_t data_last_of(const Model& model)
{
    return model.line->data_flash == DataFlash::none_above_code ? model.size->ap_last : model.size->data_last;
}

std::string id_text(const Family& family, std::uint16_t line_id, const Size& size)
{
    return hex_text(line_id + size.id_bits, family.id_digits);
}

std::string flag_text(const Size& size, McuColumn column)
{
    const auto index = static_cast<std::size_t>(column) - static_cast<std::size_t>(McuColumn::listed);
    return index < size.flags.size() ? std::string(1, size.flags[index]) : std::string();
}

} // namespace

std::vector<Model> models_of(const Family& family)
{
    std::vector<Model> models;
    models.reserve(static_cast<std::size_t>(family.declared_rows));
    for (const ModelLine& line : family.lines) {
        for (const Size& size : line.sizes) {
            models.push_back({&line, &size, false});
            if (line.twins == Twins::marked) {
                models.push_back({&line, &size, true});
            }
        }
    }
    return models;
}

std::string name_of(const Family& family, const Model& model)
{
    const ModelLine& line = *model.line;
    if (!line.whole_name.empty()) {
        return std::string(line.whole_name);
    }
    std::string name(family.word);
    name += line.model_class == ModelClass::iap ? "-I" : "-";
    name += model.size->kb;
    name += line.variant;
    name += model.is_twin ? "M" : line.mark;
    name += line.supply == VoltageClass::V3 ? "L" : "";
    return name;
}

std::string cell_text(const Family& family, const Model& model, int column)
{
    const ModelLine& line = *model.line;
    const Size& size = *model.size;
    switch (static_cast<McuColumn>(column)) {
    case McuColumn::series:
        return std::to_string(family.series);
    case McuColumn::mcu_id:
        return id_text(family, line.id, size);
    case McuColumn::ap_first:
        return "0";
    case McuColumn::ap_last:
        return std::to_string(size.ap_last);
    case McuColumn::ap_last_alt:
        return size.ap_last_alt == not_filled ? std::string() : std::to_string(size.ap_last_alt);
    case McuColumn::eeprom_first:
        return std::to_string(data_first_of(model));
    case McuColumn::eeprom_last:
        return std::to_string(data_last_of(model));
    case McuColumn::isp_first:
        return std::to_string(size.isp_first);
    case McuColumn::isp_last:
        return std::to_string(size.isp_last);
    case McuColumn::mcu_name:
        return name_of(family, model);
    case McuColumn::ap_abuts_isp:
        return line.code_end == CodeEnd::at_boot_area ? "1" : "0";
    case McuColumn::alt_id:
        return line.older_id == 0 ? std::string() : id_text(family, line.older_id, size);
    case McuColumn::rom_image:
        return std::string(size.rom_image);
    case McuColumn::listed:
    case McuColumn::cap_new_protocol:
    case McuColumn::cap_parity:
    case McuColumn::cap_parity_even:
    case McuColumn::cap_long_frame:
    case McuColumn::cap_no_option_write:
    case McuColumn::cap_all_flash_ap:
    case McuColumn::cap_no_eeprom:
        return flag_text(size, static_cast<McuColumn>(column));
    }
    return {};
}

} // namespace vrk
