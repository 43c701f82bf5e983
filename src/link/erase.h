// The erase stage.
#pragma once

#include "report/report.h"
#include "session/session.h"

namespace vrk {

// Erases what the plan says. True: erased; a failure is said by the caller.
bool erase_chip(Session& session, Report& report);

struct EraseRange {
    std::int32_t first = 0x10000; // 0x10000 in both: the firmware takes no range
    std::int32_t last = 0x10000;
};
// What of the data flash the erase covers. `keep_data`: the chip's option to leave the data flash alone at a download.
EraseRange erase_range(const DownloadPlan& plan, const McuRecord& record, const std::string& letter, bool keep_data);

// Sectors of 512 bytes that an old firmware is told to erase, at most 255.
std::uint8_t erase_sector_count(const McuRecord& record, const std::string& letter, const std::string& version);

// `long_form`: with the fill that the later boot loaders check.
Bytes build_erase_frame(std::uint8_t sectors, const EraseRange& range, bool long_form, Check check);

} // namespace vrk
