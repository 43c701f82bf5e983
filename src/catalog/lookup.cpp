#include "catalog/lookup.h"

#include "form/messages.h"

namespace vrk {

std::string find_mcu_by_name(MainForm& form, std::string_view name, McuRecord& record)
{
    const auto found = locate_mcu_by_name(form.mcu_table, name);
    if (!found) {
        constexpr Text unknown = {"找不到 MCU: ", "Can not find the MCU type: "};
        show_box(form, std::string{in_language(form, unknown)} + form.txtDevice.text());
        return {};
    }
    record = read_mcu_row(form.mcu_table, found->series, found->row);
    form.beside = beside_record(record);
    return found->name;
}

} // namespace vrk
