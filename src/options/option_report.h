// What the options of a connected chip are, line by line from the table that describes its firmware: in the report and
// on the labels of the check page.
#pragma once

#include "options/codec.h"

namespace vrk {

// The page whose rows describe a firmware's bits, by its stepping letter. None for A, B, M and letters not known.
OptionPage option_page_of_letter(std::string_view letter);

// Decodes status_bytes and says every choice that holds. Nothing for a letter without a page.
void report_options(Shell& shell);

// The check page of the two oldest letters, from the status frame in rx_buffer.
void report_old_firmware(Shell& shell);

// The check page when a model is selected: head and foot, nothing between.
void clear_check_page(Shell& shell);

} // namespace vrk
