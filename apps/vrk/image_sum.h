// By what an image is known in what is told of a run.
#pragma once

#include "host/sha256.h"
#include "image/file_buffer.h"

#include <algorithm>
#include <string>

namespace vrk {

// SHA-256 of the bytes from 0 to the last one that a file or a project has brought.
inline std::string image_sha256(const FileBuffer& buffer)
{
    const std::int32_t last = std::clamp(buffer.view_high, -1, buffer.last());
    return sha256_hex({buffer.data.data(), static_cast<std::size_t>(last + 1)});
}

} // namespace vrk
