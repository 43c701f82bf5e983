// One JSON object on a line of its own, in the order it was written in, and out at once.
#pragma once

#include <nlohmann/json.hpp>

#include <ostream>

namespace vrk {

using Json = nlohmann::ordered_json;

// Bytes that are no UTF-8, as a path may have them, become the replacement character.
inline void write_json_line(std::ostream& out, const Json& object)
{
    out << object.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
}

} // namespace vrk
