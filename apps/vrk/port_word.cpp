#include "vrk/port_word.h"

#include "platform/text_number.h"

#include <filesystem>
#include <system_error>

namespace vrk {

namespace {

std::string known_ports(const std::vector<PortInfo>& ports)
{
    if (ports.empty())
        return "no serial port is there";
    std::string text = "there are: ";
    for (std::size_t i = 0; i < ports.size(); ++i) {
        text += (i > 0 ? ", " : "") + ports[i].path;
        if (!ports[i].serial_number.empty())
            text += " (" + ports[i].serial_number + ")";
    }
    return text;
}

} // namespace

std::variant<std::string, NoPort> path_of_port(
    std::string_view word, const std::vector<PortInfo>& ports, const std::string& by_id)
{
    const std::string name{word};
    std::error_code missing;
    if (name.find('/') != std::string::npos)
        return name;
    if (std::filesystem::exists(name, missing)) // opened by its bare name it would be looked for among the devices
        return std::filesystem::absolute(name, missing).string();
    if (!name.empty() && std::filesystem::exists(by_id + "/" + name, missing))
        return by_id + "/" + name;
    std::vector<std::string> found;
    for (const PortInfo& port : ports) {
        if (!name.empty() && upper_case(port.serial_number) == upper_case(name))
            found.push_back(port.path);
    }
    if (found.size() == 1)
        return found.front();
    if (found.size() > 1)
        return NoPort{"more than one adapter has the serial number '" + name + "'; " + known_ports(ports)};
    return NoPort{"no port and no adapter is called '" + name + "'; " + known_ports(ports)};
}

} // namespace vrk
