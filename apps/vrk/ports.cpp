// vrk ports: which serial ports there are, what each is, and whether it can be opened.
#include "vrk/json_line.h"
#include "vrk/subcommands.h"
#include "vrk/talk_options.h"

#include "host/qt_ports.h"
#include "platform/port.h"
#include "session/shared_texts.h"

#include <QCoreApplication>

#include <iostream>
#include <memory>

namespace vrk {

namespace {

// Opened for a moment: nothing else tells whether it can be. Why not, where the system tells.
std::string why_not(QtPorts& ports, const std::string& path, bool english)
{
    Port port(ports);
    port.path = path;
    if (port.open()) {
        port.close();
        return {};
    }
    const std::string why = refusal_text(port).in(english);
    constexpr Text unknown = {"无法打开", "it can not be opened"};
    return why.empty() ? std::string{in_language(english, unknown)} : why;
}

std::string one_line(std::string text)
{
    for (char& c : text)
        c = c == '\n' || c == '\t' ? ' ' : c;
    return text;
}

int list_ports(const TalkOptions& talk)
{
    int no_words = 0;
    QCoreApplication application(no_words, nullptr);
    QtPorts ports;
    const bool english = speaks_english(talk);
    constexpr Text can_be_opened = {"可以打开", "can be opened"};
    for (const PortInfo& port : ports.list()) {
        const std::string why = one_line(why_not(ports, port.path, english));
        if (talk.json)
            write_json_line(std::cout,
                {{"port", port.path}, {"description", port.description}, {"serial_number", port.serial_number},
                    {"can_be_opened", why.empty()}, {"why_not", why}});
        else
            std::cout << port.path << "\t" << port.description << "\t"
                      << (why.empty() ? std::string{in_language(english, can_be_opened)} : why) << "\n";
    }
    std::cout.flush();
    return std::cout ? status_good : status_different;
}

} // namespace

Action describe_ports(CLI::App& app)
{
    const auto talk = std::make_shared<TalkOptions>();
    describe_manner(app, *talk);
    return [talk] { return list_ports(*talk); };
}

} // namespace vrk
