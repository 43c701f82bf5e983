#include "line/job_hash.h"

#include <QCryptographicHash>
#include <QFile>

namespace vrk::line {

QByteArray sha256_of_file(const QString& file)
{
    QFile source(file);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!source.open(QIODevice::ReadOnly) || !hash.addData(&source))
        return {};
    return hash.result().toHex();
}

} // namespace vrk::line
