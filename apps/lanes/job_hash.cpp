#include "lanes/job_hash.h"

#include "books/sha256.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <vector>

namespace vrk::lanes {

std::string sha256_of_file(const std::string& file)
{
    std::ifstream source(file, std::ios::binary);
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(source), std::istreambuf_iterator<char>()};
    return source.is_open() && !source.bad() && !bytes.empty() ? sha256(bytes) : std::string{};
}

} // namespace vrk::lanes
