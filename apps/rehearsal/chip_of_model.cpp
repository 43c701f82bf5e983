#include "rehearsal/chip_of_model.h"

#include "catalog/near_names.h"
#include "catalog/rows.h"

namespace vrk {

sim::ChipModel chip_model_of(const McuRecord& record)
{
    sim::ChipModel model;
    model.name = record.mcu_name;
    model.series = record.series;
    model.id = record.mcu_id;
    model.alt_id = record.alt_id;
    model.ap_last = record.ap_last;
    model.eeprom_first = record.eeprom_first;
    model.eeprom_last = record.eeprom_last;
    model.isp_start = record.isp_start;
    model.new_protocol = record.cap_new_protocol;
    model.parity = record.cap_parity;
    model.parity_even = record.cap_parity_even;
    model.long_frame = record.cap_long_frame;
    model.no_option_write = record.cap_no_option_write;
    model.all_flash_ap = record.cap_all_flash_ap;
    model.no_eeprom = record.cap_no_eeprom;
    return model;
}

std::optional<sim::ChipSetup> chip_setup_of(const McuTable& table, std::string_view name)
{
    const auto found = locate_mcu_by_name(table, model_named(table, name).value_or(""));
    if (!found)
        return std::nullopt;
    return sim::default_setup(chip_model_of(read_mcu_row(table, found->series, found->row)));
}

} // namespace vrk
