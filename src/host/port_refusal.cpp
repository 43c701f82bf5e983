#include "host/port_refusal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace vrk {

namespace {

bool may_be_opened(const std::string& path)
{
    return ::faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) == 0;
}

bool has_open(const QString& process, const QString& device)
{
    const QDir descriptors("/proc/" + process + "/fd");
    const QStringList names = descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        if (QFile::symLinkTarget(descriptors.filePath(name)) == device)
            return true;
    }
    return false;
}

// The first process that is seen to have it open. Those of other users cannot be looked into.
QString holder_of(const QString& device)
{
    for (const QString& process : QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs)) {
        if (!has_open(process, device))
            continue;
        QFile name("/proc/" + process + "/comm");
        name.open(QIODevice::ReadOnly);
        return QString::fromLocal8Bit(name.readAll()).trimmed() + " (PID " + process + ")";
    }
    return {};
}

} // namespace

PortRefusal why_refused(const std::string& path, bool taken)
{
    PortRefusal refusal;
    const QFileInfo device(QString::fromStdString(path));
    if (!may_be_opened(path)) {
        refusal.kind = PortRefusal::Kind::no_permission;
        refusal.group = device.group().toStdString();
        return refusal;
    }
    refusal.holder = holder_of(device.canonicalFilePath()).toStdString();
    if (taken || !refusal.holder.empty())
        refusal.kind = PortRefusal::Kind::in_use;
    return refusal;
}

} // namespace vrk
