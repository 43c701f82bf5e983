// A project is known by the SHA-256 of its file.
#pragma once

#include <string>

namespace vrk::lanes {

std::string sha256_of_file(const std::string& file); // in hexadecimal; empty: it cannot be read

} // namespace vrk::lanes
