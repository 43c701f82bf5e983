#include "vrk/place.h"

#include "vrk/interrupts.h"
#include "vrk/port_word.h"
#include "vrk/simulated_line.h"
#include "vrk/subcommands.h"

#include "host/qt_loop.h"
#include "host/qt_ports.h"

#include <QCoreApplication>

#include <utility>

namespace vrk {

namespace {

int at_simulated_line(const TalkOptions& options, const std::function<int(Place&, Teller&)>& work)
{
    SimulatedLine line;
    Port port(line.ports);
    std::function<void()> interrupt;
    line.loop.before_sleep = [&interrupt] {
        if (was_interrupted() && interrupt)
            std::exchange(interrupt, nullptr)();
        return false;
    };
    Place place{line.loop, port, SimulatedLine::port_path, [&line](const McuRecord& model) { line.put_chip_on(model); },
        [&interrupt](std::function<void()> act) { interrupt = std::move(act); }};
    const auto teller = make_teller(line.loop, options);
    const int status = work(place, *teller);
    line.loop.before_sleep = nullptr;
    return status;
}

int at_real_port(const TalkOptions& options, const std::function<int(Place&, Teller&)>& work)
{
    int no_words = 0;
    QCoreApplication application(no_words, nullptr);
    QtLoop loop;
    QtPorts ports;
    const auto teller = make_teller(loop, options);
    const auto path = path_of_port(options.port, ports.list(), by_id_folder);
    if (const NoPort* none = std::get_if<NoPort>(&path))
        return tell_refusal(*teller, Result::no_port, none->why);
    Port port(ports);
    Place place{loop, port, std::get<std::string>(path), [](const McuRecord&) {},
        [](std::function<void()> act) { on_interrupt(std::move(act)); }};
    return work(place, *teller);
}

} // namespace

int at_place(const TalkOptions& options, const std::function<int(Place&, Teller&)>& work)
{
    if (options.port.empty() && !options.simulate)
        return refuse_words("--port PORT or --simulate is wanted; vrk ports lists the ports");
    if (!options.port.empty() && options.simulate)
        return refuse_words("--simulate takes no --port");
    catch_interrupts();
    return options.simulate ? at_simulated_line(options, work) : at_real_port(options, work);
}

} // namespace vrk
