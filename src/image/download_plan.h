// What one download will erase and write: the code buffer laid over the map of the connected chip.
#pragma once

#include "catalog/mcu_record.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vrk {

struct DownloadPlan {
    std::string name; // empty: no plan
    std::int32_t ap_from = 0;
    std::int32_t ap_to = 0;
    std::int32_t file_from = 0;
    std::int32_t file_to = 0;
    std::int32_t data_from = 0;
    std::int32_t data_to = 0;
    std::int32_t erase_from = 0;
    std::int32_t erase_to = 0;
    std::int32_t spill_from = 0; // the part of the file that lies in the data flash
    std::int32_t spill_to = 0;
    bool spill = false; // the file reaches past the application area
    std::int32_t rest_from = 0; // the part of the data flash that the file leaves alone
    std::int32_t rest_to = 0;
    bool erase_by_firmware = false;
};

struct PlannedDownload {
    DownloadPlan plan;
    bool overflows = false; // the file reaches beyond what this firmware of the boot loader can take
};

// `high` is the highest address of the code image, `letter` and `version` are the stepping of the chip's boot loader,
// `order` is 5 where it takes its option bytes in the newer order, else 0.
PlannedDownload build_download_plan(
    std::int32_t high, const McuRecord& chip, std::string_view letter, double version, int order);

} // namespace vrk
