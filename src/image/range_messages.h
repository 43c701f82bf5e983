// The words of the range rules: one box a report.
#pragma once

#include "image/range_rules.h"

#include <string>
#include <string_view>

namespace vrk {

std::string range_message(const RangeReport& report, FileKind file, bool english);
std::string_view range_title(const RangeReport& report, FileKind file);

} // namespace vrk
