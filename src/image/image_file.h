// A file of code or data on the disk: what kind it is, what stands in it, when it was changed last.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace vrk {

enum class FileKind { hex, bin };

struct ImageFile {
    std::string path;
    FileKind kind = FileKind::bin;
    bool found = false; // it is there and can be read
    std::string contents;
};

bool is_file(const std::string& path); // no folder, no device

// Reads a file in one go: as a HEX file whole, as a binary one no further than one byte past what a buffer can hold.
// With ".HEX" anywhere in the path it is Intel HEX; else three lines that begin with ':' make it one, or all lines of a
// file with fewer.
ImageFile read_image_file(const std::string& path, std::size_t buffer_size);

// Time of the last change as text. Nothing while the file cannot be looked at: compilers remove it before they write
// it.
std::optional<std::string> file_stamp(const std::string& path);

} // namespace vrk
