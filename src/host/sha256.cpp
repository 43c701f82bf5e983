#include "host/sha256.h"

#include <QCryptographicHash>

namespace vrk {

std::string sha256_hex(std::span<const std::uint8_t> bytes)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData({reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())});
    return hash.result().toHex().toStdString();
}

} // namespace vrk
