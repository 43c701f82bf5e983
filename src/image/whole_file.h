// A file is written whole or not at all: a full disk, a crash or a power cut leaves what stood there before.
#pragma once

#include "platform/disk.h"

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// Writes and flushes beside the file first and puts the result in its place; of a link, also one that leads to nothing
// yet, in the place that it leads to. Answers what went wrong in the system's words; empty: the file holds the bytes,
// and will after a power cut.
std::string write_whole_file(const std::string& path, std::span<const std::uint8_t> bytes, Disk& disk = system_disk());

} // namespace vrk
