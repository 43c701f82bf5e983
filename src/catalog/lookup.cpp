#include "catalog/lookup.h"

#include "form/messages.h"

namespace vrk {

std::string find_mcu_by_name(Shell& shell, std::string_view name, McuRecord& record)
{
    const auto found = locate_mcu_by_name(shell.mcu_table, name);
    if (!found) {
        constexpr Text unknown = {"找不到 MCU: ", "Can not find the MCU type: "};
        show_box(shell, std::string{in_language(shell, unknown)} + shell.form.txtDevice.text());
        return {};
    }
    record = read_mcu_row(shell.mcu_table, found->series, found->row);
    shell.beside = beside_record(record);
    return found->name;
}

} // namespace vrk
