// The text of an INI file as QSettings reads it. It is written here, since QSettings neither waits for the disk nor
// says why it could not write.
#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace vrk {

using IniValues = std::map<std::pair<std::string, std::string>, std::string>; // by section and key

QByteArray ini_text(const IniValues& values); // UTF-8, whatever the values hold
// Of a file that exists. What is damaged, or no text, counts as missing. Nothing: the file cannot be read, and `reason`
// tells why.
std::optional<IniValues> read_ini(const std::string& path, QString& reason);

} // namespace vrk
