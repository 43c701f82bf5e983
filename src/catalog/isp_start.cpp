#include "catalog/isp_start.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

namespace vrk {
namespace {

constexpr std::int32_t boot_block_bytes = 1024;
constexpr std::int32_t wide_boot_block_bytes = 2048;

} // namespace

IspStart derive_isp_start(const McuRecord& record)
{
    IspStart result{record.isp_start, record.ap_last};
    if (record.series == 0) {
        result.isp_start = record.isp_first;
    }
    if (record.series == 1 || record.series == 2 || series_is_rc_group(record.series)) {
        const std::int32_t block = is_wide_boot(record) ? wide_boot_block_bytes : boot_block_bytes;
        result.isp_start = record.isp_last - block + 1;
        if (record.ap_abuts_isp) {
            result.shown_last = result.isp_start - 1;
        }
    }
    switch (record.series) {
    case 3: // Cedar
    case 6: // Hazel
    case 9: // Maple
    case 15: // Poplar
    case 16: // Holly
        result.isp_start = 0x1400;
        break;
    case 4: // Elm
    case 5: // Fir
        result.isp_start = 0x7000;
        break;
    case 7: // Juniper
    case 10: // Oak
        result.isp_start = 0xF400;
        break;
    case 8: // Larch
    case 17: // Willow
        result.isp_start = 0x3400;
        break;
    default:
        break;
    }
    return result;
}

std::string four_hex_digits(std::int32_t value) { return hex_text(value, 4); }

} // namespace vrk
