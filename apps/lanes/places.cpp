#include "lanes/places.h"

#include <QDir>
#include <QFileInfo>

namespace vrk::lanes {

QString place_of(const QString& device)
{
    const QString target = QFileInfo(device).canonicalFilePath();
    const QDir places("/dev/serial/by-path");
    for (const QFileInfo& place : places.entryInfoList(QDir::Files | QDir::System, QDir::Name)) {
        if (!target.isEmpty() && place.canonicalFilePath() == target)
            return place.filePath();
    }
    return device;
}

} // namespace vrk::lanes
