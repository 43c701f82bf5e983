#include "lanes/places.h"

#include <QDir>
#include <QFileInfo>

namespace vrk::lanes {

QString place_of(const QString& device, const QString& places)
{
    const QString target = QFileInfo(device).canonicalFilePath();
    for (const QFileInfo& place : QDir(places).entryInfoList(QDir::Files | QDir::System, QDir::Name)) {
        if (!target.isEmpty() && place.canonicalFilePath() == target)
            return place.filePath();
    }
    return device;
}

} // namespace vrk::lanes
