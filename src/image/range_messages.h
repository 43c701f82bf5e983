// The words of the range rules: one box a report.
#pragma once

#include "image/range_rules.h"
#include "report/text.h"

namespace vrk {

Line range_message(const RangeReport& report, FileKind file);
const char* range_title(const RangeReport& report, FileKind file);

} // namespace vrk
