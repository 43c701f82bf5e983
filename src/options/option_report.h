// What the options of a chip are, line by line from the table that describes its firmware: for the report, and for the
// labels of the check page.
#pragma once

#include "options/chip_status.h"
#include "options/codec.h"

#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// The page whose rows describe a firmware's bits, by its stepping letter. None for A, B, M and letters not known.
OptionPage option_page_of_letter(std::string_view letter);

// Every choice that holds in the chip, in the order of its page. Writes the marks of the decode and the voltages of the
// chip into that page. Nothing for a letter without a page.
std::vector<std::string> option_lines(OptionTable& table, const ChipStatus& status, bool english);

// The check page from its second label on: the chip, and the first ten of its option lines. Other lines for the two
// oldest letters; nothing for the other letters without a page, and what stands there then stays.
std::vector<std::string> check_page_lines(
    const ChipStatus& status, const std::vector<std::string>& option_lines, bool english);

} // namespace vrk
