// A project is known by the SHA-256 of its file.
#pragma once

#include <QByteArray>
#include <QString>

namespace vrk::lanes {

QByteArray sha256_of_file(const QString& file); // in hexadecimal; empty: it cannot be read

} // namespace vrk::lanes
