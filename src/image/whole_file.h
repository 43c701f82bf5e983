// A file is written whole or not at all: a full disk or a crash leaves what stood there before.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// Writes beside the file first and puts the result in its place, through links to the file that they lead to. Answers
// what went wrong in the system's words; empty: the file holds the bytes.
std::string write_whole_file(const std::string& path, std::span<const std::uint8_t> bytes);

} // namespace vrk
