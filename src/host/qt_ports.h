// The serial ports of the system, kept up to date while devices come and go.
#pragma once

#include "platform/serial_port.h"

#include <QFileSystemWatcher>
#include <QTimer>

#include <string>
#include <vector>

namespace vrk {

class QtPorts final : public PortDriver {
public:
    // `in_front`: paths put in front of those that the system lists; pseudo terminals for one are never listed.
    explicit QtPorts(std::vector<std::string> in_front = {});

    std::vector<PortInfo> list() override;
    std::unique_ptr<SerialPort> make(const std::string& path) override;

private:
    std::vector<std::string> in_front_;
    QFileSystemWatcher watcher_;
    QTimer settle_;
};

} // namespace vrk
