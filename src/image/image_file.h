// A file of code or data on the disk: what kind it is, what stands in it, when it was changed last.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

namespace vrk {

enum class FileKind { hex, bin };
enum class FileFault {
    none,
    not_found, // not there, no plain file, or it may not be read
    too_large, // above ImageFile::most_bytes: nothing of it has been read
    utf16, // HEX in characters of two bytes
};

struct ImageFile {
    static constexpr std::uintmax_t most_bytes = 64U << 20U; // no chip of the catalogue needs a hundredth of it

    std::string path;
    FileKind kind = FileKind::bin;
    FileFault fault = FileFault::none;
    std::uintmax_t size = 0; // in bytes
    std::string stamp; // as it was opened
    std::string contents; // of a binary file
    std::ifstream text; // of a HEX file, at its first line
};

bool is_file(const std::string& path); // no folder, no device

// Opens a file and reads a binary one, no further than one byte past what a buffer can hold. With ".HEX" anywhere in
// the path it is Intel HEX; else three lines that begin with ':' make it one, or all lines of a file with fewer. A mark
// of UTF-8 in front of HEX is passed over.
ImageFile open_image_file(const std::string& path, std::size_t buffer_size);

// Time of the last change and size as text. Nothing while the file cannot be looked at: compilers remove it before they
// write it.
std::optional<std::string> file_stamp(const std::string& path);

} // namespace vrk
