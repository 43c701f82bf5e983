// A stable word for each stage, for records and for those who read them by program.
#pragma once

#include "report/report.h"

#include <string_view>

namespace vrk {

constexpr std::string_view word_of(Stage stage)
{
    switch (stage) {
    case Stage::calling:
        return "calling";
    case Stage::found:
        return "found";
    case Stage::writing:
        return "writing";
    case Stage::settling:
        return "settling";
    case Stage::options:
        return "options";
    }
    return {};
}

} // namespace vrk
