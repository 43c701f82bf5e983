#include "lanes/job_hash.h"

#include <QCryptographicHash>
#include <QFile>

namespace vrk::lanes {

QByteArray sha256_of_file(const QString& file)
{
    QFile source(file);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!source.open(QIODevice::ReadOnly) || !hash.addData(&source))
        return {};
    return hash.result().toHex();
}

} // namespace vrk::lanes
