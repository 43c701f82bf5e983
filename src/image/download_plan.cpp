#include "image/download_plan.h"

#include <algorithm>

namespace vrk {

namespace {

// Boot loaders of the steppings D and E place the data flash by rules of their own.
constexpr std::int32_t data_last_of_d = 5119; // 5 KB of flash in all
constexpr std::int32_t data_last_of_early_e = 12287; // 12 KB
constexpr std::int32_t data_last_of_late_e = 28671; // 28 KB
constexpr double last_early_e = 5.0;

// Chips below this size are erased page by page whatever their firmware.
constexpr std::int32_t least_ap_last_for_firmware_erase = 14336;

std::int32_t data_first_of_late_e(std::int32_t ap_last)
{
    if (ap_last < 4097)
        return 4096;
    if (ap_last < 8193)
        return 8192;
    if (ap_last <= 12288)
        return 12288;
    return ap_last + 1;
}

} // namespace

PlannedDownload build_download_plan(
    std::int32_t high, const McuRecord& chip, std::string_view letter, double version, int order)
{
    PlannedDownload result;
    DownloadPlan& plan = result.plan;
    plan.name = "AP_FILE";
    plan.ap_to = chip.ap_last;
    plan.file_to = high;
    plan.data_from = chip.eeprom_first;
    plan.data_to = chip.eeprom_last;
    if (letter == "D") {
        plan.data_to = data_last_of_d;
        result.overflows = high > plan.data_to;
    } else if (letter == "E" && version <= last_early_e) {
        plan.data_to = data_last_of_early_e;
        result.overflows = high > plan.data_to;
    } else if (letter == "E") {
        plan.data_from = data_first_of_late_e(chip.ap_last);
        plan.data_to = data_last_of_late_e;
    }

    plan.erase_from = std::min(chip.ap_last, high) + 1;
    plan.erase_to = chip.ap_last;

    plan.spill = high > chip.ap_last;
    plan.spill_from = plan.spill ? plan.data_from : plan.data_to + 1;
    plan.spill_to = plan.spill ? std::min(high, plan.data_to) : plan.data_to + 1;
    plan.rest_from = std::min(plan.spill ? plan.spill_to + 1 : plan.data_from, plan.data_to + 1);
    plan.rest_to = plan.data_to;

    plan.erase_by_firmware =
        letter >= "C" && high < chip.ap_last && chip.ap_last >= least_ap_last_for_firmware_erase && order > 0;
    return result;
}

} // namespace vrk
