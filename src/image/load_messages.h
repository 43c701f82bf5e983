// Why a file has brought nothing in, in words.
#pragma once

#include "image/image_file.h"
#include "image/load.h"
#include "report/text.h"

#include <optional>

namespace vrk {

std::optional<Line> fault_text(const ImageFile& file); // nothing: the file has no fault
const Text* end_text(LoadEnd end); // null: the load is done, or whoever asked for it knows

} // namespace vrk
