// A file is written whole or not at all: a full disk, a crash or a power cut leaves what stood there before.
#pragma once

#include "platform/disk.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vrk {

// Why a file is not surely on the disk.
struct WriteFault {
    std::string reason; // in the system's words
    bool in_place =
        false; // the file holds the bytes, but a power cut may bring the old one back; else the old one stands
};

// Writes and flushes beside the file first and puts the result in its place; of a link, also one that leads to nothing
// yet, in the place that it leads to. Nothing: the file holds the bytes, and will after a power cut.
std::optional<WriteFault> write_whole_file(
    const std::string& path, std::span<const std::uint8_t> bytes, Disk& disk = system_disk());

// Where the bytes of a path stand: links are followed.
std::string behind_links(const std::string& path);

} // namespace vrk
