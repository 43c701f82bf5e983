// What one download will erase and write: the code buffer laid over the map of the connected chip.
#pragma once

#include "form/shell.h"

#include <cstdint>
#include <string_view>

namespace vrk {

struct PlannedDownload {
    DownloadPlan plan;
    bool overflows = false; // the file reaches beyond what this firmware of the boot loader can take
};

// `high` is the highest address of the code image, `letter` and `version` are the stepping of the chip's boot loader,
// `order` is 5 where it takes its option bytes in the newer order, else 0.
PlannedDownload build_download_plan(
    std::int32_t high, const McuRecord& chip, std::string_view letter, double version, int order);

// Plans the download of the code buffer into the connected chip: fills shell.plan. True: the file overflows, and the
// caller says so; the download takes what fits.
bool download_plan(Shell& shell, int order);

} // namespace vrk
