#include "ledger/holder.h"

#include <QString>
#include <QSysInfo>

#include <fstream>
#include <sstream>

#include <unistd.h>

namespace vrk {

namespace {

constexpr int fields_before_start = 19; // of /proc/PID/stat, behind the name of the program

std::string boot_id()
{
    std::string id;
    std::ifstream("/proc/sys/kernel/random/boot_id") >> id;
    return id;
}

// Empty: there is no such process, or a dead one that nobody has fetched yet.
std::string start_of(std::int64_t pid)
{
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(file, line);
    const std::size_t name_end = line.rfind(')'); // the name may hold blanks and brackets itself
    if (name_end == std::string::npos)
        return {};
    std::istringstream fields(line.substr(name_end + 1));
    std::string state;
    fields >> state;
    std::string field = state;
    for (int i = 0; i < fields_before_start; ++i)
        fields >> field;
    return state == "Z" || state == "X" ? "" : field;
}

} // namespace

Holder this_process(const std::string& station)
{
    return {station, QSysInfo::machineHostName().toStdString(), boot_id(), getpid(), start_of(getpid())};
}

Alive is_alive(const Holder& holder)
{
    if (holder.host != QSysInfo::machineHostName().toStdString())
        return Alive::unknown;
    const bool there = holder.boot == boot_id() && !holder.started.empty() && start_of(holder.pid) == holder.started;
    return there ? Alive::yes : Alive::no;
}

} // namespace vrk
