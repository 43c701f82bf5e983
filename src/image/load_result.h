// The end of every load, whatever the kind of file: the range rules of the selected model, their messages, the
// checksum.
#pragma once

#include "form/shell.h"
#include "image/range_rules.h"

namespace vrk {

enum class LoadEnd {
    done, // the buffer holds the file
    refused, // the user gave up on wrong checksums; the buffer is cleared
    overtaken, // while events were served the buffer was cleared or loaded anew: what that left stands
};

// Brings the bytes, `low`, `high` and `checksum` of a load under the rules of the selected model and sets file_loaded.
LoadEnd take_over(Shell& shell, FileKind file, FileBuffer& buffer);

} // namespace vrk
