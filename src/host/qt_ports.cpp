#include "host/qt_ports.h"

#include "host/qt_port.h"

#include <QSerialPortInfo>

#include <algorithm>

namespace vrk {

namespace {

constexpr int settle_ms = 300; // a new device gets its name first and its permissions a little later

// Which adapter it is: two of one make differ in their serial number alone.
std::string description_of(const QSerialPortInfo& info)
{
    QStringList parts{info.description(), info.manufacturer(), info.serialNumber()};
    parts.removeAll({});
    parts.removeDuplicates();
    return parts.join(", ").toStdString();
}

} // namespace

QtPorts::QtPorts(std::vector<std::string> in_front)
    : in_front_(std::move(in_front))
{
    settle_.setSingleShot(true);
    settle_.setInterval(settle_ms);
    watcher_.addPath("/dev");
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_, [this] { settle_.start(); });
    QObject::connect(&settle_, &QTimer::timeout, &settle_, [this] {
        if (on_list_changed)
            on_list_changed();
    });
}

std::vector<PortInfo> QtPorts::list()
{
    std::vector<PortInfo> ports;
    for (const std::string& path : in_front_)
        ports.push_back({path, path, ""});
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const std::string path = info.systemLocation().toStdString();
        const bool known =
            std::any_of(ports.begin(), ports.end(), [&](const PortInfo& port) { return port.path == path; });
        if (!known)
            ports.push_back({path, path, description_of(info), info.serialNumber().toStdString()});
    }
    return ports;
}

std::unique_ptr<SerialPort> QtPorts::make(const std::string& path) { return std::make_unique<QtPort>(path); }

} // namespace vrk
