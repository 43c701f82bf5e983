#include "image/load_result.h"

#include "catalog/attributes.h"
#include "form/messages.h"
#include "image/buffers.h"
#include "image/range_messages.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

void show_checksum(Shell& shell, FileKind file, const FileBuffer& buffer, bool boot_area_rule)
{
    std::string text = checksum_text(buffer.checksum);
    // The box of an EEPROM file of its own is shorter.
    if (kind_of(buffer) == BufferKind::data && file == FileKind::hex && has_separate_eeprom(shell.selected))
        text = text.substr(0, text.find('H') + 1);
    // The older families have one image, and one box for its checksum.
    TextBox& box = boot_area_rule ? shell.form.txtFileCheckSum : controls_of(shell, buffer).checksum;
    box.set_text(text);
}

} // namespace

LoadEnd take_over(Shell& shell, FileKind file, FileBuffer& buffer)
{
    const std::uint32_t this_load = buffer.changes;
    const std::int32_t shown_ap_last = hex_address_4(shell.form.LabISP_reange[1].caption());
    const RangeVerdict verdict =
        range_rules({shell.selected, shown_ap_last, file, kind_of(buffer), buffer.data, buffer.low, buffer.high});
    buffer.high = verdict.high;
    clear_ranges(buffer.data, verdict.to_clear);
    show_checksum(shell, file, buffer, verdict.boot_area_rule);
    shell.file_loaded = true;

    for (const RangeReport& report : verdict.reports) {
        show_box(shell, range_message(report, file, shell.language_is_english), range_title(report, file));
        if (buffer.changes != this_load)
            return LoadEnd::overtaken;
    }
    return LoadEnd::done;
}

} // namespace vrk
